#pragma once

#import <dispatch/dispatch.h>

#include <list>
#include <memory>

#include "platform/TerminationSignal.h"

namespace nimbrel::macos {

class NotificationObserver;

/// SIGTERM, SIGINT and SIGHUP, and AppKit's word that the application is about to end.
class DispatchTermination final : public TerminationSignal {
 public:
  DispatchTermination();
  ~DispatchTermination() override;

  void setHandler(std::function<void()> handler) override { *handler_ = std::move(handler); }
  void setLastHandler(std::function<void()> handler) override { lastHandler_ = std::move(handler); }

 private:
  /// Shared with what is on its way to the main queue.
  std::shared_ptr<std::function<void()>> handler_ = std::make_shared<std::function<void()>>();
  std::function<void()> lastHandler_;
  std::list<dispatch_source_t> sources_;
  std::unique_ptr<NotificationObserver> ending_;
};

}  // namespace nimbrel::macos
