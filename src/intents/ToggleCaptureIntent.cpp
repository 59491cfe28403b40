#include "intents/ToggleCaptureIntent.h"

#include <QCoreApplication>

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ToggleCaptureIntent)
};

}  // namespace

QString ToggleCaptureIntent::title() {
  return Texts::tr("Pausar o reanudar captura");
}

IntentResult<ToggleCaptureIntent::Toggled> ToggleCaptureIntent::perform() const {
  if (!services_) return BrevinIntentError::unavailable;
  ClipboardStore& store = services_->store;
  store.setPaused(!store.isPaused());
  return Toggled{store.isPaused(),
                 store.isPaused() ? Texts::tr("Captura pausada.") : Texts::tr("Captura reanudada.")};
}

}  // namespace nimbrel
