#include "app/PanelController.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEvent>

#include "app/PanelPlacement.h"
#include "app/PanelSize.h"
#include "app/Screens.h"
#include "capture/model/Log.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kReopenGuard = 200ms;
/// Lets the panel's going settle before the keystroke.
constexpr auto kPasteDelay = 60ms;
/// So long the keyboard may wander when the preview has gone.
constexpr auto kPreviewSettling = 150ms;

}  // namespace

PanelController::PanelController(const PanelParts& parts)
    : parts_(parts), content_(new ContentView(parts.services, &panel_)) {
  panel_.setContent(content_);
  window_ = parts_.makeWindow(panel_);
  panel_.setWindow(window_.get());
  window_->setResignHandler([this] { resignKey(); });
  pasteTimer_.setSingleShot(true);
  pasteTimer_.setInterval(kPasteDelay);
  pasteTimer_.setTimerType(Qt::PreciseTimer);
  connect(&pasteTimer_, &QTimer::timeout, this, &PanelController::pasteNow);
  panel_.resizePanel(storedPanelSize(parts_.defaults, FloatingPanel::kSize));
  connect(&panel_, &FloatingPanel::resizedByUser, this,
          [this] { storePanelSize(parts_.defaults, panel_.panelSize()); });
  connect(&panel_, &FloatingPanel::panelRectChanged, this,
          [this] { window_->setPanelArea(panel_.panelRect()); });
  connectContent();
  connectPreview();
}

void PanelController::connectContent() {
  connect(content_, &ContentView::pasteRequested, this, &PanelController::hideAndPaste);
  connect(content_, &ContentView::settingsRequested, this, &PanelController::settingsRequested);
  connect(content_, &ContentView::quitRequested, this, &PanelController::quitRequested);
  connect(content_, &ContentView::dismissRequested, this, &PanelController::dismiss);
  connect(&parts_.lock, &Lock::promptOpens, this, [this] {
    quickLook_->close();
    window_->stepBack();
  });
  connect(&parts_.lock, &Lock::unavailable, content_, [this](Lock::Reason reason) {
    if (reason == Lock::Reason::clip) content_->tellLockUnavailable();
  });
}

void PanelController::connectPreview() {
  quickLook_ = std::make_unique<QuickLook>(parts_.preview, parts_.sideFiles, parts_.previewFolder,
                                           [this] { return panel_.panelArea(); });
  quickLook_->setClosedHandler([this] {
    previewClosed_ = parts_.services.clock.steadyNow();
    refocusPanel();
  });
  connect(content_, &ContentView::quickLookRequested, quickLook_.get(), &QuickLook::toggle);
  connect(content_, &ContentView::quickLookSelectionChanged, quickLook_.get(), &QuickLook::update);
  connect(&parts_.services.store, &ClipboardStore::clipsRemoved, quickLook_.get(),
          [this](const auto&, const QList<ClipRef>& clips) {
            for (const ClipRef& gone : clips)
              quickLook_->forget(gone->clip.id);
          });
}

PanelController::~PanelController() {
  panel_.setWindow(nullptr);
  window_->setResignHandler({});
}

void PanelController::togglePanel() {
  if (isVisible()) return hidePanel(Focus::giveBack);
  if (!lastHide_ || parts_.services.clock.steadyNow() - *lastHide_ > kReopenGuard) showPanel();
}

void PanelController::showPanel() {
  // The keyboard can belong to one of the program's windows only: whoever records a hot key is told that the
  // user has turned to another.
  if (QWidget* const holder = QWidget::keyboardGrabber()) {
    QEvent turnedAway(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(holder, &turnedAway);
  }
  // A keystroke still on its way would land in the panel.
  pasteTimer_.stop();
  parts_.services.permission.recheck();
  panel_.setBackdrop(window_->backdrop());
  window_->setPanelArea(panel_.panelRect());
  panel_.movePanel(panelOrigin(panel_.panelSize(), QCursor::pos(), screenFrames()));
  window_->present();
  if (parts_.lock.isPrompting()) window_->stepBack();
  content_->panelDidShow();
}

void PanelController::resignKey() {
  // When the preview goes, the window manager may give its keyboard to whom it likes, just before the panel
  // takes it.
  if (previewClosed_ && parts_.services.clock.steadyNow() - *previewClosed_ < kPreviewSettling) {
    // Later: the panel lets go of the keyboard when this has been heard.
    QMetaObject::invokeMethod(this, &PanelController::refocusPanel, Qt::QueuedConnection);
    return;
  }
  // Whoever looks at the preview may turn elsewhere meanwhile, and the system's prompt takes the keyboard.
  if (!parts_.lock.isAuthenticating() && !isPreviewing()) return hidePanel(Focus::leave);
  // A prompt that goes slowly may take it once more.
  if (parts_.lock.isAuthenticating() && !parts_.lock.isPrompting())
    QTimer::singleShot(Lock::kSettling, this, &PanelController::refocusPanel);
}

void PanelController::refocusPanel() {
  // While the prompt is up the keyboard is the prompt's.
  if (isVisible() && !parts_.lock.isPrompting()) window_->comeForward();
}

void PanelController::dismiss() {
  if (isPreviewing())
    quickLook_->close();
  else
    hidePanel(Focus::giveBack);
}

void PanelController::hidePanel(Focus focus) {
  if (!isVisible()) return;
  lastHide_ = parts_.services.clock.steadyNow();
  window_->dismiss(focus == Focus::giveBack);
  quickLook_->close();
  parts_.lock.withdraw(Lock::Reason::clip);
  content_->panelDidHide();
}

void PanelController::hideAndPaste() {
  hidePanel(Focus::giveBack);
  parts_.services.permission.recheck();
  if (parts_.services.permission.accessibilityGranted())
    pasteTimer_.start();
  else
    parts_.services.permission.requestAccessibility();
}

void PanelController::pasteNow() {
  window_->whenFocusReturned([this](bool returned) {
    if (returned) return parts_.keystrokes.postPaste();
    tellNothingPasted();
  });
}

void PanelController::tellNothingPasted() {
  qCWarning(clipboardLog,
            "No se pegó: la ventana de antes no recuperó el teclado; el elemento sigue en el portapapeles");
  if (parts_.notify)
    parts_.notify(tr("No se ha pegado"),
                  tr("La ventana de antes ya no tiene el teclado. El elemento está en el portapapeles."));
}

}  // namespace nimbrel
