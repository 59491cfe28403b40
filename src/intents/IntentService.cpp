#include "intents/IntentService.h"

#include <QCoreApplication>
#include <algorithm>

#include "capture/model/TextRules.h"
#include "intents/CollectionEntityQuery.h"
#include "intents/CopyLatestClipIntent.h"
#include "intents/PasteFromCollectionIntent.h"
#include "intents/SearchHistoryIntent.h"
#include "intents/SecureTexts.h"
#include "intents/ToggleCaptureIntent.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(IntentService)
};

IntentReply replyFor(BrevinIntentError error) {
  return {.error = name(error), .message = localizedDescription(error)};
}
IntentReply replyFor(const QString& dialog) {
  return {.message = dialog};
}
IntentReply replyFor(const SearchHistoryIntent::Found& found) {
  return {.message = found.dialog, .texts = found.texts};
}
IntentReply replyFor(const ToggleCaptureIntent::Toggled& toggled) {
  return {.message = toggled.dialog, .paused = toggled.paused};
}
IntentReply replyFor(PasteFromCollectionIntent::Pasted) {
  return {};
}

template <typename T>
IntentReply replyFor(const IntentResult<T>& result) {
  return std::visit([](const auto& outcome) { return replyFor(outcome); }, result);
}

/// Hands an intent's result to whoever waits for plain values.
template <typename T>
IntentDone<T> telling(const IntentAnswer& answer) {
  return [answer](const IntentResult<T>& result) { answer(replyFor(result)); };
}

IntentReply collectionNames(const IntentServices* services) {
  if (!services) return replyFor(BrevinIntentError::unavailable);
  IntentReply reply;
  const auto collections = CollectionEntityQuery(services).suggestedEntities();
  for (const CollectionEntity& collection : collections)
    reply.texts.append(collection.displayRepresentation());
  return reply;
}

/// As one line, of which a list shows the beginning.
QString preview(const QString& text) {
  return text.left(IntentService::kMaxSuggestion).simplified();
}

}  // namespace

void IntentService::perform(const IntentCall& call, const IntentAnswer& given) {
  if (call.argument.size() > kMaxArgument)
    return given(
        {.error = kArgumentTooLong.toString(), .message = Texts::tr("El texto es demasiado largo.")});
  const bool asks = call.intent == Intent::copyLatestClip || call.intent == Intent::searchHistory ||
                    call.intent == Intent::pasteFromCollection;
  if (asks && isRefusing()) return given(replyFor(BrevinIntentError::authenticationFailed));
  carryOut(call, [this, asks, given](const IntentReply& reply) {
    if (asks) noteOutcome(reply.error);
    given(reply);
  });
}

void IntentService::carryOut(const IntentCall& call, const IntentAnswer& answer) const {
  switch (call.intent) {
    case Intent::copyLatestClip:
      return CopyLatestClipIntent(services_).perform(telling<QString>(answer));
    case Intent::searchHistory:
      return SearchHistoryIntent(services_).perform(call.argument,
                                                    telling<SearchHistoryIntent::Found>(answer));
    case Intent::toggleCapture:
      return answer(replyFor(ToggleCaptureIntent(services_).perform()));
    case Intent::pasteFromCollection:
      return PasteFromCollectionIntent(services_).perform(CollectionEntity{call.argument},
                                                          telling<PasteFromCollectionIntent::Pasted>(answer));
    case Intent::listCollections:
      return answer(collectionNames(services_));
  }
}

bool IntentService::maySuggest() const {
  return services_ && (!services_->isLocked() || services_->lock.holdsProof());
}

void IntentService::suggest(const QStringList& terms,
                            const std::function<void(const QStringList& ids)>& found) const {
  const QString text = terms.join(u' ');
  if (!maySuggest() || text.size() > kMaxArgument || trimmedWhitespace(text).isEmpty()) return found({});
  services_->store.searchInBackground(text, &isSecureText, SearchHistoryIntent::kMaxResults,
                                      [this, found](const QList<ClipRef>& clips) {
                                        QStringList ids;
                                        for (const ClipRef& clip : clips)
                                          ids.append(clipIdText(clip->clip.id));
                                        found(maySuggest() ? ids : QStringList());
                                      });
}

ClipRef IntentService::secureText(const QString& id) const {
  const auto uuid = clipIdFromText(id);
  const auto row = uuid ? services_->store.items().rowOf(*uuid) : std::nullopt;
  if (!row) return nullptr;
  const ClipRef clip = services_->store.items().at(*row);
  return isSecureText(clip->clip) ? clip : nullptr;
}

QList<ClipSuggestion> IntentService::describe(const QStringList& ids) const {
  QList<ClipSuggestion> described;
  if (!maySuggest()) return described;
  // No more are looked at than were ever found.
  for (const QString& id : ids.mid(0, SearchHistoryIntent::kMaxResults)) {
    if (const ClipRef clip = secureText(id)) described.append({id, preview(clip->clip.text)});
  }
  return described;
}

void IntentService::choose(const QString& id) {
  if (!services_ || isRefusing()) return;
  // Whoever chooses means it, and may be asked.
  const IntentDone<QString> refused = [this](const IntentResult<QString>& result) {
    noteOutcome(replyFor(result).error);
  };
  whenUnlocked(*services_, refused, [this, id] {
    if (const ClipRef clip = secureText(id)) services_->store.copyToPasteboard(clip->clip, false);
  });
}

bool IntentService::isRefusing() const {
  return services_ && services_->isLocked() && !services_->lock.holdsProof() && refusing_ &&
         services_->clock.steadyNow() < *refusing_;
}

void IntentService::noteOutcome(const QString& error) {
  if (!services_) return;
  if (error != name(BrevinIntentError::authenticationFailed)) {
    if (services_->lock.holdsProof()) pause_ = kFirstPause;
    return;
  }
  refusing_ = services_->clock.steadyNow() + pause_;
  pause_ = std::min(pause_ * 2, kLongestPause);
}

}  // namespace nimbrel
