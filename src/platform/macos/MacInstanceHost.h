#pragma once

#import <Foundation/Foundation.h>

#include <memory>

#include "platform/common/LocalInstanceHost.h"

@class ReopenHandler;

namespace nimbrel::macos {

class NotificationObserver;

/// The running instance, which the system also asks to show itself when the user opens the application once
/// more.
class MacInstanceHost final : public InstanceHost {
 public:
  explicit MacInstanceHost(const QString& folder);
  ~MacInstanceHost() override;

  [[nodiscard]] Claim claim(const QStringList& urls) override { return local_.claim(urls); }
  void setRequests(const InstanceRequests& requests) override;
  void announceCapture(bool paused) override { local_.announceCapture(paused); }

 private:
  LocalInstanceHost local_;
  ReopenHandler* reopen_;
  std::unique_ptr<NotificationObserver> launched_;
};

}  // namespace nimbrel::macos
