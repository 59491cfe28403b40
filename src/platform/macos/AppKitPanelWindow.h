#pragma once

#import <Foundation/Foundation.h>

#include "platform/PanelWindow.h"
#include "platform/macos/FocusReturn.h"

@class FloatingPanel;
@class PanelDelegate;
@class QuickLookController;

namespace nimbrel::macos {

/// A `FloatingPanel` that hosts the widget's view. AppKit alone shows, hides and moves the window; the
/// toolkit takes its content view for the window of another program, which the widget is a part of.
class AppKitPanelWindow final : public PanelWindow {
 public:
  /// The widget outlives this, and the preview's controller is kept.
  AppKitPanelWindow(QWidget& widget, QuickLookController* preview);
  ~AppKitPanelWindow() override;

  /// The window's own shadow follows what is opaque in it.
  [[nodiscard]] Backdrop backdrop() override { return Backdrop::shadowed; }
  [[nodiscard]] QRect frame() const override;
  void setFrame(const QRect& frame) override;
  /// There is nothing around the panel that could be clicked.
  void setPanelArea(const QRect&) override {}
  void present() override;
  void dismiss(bool returnFocus) override;
  void whenFocusReturned(std::function<void(bool)> done) override;
  /// The system's prompts stand above panels, and take the keyboard themselves.
  void stepBack() override {}
  void comeForward() override;
  void setResignHandler(std::function<void()> handler) override { resignHandler_ = std::move(handler); }

 private:
  void configure();
  void resigned();
  void takeKeyboard();
  void shadeAgain();

  QWidget& widget_;
  FloatingPanel* panel_;
  PanelDelegate* delegate_;
  FocusReturn focus_;
  std::function<void()> resignHandler_;
  bool presented_ = false;
};

}  // namespace nimbrel::macos
