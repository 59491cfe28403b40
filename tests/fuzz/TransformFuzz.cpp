#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "capture/model/TextRules.h"
#include "capture/transforms/TextTransform.h"
#include "fuzz/FuzzText.h"

namespace {

using namespace nimbrel;

TextTransform chosen = TextTransform::uppercase;

void require(bool condition) {
  if (!condition) std::abort();
}

/// What the transform in question promises of a result.
void check(const QString& text, const QString& result) {
  const auto again = [](TextTransform transform, const QString& input) {
    return apply(transform, input, QLocale::c());
  };
  switch (chosen) {
    case TextTransform::uppercase:
    case TextTransform::lowercase:
    case TextTransform::titleCase:
      // A character has at most three capitals.
      return require(result.size() <= text.size() * 3);
    case TextTransform::trimWhitespace:
      return require(text.contains(result) && again(chosen, result) == result);
    case TextTransform::removeLineBreaks:
      return require(std::none_of(result.begin(), result.end(), isLineBreak) &&
                     again(chosen, result) == result);
    case TextTransform::urlEncode:
      return require(again(TextTransform::urlDecode, result) == text);
    case TextTransform::urlDecode:
      return require(again(chosen, *again(TextTransform::urlEncode, result)) == result);
    case TextTransform::base64Encode:
      // Half a character cannot be encoded, and comes back as its replacement.
      return require(!text.isValidUtf16() || again(TextTransform::base64Decode, result) == text);
    case TextTransform::base64Decode:
      return require(again(chosen, *again(TextTransform::base64Encode, result)) == result);
    case TextTransform::formatJSON:
    case TextTransform::compactJSON:
      require(again(chosen, result) == result);
      require(again(TextTransform::compactJSON, result) == again(TextTransform::compactJSON, text));
      return require(again(TextTransform::formatJSON, result) == again(TextTransform::formatJSON, text));
  }
}

}  // namespace

/// Takes the transform from "--transform=NAME", which the fuzzer itself leaves alone.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  constexpr std::string_view kOption = "--transform=";
  for (int i = 1; i < *argc; ++i) {
    const std::string_view argument((*argv)[i]);
    if (!argument.starts_with(kOption)) continue;
    const auto named = textTransformNamed(QString::fromLatin1(argument.substr(kOption.size()).data()));
    require(named.has_value());
    chosen = *named;
  }
  return 0;
}

/// Any text through one transform.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text = testing::fuzzText(data, size);
  if (const auto result = apply(chosen, text, QLocale::c())) check(text, *result);
  return 0;
}
