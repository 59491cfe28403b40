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
  if (isWithinGrace()) return done(true);
  if (busy_ || isAuthenticating()) return done(false);
  busy_ = true;
  authenticator_.canAuthenticate(
      [lock = QPointer(this), reason, done = std::move(done)](const std::optional<QString>& obstacle) {
        if (!lock) return;
        if (!obstacle) return lock->prompt(describe(reason), done);
        lock->busy_ = false;
        lock->reportObstacle(*obstacle);
        done(false);
      });
}

void Lock::prompt(const AuthenticationReason& reason, std::function<void(bool)> done) {
  prompting_ = true;
  Q_EMIT promptOpens();
  authenticator_.authenticate(
      reason, [lock = QPointer(this), done = std::move(done)](const AuthenticationReply& reply) {
        if (!lock) return;
        const bool proven = reply.outcome == AuthenticationReply::Outcome::proven;
        if (proven) lock->lastUnlock_ = {lock->clock_.now(), lock->clock_.steadyNow()};
        lock->busy_ = false;
        lock->prompting_ = false;
        lock->lastReply_ = lock->clock_.steadyNow();
        if (lock->afterAuthentication_) lock->afterAuthentication_();
        if (reply.outcome == AuthenticationReply::Outcome::unavailable) lock->reportObstacle(reply.detail);
        done(proven);
      });
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
  Q_EMIT unavailable();
}

}  // namespace nimbrel
