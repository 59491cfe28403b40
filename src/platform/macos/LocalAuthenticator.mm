#include "platform/macos/LocalAuthenticator.h"

#import <LocalAuthentication/LocalAuthentication.h>
#import <dispatch/dispatch.h>

#include "platform/macos/MainThread.h"
#include "platform/macos/values/SystemStates.h"

namespace nimbrel::macos {
namespace {

static_assert(kDeviceOwnerPolicy == LAPolicyDeviceOwnerAuthentication);

constexpr LAPolicy kPolicy = static_cast<LAPolicy>(kDeviceOwnerPolicy);
/// So long a prompt may stay; then it goes, as if the user had cancelled it.
constexpr int64_t kPatienceSeconds = 120;

/// The domain's own codes only: others mean other things.
qint64 codeOf(NSError* error) {
  return [error.domain isEqualToString:LAErrorDomain] ? error.code : 0;
}

}  // namespace

void LocalAuthenticator::canAuthenticate(std::function<void(std::optional<QString>)> done) {
  NSError* error = nil;
  std::optional<QString> obstacle;
  if (![[[LAContext alloc] init] canEvaluatePolicy:kPolicy error:&error])
    obstacle = QString::fromNSString(error.localizedDescription);
  const std::weak_ptr<bool> alive = alive_;
  onMainThread([alive, done = std::move(done), obstacle] {
    if (alive.lock()) done(obstacle);
  });
}

void LocalAuthenticator::authenticate(const AuthenticationReason& reason,
                                      std::function<void(AuthenticationReply)> done) {
  LAContext* const context = [[LAContext alloc] init];
  const std::weak_ptr<bool> alive = alive_;
  // The reply comes on a queue of the framework's own.
  [context evaluatePolicy:kPolicy
          localizedReason:reason.text.toNSString()
                    reply:^(BOOL success, NSError* error) {
                      const AuthenticationReply reply = authenticationReply(
                          success, codeOf(error), QString::fromNSString(error.localizedDescription));
                      onMainThread([alive, done, reply] {
                        if (alive.lock()) done(reply);
                      });
                    }];
  const dispatch_time_t limit = dispatch_time(DISPATCH_TIME_NOW, kPatienceSeconds * int64_t(NSEC_PER_SEC));
  // Ends the prompt where it is still there, which its reply tells; else nothing.
  dispatch_after(limit, dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{
    [context invalidate];
  });
}

}  // namespace nimbrel::macos
