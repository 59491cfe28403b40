#pragma once

#include <QStringList>

#include "platform/LoginItem.h"

namespace nimbrel {

/// Starts the program with the session through a desktop file in the user's autostart folder
/// (freedesktop.org, autostart of desktop applications 0.5).
class XdgAutostart final : public LoginItem {
 public:
  /// `userFolder` and `systemFolders`, the most important first, are configuration folders; `program` is the
  /// absolute path of what is to be started.
  XdgAutostart(const QString& userFolder, const QStringList& systemFolders, QString program);

  [[nodiscard]] bool isEnabled() const override;
  [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override;

 private:
  [[nodiscard]] bool isSystemWide() const;

  const QString userFile_;
  QStringList systemFiles_;
  const QString program_;
};

/// The one for this program in this user's session.
[[nodiscard]] XdgAutostart sessionAutostart();

}  // namespace nimbrel
