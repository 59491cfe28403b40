#include "platform/common/IntentBridge.h"

#include <QByteArray>
#include <QtGlobal>
#include <cstring>
#include <optional>
#include <utility>

#include "platform/InstanceClient.h"
#include "platform/common/CarriedText.h"
#include "platform/common/NimbrelIntents.h"

namespace nimbrel {
namespace {

static_assert(static_cast<int>(Intent::copyLatestClip) == NimbrelIntentCopyLatestClip);
static_assert(static_cast<int>(Intent::searchHistory) == NimbrelIntentSearchHistory);
static_assert(static_cast<int>(Intent::toggleCapture) == NimbrelIntentToggleCapture);
static_assert(static_cast<int>(Intent::pasteFromCollection) == NimbrelIntentPasteFromCollection);
static_assert(static_cast<int>(Intent::listCollections) == NimbrelIntentListCollections);

/// The bridge that there is.
IntentBridge* installed = nullptr;

std::optional<Intent> intentNumbered(int number) {
  if (number < NimbrelIntentCopyLatestClip || number > NimbrelIntentListCollections) return std::nullopt;
  return static_cast<Intent>(number);
}

QByteArray carried(const QString& text) {
  return carriedText(text).toUtf8();
}

/// Hands a reply over, in memory that lasts as long as the call.
void complete(const IntentReply& reply, void* context, NimbrelIntentCompletion completion) {
  const QByteArray error = carried(reply.error);
  const QByteArray message = carried(reply.message);
  std::vector<QByteArray> texts;
  for (const QString& text : reply.texts)
    texts.push_back(carried(text));
  std::vector<const char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const QByteArray& text : texts)
    pointers.push_back(text.constData());
  // Also an empty list is somewhere.
  pointers.push_back(nullptr);
  const NimbrelIntentReply given{error.constData(), message.constData(), pointers.data(), texts.size(),
                                 reply.paused};
  completion(context, &given);
}

}  // namespace

IntentBridge::IntentBridge(Perform perform) : perform_(std::move(perform)) {
  Q_ASSERT(!installed);
  installed = this;
}

IntentBridge::~IntentBridge() {
  installed = nullptr;
  for (const auto& one : std::exchange(waiting_, {})) {
    if (const auto answer = one.lock()) answer->give(failedReply(InstanceClient::kUnavailable));
  }
}

void IntentBridge::perform(int number, const char* argument, IntentAnswer answer) {
  const auto intent = intentNumbered(number);
  if (!intent) return answer(failedReply(InstanceClient::kUnavailable));
  const char* const text = argument ? argument : "";
  const std::size_t length = ::strnlen(text, kMaxArgument + 1);
  if (length > kMaxArgument) return answer(failedReply(kArgumentTooLong));
  const auto once =
      std::make_shared<AnswerOnce>(std::move(answer), failedReply(InstanceClient::kUnavailable));
  std::erase_if(waiting_, [](const auto& one) { return one.expired(); });
  waiting_.push_back(once);
  perform_({*intent, QString::fromUtf8(text, static_cast<qsizetype>(length))},
           [once](const IntentReply& reply) { once->give(reply); });
}

}  // namespace nimbrel

void nimbrel_perform_intent(NimbrelIntent intent, const char* argument, void* context,
                            NimbrelIntentCompletion completion) {
  using namespace nimbrel;
  const auto answer = [context, completion](const IntentReply& reply) {
    complete(reply, context, completion);
  };
  if (installed) return installed->perform(intent, argument, answer);
  answer(failedReply(InstanceClient::kUnavailable));
}
