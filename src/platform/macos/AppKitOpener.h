#pragma once

#include "platform/Opener.h"

namespace nimbrel::macos {

/// `NSWorkspace`: the Finder, and whatever application is made for a thing.
class AppKitOpener final : public Opener {
 public:
  bool openUrl(const QUrl& url) override;
  bool reveal(const QList<QUrl>& files) override;
  bool openPrivacySettings() override;
  bool openKeyStore() override;
};

/// Opens one of the places in the System Settings; false when it cannot be.
bool openSystemSettings(QStringView place);

}  // namespace nimbrel::macos
