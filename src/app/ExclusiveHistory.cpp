#include "app/ExclusiveHistory.h"

#include <QCoreApplication>

#include "storage/StorageDirectory.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

}  // namespace

ExclusiveHistory::ExclusiveHistory(const HistoryCommandParts& parts, const QString& storageDirectory)
    : lock_(lockPath(storageDirectory)), held_(take(parts)) {}

bool ExclusiveHistory::take(const HistoryCommandParts& parts) {
  using Claim = InstanceHost::Claim;
  // Asked first: a claim would show the panel of a running one.
  if (parts.platform.client->isRunning()) return false;
  const Claim claim = parts.platform.instance->claim({});
  if (claim == Claim::handedOver || claim == Claim::unanswered) return false;
  // That of a process that has gone is nobody's, but never by its age.
  lock_.setStaleLockTime(0);
  return lock_.tryLock();
}

CommandFailure ExclusiveHistory::whyNot() {
  return {Texts::tr("Nimbrel está en marcha; termínalo con «nimbrel quit» y repite la orden")};
}

}  // namespace nimbrel
