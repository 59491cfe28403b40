#include "platform/macos/AppKitWindows.h"

#import <AppKit/AppKit.h>

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include "platform/macos/values/WindowValues.h"

namespace nimbrel::macos {
namespace {

static_assert(kSettingsStyleMask == (NSWindowStyleMaskTitled | NSWindowStyleMaskClosable));
static_assert(kSettingsCollectionBehavior == NSWindowCollectionBehaviorMoveToActiveSpace);

NSWindow* nativeOf(const QWidget& window) {
  return ((__bridge NSView*)reinterpret_cast<void*>(window.winId())).window;
}

/// An application without a Dock icon stays the active one when its last window has closed, and nobody has
/// the keyboard: hiding it gives it to the one before.
class ReturnToOthers final : public QObject {
 public:
  explicit ReturnToOthers(QWidget& window) : QObject(&window), window_(window) {
    window.installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Close) QTimer::singleShot(0, this, [this] { hideUnlessNeeded(); });
    return QObject::eventFilter(watched, event);
  }

 private:
  void hideUnlessNeeded() {
    if (!window_.isVisible() && !NSApp.keyWindow) [NSApp hide:nil];
  }

  QWidget& window_;
};

}  // namespace

void bringForward(QWidget& window) {
  static const QString kName = QStringLiteral("returnToOthers");
  if (!window.findChild<QObject*>(kName, Qt::FindDirectChildrenOnly))
    (new ReturnToOthers(window))->setObjectName(kName);
  window.show();
  NSWindow* const native = nativeOf(window);
  native.styleMask = static_cast<NSWindowStyleMask>(kSettingsStyleMask);
  native.collectionBehavior = static_cast<NSWindowCollectionBehavior>(kSettingsCollectionBehavior);
  [NSApp activateIgnoringOtherApps:YES];
  [native makeKeyAndOrderFront:nil];
}

}  // namespace nimbrel::macos
