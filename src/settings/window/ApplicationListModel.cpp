#include "settings/window/ApplicationListModel.h"

#include <algorithm>

#include "capture/model/TextRules.h"

namespace nimbrel {

ApplicationListModel::ApplicationListModel(InstalledIcons& icons, QStringList known, QObject* parent)
    : QAbstractListModel(parent), icons_(icons), known_(std::move(known)) {}

void ApplicationListModel::setApplications(QList<InstalledApplication> applications) {
  std::sort(applications.begin(), applications.end(), [](const auto& a, const auto& b) {
    const QByteArray first = foldedText(a.name);
    const QByteArray second = foldedText(b.name);
    return first != second ? first < second : a.identifier < b.identifier;
  });
  // Several desktop files may stand for one application.
  const auto end = std::unique(applications.begin(), applications.end(), [](const auto& a, const auto& b) {
    return a.identifier == b.identifier && a.name == b.name;
  });
  applications.erase(end, applications.end());
  all_ = std::move(applications);
  filter();
}

void ApplicationListModel::setQuery(const QString& query) {
  query_ = query;
  filter();
}

void ApplicationListModel::filter() {
  const QList<QByteArray> words = searchTerms(foldedText(query_));
  beginResetModel();
  shown_.clear();
  for (const InstalledApplication& application : std::as_const(all_)) {
    const QByteArray text = foldedText(application.name + u' ' + application.identifier);
    const bool matches =
        std::all_of(words.begin(), words.end(), [&](const QByteArray& word) { return text.contains(word); });
    if (matches) shown_.append(application);
  }
  endResetModel();
}

std::optional<InstalledApplication> ApplicationListModel::applicationAt(const QModelIndex& index) const {
  if (!index.isValid() || index.row() >= shown_.size() || isKnown(shown_[index.row()])) return std::nullopt;
  return shown_[index.row()];
}

QModelIndex ApplicationListModel::firstChoice() const {
  for (int row = 0; row < shown_.size(); ++row) {
    if (!isKnown(shown_[row])) return index(row);
  }
  return {};
}

int ApplicationListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant ApplicationListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= shown_.size()) return {};
  const InstalledApplication& application = shown_[index.row()];
  switch (role) {
    case Qt::DisplayRole:
      return isKnown(application) ? tr("%1 (ya está en la lista)").arg(application.name) : application.name;
    case Qt::DecorationRole:
      return icons_.icon(application.identifier, generic_);
    case Qt::ToolTipRole:
      return application.identifier;
    default:
      return {};
  }
}

Qt::ItemFlags ApplicationListModel::flags(const QModelIndex& index) const {
  return applicationAt(index) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

}  // namespace nimbrel
