#include "panel/lock/Lock.h"

#include <QPointer>

#include "capture/model/Log.h"

namespace nimbrel {
namespace {

AuthenticationReason describe(Lock::Reason reason) {
  if (reason == Lock::Reason::clip)
    return {QStringLiteral("reveal-clip"), Lock::tr("ver la credencial guardada en Nimbrel")};
  return {QStringLiteral("reveal-history"), Lock::tr("ver el historial del portapapeles")};
}

}  // namespace

void Lock::authenticate(Reason reason, std::function<void(bool)> done) {
  ask(reason, [this, reason, done = std::move(done)](Answer answer) {
    if (answer == Answer::unavailable) Q_EMIT unavailable(reason);
    done(answer == Answer::proven);
  });
}

void Lock::ask(Reason reason, std::function<void(Answer)> done) {
  if (isWithinGrace()) return done(Answer::proven);
  if (busy_ || isAuthenticating()) return done(Answer::refused);
  busy_ = true;
  askedFor_ = reason;
  authenticator_.canAuthenticate(
      [lock = QPointer(this), reason, done = std::move(done)](const std::optional<QString>& obstacle) {
        if (!lock) return;
        const bool withdrawn = std::exchange(lock->withdrawn_, false);
        if (!obstacle && !withdrawn) return lock->prompt(describe(reason), done);
        lock->busy_ = false;
        if (withdrawn) return done(Answer::refused);
        lock->reportObstacle(*obstacle);
        done(Answer::unavailable);
      });
}

void Lock::prompt(const AuthenticationReason& reason, std::function<void(Answer)> done) {
  prompting_ = true;
  Q_EMIT promptOpens();
  authenticator_.authenticate(
      reason, [lock = QPointer(this), done = std::move(done)](const AuthenticationReply& reply) {
        if (lock) done(lock->answerOf(reply));
      });
}

Lock::Answer Lock::answerOf(const AuthenticationReply& reply) {
  using Outcome = AuthenticationReply::Outcome;
  if (reply.outcome == Outcome::proven) lastUnlock_ = {clock_.now(), clock_.steadyNow()};
  busy_ = false;
  prompting_ = false;
  lastReply_ = clock_.steadyNow();
  if (afterAuthentication_) afterAuthentication_();
  if (reply.outcome == Outcome::proven) return Answer::proven;
  const bool unasked = reply.outcome == Outcome::unavailable;
  if (unasked || !reply.detail.isEmpty()) reportObstacle(reply.detail);
  return unasked ? Answer::unavailable : Answer::refused;
}

void Lock::withdraw(Reason reason) {
  if (busy_ && askedFor_ == reason && !prompting_) withdrawn_ = true;
}

bool Lock::isWithinGrace() const {
  if (!lastUnlock_) return false;
  const auto byDate = clock_.now() - lastUnlock_->date;
  const auto byMoment = clock_.steadyNow() - lastUnlock_->moment;
  return byDate >= byDate.zero() && byDate < kGrace && byMoment < kGrace;
}

bool Lock::isAuthenticating() const {
  return prompting_ || (lastReply_ && clock_.steadyNow() - *lastReply_ < kSettling);
}

void Lock::reportObstacle(const QString& detail) {
  const QByteArray words = detail.toUtf8();
  qCCritical(clipboardLog, "Bloqueo: no se puede autenticar (%s)",
             words.isEmpty() ? "sin detalle" : words.constData());
}

}  // namespace nimbrel
