#pragma once

#include <QListView>
#include <QToolButton>
#include <QUuid>
#include <QWidget>
#include <optional>

#include "capture/ClipboardStore.h"
#include "panel/ClipListModel.h"
#include "panel/HintLine.h"
#include "panel/SearchField.h"
#include "platform/Clock.h"

namespace nimbrel {

/// The content of the panel: the search field, which keeps the keyboard, the list of clips, and the line of
/// hints.
class ContentView final : public QWidget {
  Q_OBJECT

 public:
  /// Store and clock must outlive the view.
  ContentView(ClipboardStore& store, const Clock& clock, QWidget* parent);

  /// Makes the view ready for a new use: no query, the first clip selected, the search field focused.
  void panelDidShow();

  /// Forgets the query, so that the next use begins with the whole list already laid out.
  void panelDidHide();

  /// The selected clip; null when there is none.
  [[nodiscard]] ClipRef selectedClip() const;

 Q_SIGNALS:
  /// A clip has been put on the pasteboard to be pasted.
  void pasteRequested();
  void dismissRequested();
  void settingsRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  enum class Move { up, down };

  void buildLayout(const Clock& clock);
  void followModel();
  void applyTheme();
  void setQuery(const QString& query);
  void select(int row);
  void moveSelection(Move move);
  void keepSelection();
  void updateState();
  [[nodiscard]] bool handleKey(int key, Qt::KeyboardModifiers modifiers);
  [[nodiscard]] bool handleCommand(int key);
  void paste(int row, bool plainOnly);
  [[nodiscard]] int selectedRow() const;

  ClipboardStore& store_;
  ClipListModel* model_;
  SearchField* search_;
  QListView* list_;
  QToolButton* gear_;
  HintLine* hint_;
  /// Outlives the selection of the list view, which goes with every rebuilt model.
  std::optional<QUuid> selectedId_;
};

}  // namespace nimbrel
