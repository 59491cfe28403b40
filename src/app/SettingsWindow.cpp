#include "app/SettingsWindow.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDialog>

#include "app/PanelPlacement.h"
#include "app/Screens.h"

namespace nimbrel {
namespace {

/// A title and a close button: neither resizable nor to be minimised, where the desktop heeds that.
constexpr auto kFlags =
    Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;

}  // namespace

void SettingsWindow::open() {
  if (!view_) {
    view_ = std::make_unique<SettingsView>(parts_);
    view_->setObjectName(QStringLiteral("settingsWindow"));
    view_->setWindowFlags(kFlags);
    view_->setWindowTitle(QCoreApplication::translate("SettingsWindow", "Ajustes de Nimbrel"));
  }
  const auto dialogs = view_->findChildren<QDialog*>();
  for (QDialog* const dialog : dialogs)
    dialog->reject();
  // One that is on another desktop, or put away, comes anew where the user is.
  if (view_->isVisible() && !view_->isActiveWindow()) view_->hide();
  view_->setWindowState(view_->windowState() & ~Qt::WindowMinimized);
  view_->move(centredOrigin(view_->size(), QCursor::pos(), screenFrames()));
  bringForward_(*view_);
}

}  // namespace nimbrel
