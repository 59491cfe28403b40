#pragma once

#include <functional>
#include <optional>

#include "app/hotkeys/HotKeyDispatcher.h"
#include "platform/ApplicationCatalog.h"
#include "platform/KeyReader.h"
#include "platform/LoginItem.h"
#include "platform/Workspace.h"
#include "settings/model/AppSettings.h"

class QWidget;

namespace nimbrel {

/// What the settings window works with; everything outlives it.
struct SettingsParts final {
  AppSettings& settings;
  const KeyReader& keys;
  HotKeyDispatcher& hotKeys;
  LoginItem& loginItem;
  ApplicationCatalog& applications;
  const Workspace& workspace;
  /// Asks the user to prove who they are before secrets lose their protection, and tells whether that may be;
  /// empty where nobody is to be asked.
  std::function<void(std::function<void(bool)> done)> confirmUser;
  /// Whether the history is sealed on the disk.
  std::function<bool()> isEncrypted;
  /// The system's own way of choosing an application; empty where there is none.
  std::function<void(QWidget* parent, std::function<void(const InstalledApplication&)> chosen)>
      chooseApplication;
};

}  // namespace nimbrel
