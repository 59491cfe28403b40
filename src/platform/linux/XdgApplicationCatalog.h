#pragma once

#include "platform/ApplicationCatalog.h"
#include "platform/linux/DesktopEntries.h"

namespace nimbrel {

/// The applications that have desktop files, with the icons of the user's theme.
class XdgApplicationCatalog final : public ApplicationCatalog {
 public:
  /// The entries must outlive this.
  explicit XdgApplicationCatalog(DesktopEntries& entries) : entries_(entries) {}

  [[nodiscard]] QList<InstalledApplication> applications() override;
  [[nodiscard]] QIcon icon(const InstalledApplication& application) const override;

 private:
  DesktopEntries& entries_;
};

}  // namespace nimbrel
