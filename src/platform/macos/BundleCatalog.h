#pragma once

#include <QFileIconProvider>
#include <functional>

#include "platform/ApplicationCatalog.h"

class QWidget;

namespace nimbrel::macos {

/// The application bundles in the usual folders; an application's icon is where its bundle is.
class BundleCatalog final : public ApplicationCatalog {
 public:
  [[nodiscard]] QList<InstalledApplication> applications() override;
  [[nodiscard]] QIcon icon(const InstalledApplication& application) const override;

 private:
  QFileIconProvider icons_;
};

/// Has the user choose an application in the system's own panel, from "/Applications" on. Main thread; the
/// handler is called on it, later, or never.
void chooseApplication(QWidget* parent, std::function<void(const InstalledApplication&)> chosen);

}  // namespace nimbrel::macos
