#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "app/FloatingPanel.h"
#include "app/QuickLook.h"
#include "panel/ContentView.h"
#include "panel/lock/Lock.h"
#include "platform/KeystrokePoster.h"
#include "platform/PanelWindow.h"
#include "platform/UserDefaults.h"

namespace nimbrel {

/// What the panel works with; everything outlives the controller.
struct PanelParts final {
  PanelServices services;
  KeystrokePoster& keystrokes;
  UserDefaults& defaults;
  std::function<std::unique_ptr<PanelWindow>(QWidget&)> makeWindow;
  PreviewPanel& preview;
  SideFiles& sideFiles;
  /// Where the preview may write, for as long as it is open.
  QString previewFolder;
  Lock& lock;
  /// Tells the user something while the panel is not there.
  std::function<void(const QString& title, const QString& text)> notify;
};

/// Shows and hides the panel at the pointer, and pastes into the application that the user was in. Main
/// thread.
class PanelController final : public QObject {
  Q_OBJECT

 public:
  explicit PanelController(const PanelParts& parts);
  ~PanelController() override;

  /// Hides the visible panel; shows the hidden one, unless it was hidden less than 0.2 s ago: the click that
  /// made it lose the keyboard is often the one that asks for it here.
  void togglePanel();

  /// Shows the panel, whatever came before.
  void showPanel();

  /// Hides the panel for a window of the program's own, which takes the keyboard.
  void makeWay() { hidePanel(Focus::leave); }

  /// Pastes what is on the pasteboard into the application that the user was in, once the panel has gone.
  void hideAndPaste();

  /// Tells the user that nothing was pasted, since their window has lost the keyboard.
  void tellNothingPasted();

  /// Offers the applications and collections to filter the visible panel by.
  void chooseFilter() { content_->chooseFilter(); }
  /// Looks for a text in the visible panel.
  void searchFor(const QString& text) { content_->searchFor(text); }

  /// Makes the visible panel the one that has the keyboard again.
  void refocusPanel();

  /// *Waits* until no file of the preview is left. For the end of the program.
  void finishPreview() { quickLook_->finish(); }

  [[nodiscard]] bool isVisible() const { return panel_.isVisible(); }
  [[nodiscard]] bool isPreviewing() const { return quickLook_->isVisible(); }
  [[nodiscard]] ContentView& content() { return *content_; }
  [[nodiscard]] FloatingPanel& panel() { return panel_; }

 Q_SIGNALS:
  /// The user has asked for the settings.
  void settingsRequested();
  /// The user wants the program to end.
  void quitRequested();

 private:
  enum class Focus { giveBack, leave };

  void connectContent();
  void connectPreview();
  void resignKey();
  void dismiss();
  void hidePanel(Focus focus);
  void pasteNow();

  PanelParts parts_;
  FloatingPanel panel_;
  ContentView* content_;
  std::unique_ptr<PanelWindow> window_;
  std::optional<std::chrono::steady_clock::time_point> lastHide_;
  std::optional<std::chrono::steady_clock::time_point> previewClosed_;
  QTimer pasteTimer_;
  std::unique_ptr<QuickLook> quickLook_;
};

}  // namespace nimbrel
