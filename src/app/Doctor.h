#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "platform/DesktopFacts.h"
#include "platform/SecretStore.h"
#include "settings/model/SettingsValues.h"
#include "storage/DatabaseHealth.h"

namespace nimbrel {

/// What is known of the program's health.
struct DoctorFacts final {
  DesktopFacts desktop;
  bool isRunning = false;
  QString storageDirectory;
  bool canWriteStorage = false;
  DatabaseHealth database;
  /// Nothing when the key store has not answered in time.
  std::optional<SecretLookup::Outcome> keyStore;
  /// Databases that were set aside.
  QStringList setAside;
  SettingsValues settings;
  /// Why the user could not be asked to prove who they are.
  std::optional<QString> lockObstacle;
};

/// One thing that works, or does not, and what to do about it.
struct Finding final {
  enum class Grade { works, partly, fails };

  Grade grade = Grade::works;
  QString subject;
  QString text;
  /// Empty where nothing need be done.
  QString advice;
};

/// What a user would like to know, in plain words, the most important first.
[[nodiscard]] QList<Finding> diagnose(const DoctorFacts& facts);

/// A line for each finding, and its advice below it.
[[nodiscard]] QString report(const QList<Finding>& findings);

}  // namespace nimbrel
