#include "intents/PasteFromCollectionIntent.h"

#include <QCoreApplication>

#include "intents/SecureTexts.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(PasteFromCollectionIntent)
};

bool isTrusted(PermissionState& permission) {
  permission.recheck();
  if (!permission.accessibilityGranted()) permission.requestAccessibility();
  return permission.accessibilityGranted();
}

IntentResult<PasteFromCollectionIntent::Pasted> pasteLatest(const IntentServices& services,
                                                            const CollectionEntity& collection) {
  // Before the history is looked at, and before anything is put on the pasteboard.
  if (!isTrusted(services.permission)) return BrevinIntentError::accessibilityRequired;
  const ClipRef latest = latestSecureText(services.store.items(), collection.id());
  if (!latest) return BrevinIntentError::emptyCollection;
  if (const auto error = services.pasteClipNow(latest->clip)) return *error;
  return PasteFromCollectionIntent::Pasted{};
}

}  // namespace

QString PasteFromCollectionIntent::title() {
  return Texts::tr("Pegar desde colección");
}

QString PasteFromCollectionIntent::parameterTitle() {
  return Texts::tr("Colección");
}

QString PasteFromCollectionIntent::parameterDescription() {
  return Texts::tr("Colección desde la que quieres pegar.");
}

QString PasteFromCollectionIntent::parameterSummary(const CollectionEntity& collection) {
  return Texts::tr("Pegar desde %1").arg(collection.displayRepresentation());
}

void PasteFromCollectionIntent::perform(const CollectionEntity& collection,
                                        const IntentDone<Pasted>& done) const {
  if (!services_) return done(BrevinIntentError::unavailable);
  whenUnlocked(*services_, done,
               [services = services_, collection, done] { done(pasteLatest(*services, collection)); });
}

}  // namespace nimbrel
