#include "intents/SearchHistoryIntent.h"

#include <QCoreApplication>

#include "intents/SecureTexts.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(SearchHistoryIntent)
};

SearchHistoryIntent::Found foundIn(const QList<ClipRef>& clips) {
  SearchHistoryIntent::Found found;
  for (const ClipRef& clip : clips)
    found.texts.append(clip->clip.text);
  found.dialog = Texts::tr("Se encontraron %1 textos.").arg(found.texts.size());
  return found;
}

}  // namespace

QString SearchHistoryIntent::title() {
  return Texts::tr("Buscar historial");
}

QString SearchHistoryIntent::parameterTitle() {
  return Texts::tr("Texto");
}

QString SearchHistoryIntent::parameterDescription() {
  return Texts::tr("Texto que quieres buscar en el historial.");
}

QString SearchHistoryIntent::parameterSummary(const QString& text) {
  return Texts::tr("Buscar %1 en el historial").arg(text);
}

void SearchHistoryIntent::perform(const QString& text, const IntentDone<Found>& done) const {
  if (!services_) return done(BrevinIntentError::unavailable);
  whenUnlocked(*services_, done, [services = services_, text, done] {
    const bool proven = services->isLocked();
    services->store.searchInBackground(text, &isSecureText, kMaxResults,
                                       [services, proven, done](const QList<ClipRef>& clips) {
                                         // The lock may have been switched on meanwhile.
                                         if (services->isLocked() && !proven)
                                           return done(BrevinIntentError::authenticationFailed);
                                         done(foundIn(clips));
                                       });
  });
}

}  // namespace nimbrel
