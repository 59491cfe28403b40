#include "platform/common/LocalInstanceClient.h"

#include <QDeadlineTimer>
#include <thread>
#include <utility>

namespace nimbrel {
namespace {

using Kind = InstanceRequest::Kind;
using Outcome = InstanceAnswer::Outcome;

bool isStarting(const InstanceAnswer& answer) {
  return answer.outcome == Outcome::answered && answer.reply.error == InstanceClient::kUnavailable;
}

}  // namespace

LocalInstanceClient::LocalInstanceClient(const QString& folder, Notify notify,
                                         const InstancePatience& patience)
    : folder_(folder), notify_(std::move(notify)), patience_(patience) {}

IntentReply LocalInstanceClient::ask(const InstanceRequest& request,
                                     std::chrono::milliseconds patience) const {
  const QDeadlineTimer deadline(patience_.starting);
  InstanceAnswer answer = askInstance(folder_, request, patience);
  while (isStarting(answer) && !deadline.hasExpired()) {
    std::this_thread::sleep_for(patience_.pause);
    answer = askInstance(folder_, request, patience);
  }
  return replyOf(answer);
}

IntentReply LocalInstanceClient::replyOf(const InstanceAnswer& answer) const {
  switch (answer.outcome) {
    case Outcome::answered:
      return answer.reply;
    case Outcome::nobody:
      return {.error = kUnavailable.toString()};
    case Outcome::broken:
      // It may have gone while it was asked.
      return {.error = (isInstanceListening(folder_) ? kNoAnswer : kUnavailable).toString()};
    case Outcome::silent:
      return {.error = kNoAnswer.toString()};
  }
  return {};
}

IntentReply LocalInstanceClient::perform(const IntentCall& call) {
  return ask({.kind = Kind::perform, .call = call},
             mayAskUser(call.intent) ? patience_.asking : patience_.answer);
}

IntentReply LocalInstanceClient::show(bool collections) {
  return ask({.kind = collections ? Kind::showCollections : Kind::show}, patience_.answer);
}

IntentReply LocalInstanceClient::quit() {
  const QDeadlineTimer deadline(patience_.starting);
  bool asked = false;
  while (isRunning() && !deadline.hasExpired()) {
    if (!asked) asked = replyOf(askInstance(folder_, {.kind = Kind::quit}, patience_.answer)).error.isEmpty();
    std::this_thread::sleep_for(patience_.pause);
  }
  return isRunning() ? IntentReply{.error = kNoAnswer.toString()} : IntentReply{};
}

bool LocalInstanceClient::isRunning() {
  return isInstanceListening(folder_);
}

void LocalInstanceClient::notify(const QString& title, const QString& text) {
  if (notify_) notify_(title, text);
}

}  // namespace nimbrel
