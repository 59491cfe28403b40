#pragma once

#include <QCoreApplication>

#include "platform/Workspace.h"
#include "platform/linux/ActiveApplication.h"
#include "platform/linux/X11Session.h"

namespace nimbrel {

/// The active window's application, as the window manager tells.
class X11Workspace final : public Workspace {
 public:
  /// Both must outlive this.
  X11Workspace(X11Session& session, DesktopEntries& entries)
      : active_(session.connection(), session.atoms(), entries) {}

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    return active_.current();
  }
  [[nodiscard]] std::optional<RunningApplication> frontmostOtherApplication() const override {
    return active_.topmostBut(QCoreApplication::applicationPid());
  }

 private:
  mutable ActiveApplication active_;
};

}  // namespace nimbrel
