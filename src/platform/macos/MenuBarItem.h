#pragma once

#import <Foundation/Foundation.h>

#include "platform/StatusItem.h"

@class NSStatusItem;
@class MenuBarTarget;

namespace nimbrel::macos {

/// An item in the menu bar with a system symbol, which takes the bar's colours, and a title beside it.
class MenuBarItem final : public StatusItem {
 public:
  MenuBarItem();
  ~MenuBarItem() override;

  void show(const StatusItemState& state) override;
  void setActivationHandler(std::function<void()> handler) override;

 private:
  NSStatusItem* item_;
  MenuBarTarget* target_;
};

}  // namespace nimbrel::macos
