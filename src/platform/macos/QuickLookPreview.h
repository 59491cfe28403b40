#pragma once

#import <Foundation/Foundation.h>

#include "platform/PreviewPanel.h"

@class QuickLookController;

namespace nimbrel::macos {

/// The system's own preview panel, which chooses its place itself.
class QuickLookPreview final : public PreviewPanel {
 public:
  explicit QuickLookPreview(QuickLookController* controller);
  ~QuickLookPreview() override;

  [[nodiscard]] bool isVisible() const override;
  void orderFront(const QRect& beside) override;
  void reload(const std::optional<QUrl>& item) override;
  void close() override;
  void setCloseHandler(std::function<void()> handler) override;

 private:
  QuickLookController* controller_;
  /// Watches the program's key presses, wherever they go.
  id monitor_;
};

}  // namespace nimbrel::macos
