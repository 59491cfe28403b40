#include "intents/CopyLatestClipIntent.h"

#include <QCoreApplication>

#include "intents/SecureTexts.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CopyLatestClipIntent)
};

}  // namespace

QString CopyLatestClipIntent::title() {
  return Texts::tr("Copiar último texto");
}

void CopyLatestClipIntent::perform(const IntentDone<QString>& done) const {
  if (!services_) return done(BrevinIntentError::unavailable);
  whenUnlocked(*services_, done, [&store = services_->store, done] {
    const ClipRef latest = latestSecureText(store.items());
    if (!latest || !store.copyToPasteboard(latest->clip, false)) return done(BrevinIntentError::emptyHistory);
    done(Texts::tr("Último texto copiado."));
  });
}

}  // namespace nimbrel
