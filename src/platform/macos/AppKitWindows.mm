#include "platform/macos/AppKitWindows.h"

#import <AppKit/AppKit.h>

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include "platform/macos/FocusReturn.h"
#include "platform/macos/HostedView.h"
#include "platform/macos/values/WindowValues.h"

namespace nimbrel::macos {
namespace {

static_assert(kSettingsStyleMask == (NSWindowStyleMaskTitled | NSWindowStyleMaskClosable));
static_assert(kSettingsCollectionBehavior == NSWindowCollectionBehaviorMoveToActiveSpace);

/// Gives the keyboard to the application before when the window has closed.
class ReturnToOthers final : public QObject {
 public:
  explicit ReturnToOthers(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Close) QTimer::singleShot(0, this, &yieldUnlessSeen);
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace

void bringForward(QWidget& window) {
  static const QString kName = QStringLiteral("returnToOthers");
  if (!window.findChild<QObject*>(kName, Qt::FindDirectChildrenOnly))
    (new ReturnToOthers(window))->setObjectName(kName);
  window.show();
  NSWindow* const native = viewOf(window).window;
  native.styleMask = static_cast<NSWindowStyleMask>(kSettingsStyleMask);
  native.collectionBehavior = static_cast<NSWindowCollectionBehavior>(kSettingsCollectionBehavior);
  [NSApp activateIgnoringOtherApps:YES];
  [native makeKeyAndOrderFront:nil];
  // Also where the system does not let the program become the active one at once.
  [native orderFrontRegardless];
}

}  // namespace nimbrel::macos
