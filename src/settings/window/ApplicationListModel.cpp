#include "settings/window/ApplicationListModel.h"

#include <algorithm>

#include "capture/model/TextRules.h"
#include "look/PlainText.h"

namespace nimbrel {

ApplicationListModel::ApplicationListModel(InstalledIcons& icons, QStringList known, QObject* parent)
    : QAbstractListModel(parent), icons_(icons), known_(std::move(known)) {}

void ApplicationListModel::setApplications(const QList<InstalledApplication>& applications) {
  all_.clear();
  all_.reserve(applications.size());
  for (const InstalledApplication& application : applications)
    all_.append({application, foldedText(application.name), foldedText(application.identifier)});
  std::sort(all_.begin(), all_.end(), [](const Entry& a, const Entry& b) {
    return a.foldedName != b.foldedName ? a.foldedName < b.foldedName
                                        : a.application.identifier < b.application.identifier;
  });
  // Several desktop files may stand for one application.
  const auto end = std::unique(all_.begin(), all_.end(), [](const Entry& a, const Entry& b) {
    return a.application.identifier == b.application.identifier && a.foldedName == b.foldedName;
  });
  all_.erase(end, all_.end());
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
  for (const Entry& entry : std::as_const(all_)) {
    const bool matches = std::all_of(words.begin(), words.end(), [&](const QByteArray& word) {
      return entry.foldedName.contains(word) || entry.foldedIdentifier.contains(word);
    });
    if (matches) shown_.append(entry.application);
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
      return isKnown(application) ? tr("%1 (ya está en la lista)").arg(application.name.simplified())
                                  : application.name.simplified();
    case Qt::DecorationRole:
      return icons_.icon(application.identifier, generic_);
    case Qt::ToolTipRole:
      return plainToolTip(application.identifier);
    default:
      return {};
  }
}

Qt::ItemFlags ApplicationListModel::flags(const QModelIndex& index) const {
  return applicationAt(index) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

}  // namespace nimbrel
