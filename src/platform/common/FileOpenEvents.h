#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QStringList>
#include <functional>

namespace nimbrel {

/// The URLs that the system opens with the program, where it sends them to the running process instead of
/// giving them to a new one. Main thread.
class FileOpenEvents final : public QObject {
  Q_OBJECT

 public:
  using Open = std::function<void(const QStringList& urls)>;

  /// `open` is given each URL as it comes, encoded; one that names a file is left to the application.
  FileOpenEvents(QCoreApplication& application, Open open);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const Open open_;
};

}  // namespace nimbrel
