#pragma once

#include <QAbstractListModel>
#include <QIcon>
#include <QStringList>
#include <optional>

#include "look/icons/InstalledIcons.h"
#include "platform/ApplicationCatalog.h"

namespace nimbrel {

/// How large an application's icon is in the settings' lists, in device-independent pixels.
inline constexpr QSize kApplicationIconSize(22, 22);

/// The installed applications that match a search, in alphabetical order. Main thread.
class ApplicationListModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  /// The icons must outlive this; `known` are the identifiers that cannot be chosen any more.
  ApplicationListModel(InstalledIcons& icons, QStringList known, QObject* parent);

  void setApplications(const QList<InstalledApplication>& applications);

  /// Keeps the applications whose name or identifier holds every word, whatever the case and the accents.
  void setQuery(const QString& query);

  void setGenericIcon(const QIcon& icon) { generic_ = icon; }

  /// The application of a row; nothing for one that cannot be chosen.
  [[nodiscard]] std::optional<InstalledApplication> applicationAt(const QModelIndex& index) const;

  /// The first row that can be chosen; an invalid index when there is none.
  [[nodiscard]] QModelIndex firstChoice() const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  struct Entry {
    InstalledApplication application;
    QByteArray foldedName;
    QByteArray foldedIdentifier;
  };

  void filter();
  [[nodiscard]] bool isKnown(const InstalledApplication& application) const {
    return known_.contains(application.identifier);
  }

  InstalledIcons& icons_;
  const QStringList known_;
  QIcon generic_;
  QList<Entry> all_;
  QList<InstalledApplication> shown_;
  QString query_;
};

}  // namespace nimbrel
