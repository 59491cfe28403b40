#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStringList>
#include <optional>

#include "platform/ApplicationCatalog.h"
#include "platform/Workspace.h"
#include "settings/window/ApplicationListModel.h"

namespace nimbrel {

/// Lets the user choose an installed application, by searching or with one click the one in front. Main
/// thread.
class ApplicationChooser final : public QDialog {
  Q_OBJECT

 public:
  /// `front` is the application that the user worked in; `known` are the identifiers that need not be chosen
  /// any more. The icons must outlive this.
  ApplicationChooser(const std::optional<RunningApplication>& front, const QStringList& known,
                     InstalledIcons& icons, QWidget* parent);

  /// What there is to choose from.
  void setApplications(const QList<InstalledApplication>& applications);

 Q_SIGNALS:
  /// The user has chosen; the dialog is closed.
  void chosen(const InstalledApplication& application);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void showFrontIcon();
  void addFront(const RunningApplication& front);
  void choose(const InstalledApplication& application);
  void chooseCurrent();
  void search(const QString& query);
  void updateButton();

  const QStringList known_;
  InstalledIcons& icons_;
  ApplicationListModel* model_;
  QPushButton* front_ = nullptr;
  QString frontID_;
  QLineEdit* search_;
  QListView* list_;
  QPushButton* add_;
};

}  // namespace nimbrel
