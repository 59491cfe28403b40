#include "capture/transforms/CaseMapping.h"

#include <unicode/casemap.h>
#include <unicode/stringoptions.h>

namespace nimbrel {
namespace {

/// Runs one of the library's mappings, which fills a buffer and tells how long the result is.
template <typename Map>
QString mapped(const QString& text, Map map) {
  const auto* const source = reinterpret_cast<const char16_t*>(text.utf16());
  // Few texts change their length, and then by little: one attempt is nearly always enough.
  QString result(text.size() + text.size() / 8 + 16, Qt::Uninitialized);
  while (true) {
    UErrorCode error = U_ZERO_ERROR;
    const int32_t size =
        map(source, static_cast<int32_t>(text.size()), reinterpret_cast<char16_t*>(result.data()),
            static_cast<int32_t>(result.size()), error);
    if (error == U_BUFFER_OVERFLOW_ERROR) {
      result.resize(size + 1);
      continue;
    }
    // Nothing but a text beyond all limits or a broken installation; the text as it is loses nothing.
    if (U_FAILURE(error)) return text;
    result.resize(size);
    return result;
  }
}

}  // namespace

QString uppercased(const QString& text) {
  return mapped(text, [](auto source, int32_t length, auto target, int32_t capacity, UErrorCode& error) {
    return icu::CaseMap::toUpper("", 0, source, length, target, capacity, nullptr, error);
  });
}

QString lowercased(const QString& text) {
  return mapped(text, [](auto source, int32_t length, auto target, int32_t capacity, UErrorCode& error) {
    return icu::CaseMap::toLower("", 0, source, length, target, capacity, nullptr, error);
  });
}

QString titleCased(const QString& text, const QLocale& locale) {
  const QByteArray name = locale.name().toLatin1();
  return mapped(text, [&](auto source, int32_t length, auto target, int32_t capacity, UErrorCode& error) {
    // The first letter, and not a digit before it, is what is capitalised: "2º apartado" has its A.
    return icu::CaseMap::toTitle(name.constData(), U_TITLECASE_ADJUST_TO_CASED, nullptr, source, length,
                                 target, capacity, nullptr, error);
  });
}

}  // namespace nimbrel
