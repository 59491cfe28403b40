#pragma once

#include <QList>
#include <QUrl>

namespace nimbrel {

/// Opens what lies outside of the program, with whatever the user has for it. Never waits for what it starts.
/// Each method is false when there is nothing to open it with. Main thread.
class Opener {
 public:
  virtual ~Opener() = default;

  /// Opens an address or a file with the application that is made for it.
  virtual bool openUrl(const QUrl& url) = 0;

  /// Shows files where they lie, in the file manager.
  virtual bool reveal(const QList<QUrl>& files) = 0;

  /// Opens the place in the system's settings where the user says who may see what.
  virtual bool openPrivacySettings() = 0;

  /// Opens the program with which the user looks after the key store.
  virtual bool openKeyStore() = 0;
};

}  // namespace nimbrel
