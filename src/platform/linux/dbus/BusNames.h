#pragma once

#include <QString>
#include <QStringView>
#include <array>

#include "platform/InstanceRequests.h"

namespace nimbrel::bus {

/// What the program is called on the session bus, where it is found there, and its interface.
inline constexpr const char* kService = "app.nimbrel.Nimbrel";
inline constexpr const char* kPath = "/app/nimbrel/Nimbrel";
inline constexpr const char* kInterface = "app.nimbrel.Nimbrel";

/// The search provider of GNOME Shell (developer.gnome.org, "Search provider").
inline constexpr const char* kSearchPath = "/app/nimbrel/Nimbrel/SearchProvider";
inline constexpr const char* kSearchInterface = "org.gnome.Shell.SearchProvider2";

/// The method of each intent.
struct IntentMethod final {
  Intent intent;
  const char* name;
};
inline constexpr std::array kIntentMethods{
    IntentMethod{Intent::copyLatestClip, "CopyLatestClip"},
    IntentMethod{Intent::searchHistory, "SearchHistory"},
    IntentMethod{Intent::toggleCapture, "ToggleCapture"},
    IntentMethod{Intent::pasteFromCollection, "PasteFromCollection"},
    IntentMethod{Intent::listCollections, "ListCollections"},
};

inline constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
inline constexpr const char* kCaptureSwitched = "CaptureSwitched";
inline constexpr const char* kCapturePaused = "CapturePaused";

/// An error by its stable name: "emptyHistory" is "app.nimbrel.Nimbrel.Error.EmptyHistory".
inline constexpr QStringView kErrorPrefix = u"app.nimbrel.Nimbrel.Error.";
[[nodiscard]] inline QString errorName(const QString& error) {
  return kErrorPrefix.toString() + error.left(1).toUpper() + error.mid(1);
}
/// The inverse; empty for the errors of others.
[[nodiscard]] inline QString errorOf(const QString& errorName) {
  if (!errorName.startsWith(kErrorPrefix)) return {};
  const QString name = errorName.mid(kErrorPrefix.size());
  return name.left(1).toLower() + name.mid(1);
}

}  // namespace nimbrel::bus
