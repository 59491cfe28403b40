#pragma once

#include <QString>
#include <QStringList>

#include "platform/InstanceRequests.h"

namespace nimbrel {

/// Keeps what others ask of the program until there is somebody to answer, who is then asked at once. Main
/// thread.
class InstanceInbox final {
 public:
  /// The most that URLs may take while they wait, in UTF-16 units; more than any that is not refused.
  static constexpr qsizetype kMaxUrls = 8'000'000;
  /// What one of them takes beside its characters.
  static constexpr qsizetype kCostOfUrl = 64;

  /// Who answers from now on.
  void setRequests(const InstanceRequests& requests);
  [[nodiscard]] const InstanceRequests& requests() const { return requests_; }

  /// Asks for the panel.
  void askToShow();
  /// Asks for the panel with a text looked for.
  void askToSearch(const QString& text);
  void askForCollections();
  /// URLs beyond the limit are dropped.
  void askToOpen(const QStringList& urls);
  void askToQuit();

 private:
  void keep(const QStringList& urls);
  void deliver();

  InstanceRequests requests_;
  bool showRequested_ = false;
  bool collectionsRequested_ = false;
  QString search_;
  QStringList urls_;
  qsizetype urlCharacters_ = 0;
  bool quitRequested_ = false;
};

}  // namespace nimbrel
