#pragma once

#include <QObject>

#include "platform/Opener.h"

namespace nimbrel {

/// Opens things with the desktop's preferred programs, and shows files through its file manager
/// (org.freedesktop.FileManager1) or, where none answers, by opening their folder.
class XdgOpener final : public QObject, public Opener {
 public:
  bool openUrl(const QUrl& url) override;
  bool reveal(const QList<QUrl>& files) override;
  bool openPrivacySettings() override;
  bool openKeyStore() override;
};

}  // namespace nimbrel
