#pragma once

#include <QPointer>
#include <QUuid>
#include <QWidget>
#include <optional>

#include "panel/PanelCommand.h"
#include "panel/PanelServices.h"
#include "panel/PasteField.h"

class QAbstractButton;

namespace nimbrel {

class ClipListView;
class FilterChips;
class HintLine;
class KindTabs;
class NoticeBar;
class PanelMenus;
class PanelSheet;
class RowActions;
class SearchField;
class StatusBanners;
class SymbolButton;

/// The content of the panel: the search field, which keeps the keyboard, the tabs, filters and banners, the
/// list of clips, and the line of hints.
class ContentView final : public QWidget {
  Q_OBJECT

 public:
  ContentView(const PanelServices& services, QWidget* parent);
  ~ContentView() override;

  /// Makes the view ready for a new use: no query, the first clip selected, the search field focused. Tab and
  /// filters stay.
  void panelDidShow();

  /// Ends what was going on: every secret is masked again, nothing can be undone any more, and the next use
  /// begins with the whole list already laid out.
  void panelDidHide();

  /// Opens the menu of applications and collections to filter by.
  void chooseFilter();

  /// Looks for a text, as if the user had typed it.
  void searchFor(const QString& text);

  /// The selected clip; null when there is none.
  [[nodiscard]] ClipRef selectedClip() const;

  /// Says that a clip stays hidden because the user could not be asked to prove who they are.
  void tellLockUnavailable();

 Q_SIGNALS:
  /// A clip has been put on the pasteboard to be pasted.
  void pasteRequested();
  void dismissRequested();
  void settingsRequested();
  void quitRequested();
  /// The preview of a clip is to be opened, or closed when it is open. Never for a masked clip.
  void quickLookRequested(const nimbrel::ClipRef& clip);
  /// Another clip is selected, or may be seen or not any more: null when it is masked, and when there is
  /// none.
  void quickLookSelectionChanged(const nimbrel::ClipRef& clip);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void buildLayout();
  void buildList();
  void followModel();
  void followActions();
  void followMenus();
  void applyTheme();

  void setQueryText(const QString& text);
  void setFilter(const ClipFilter& filter);
  void search();

  void select(int row);
  void step(int rows);
  void keepSelection();
  void showSelection();
  void updateState();
  [[nodiscard]] int selectedRow() const;
  [[nodiscard]] bool isMasked(const ClipRef& clip) const;

  [[nodiscard]] bool handleKey(const QKeyEvent& event);
  [[nodiscard]] bool handleKeyBesideField(QKeyEvent& event);
  void press(QAbstractButton& button);
  void run(const PanelCommand& command);
  void runOnClip(PanelCommand::Kind kind, const ClipRef& clip);

  void preview(const ClipRef& clip);
  void chooseCollection(const ClipRef& clip, const QString& name);
  [[nodiscard]] QString whatClearingDeletes() const;
  void confirmClearing();
  void openSheet(PanelSheet* sheet);
  void showClipMenu(int row, const QPoint& position);
  /// Says that a clip was deleted, and offers to bring it back.
  void tellOfRemoval(bool canUndo);
  /// Of none with −1.
  void tellOfSelection(int row);
  /// Says why something was not done. What can be undone stays so.
  void explain(const QString& why);
  void placeNotice();

  PanelServices services_;
  PasteboardText pasteboardText_;
  ClipListModel* model_;
  ClipActions actions_;
  SearchField* search_;
  SymbolButton* filterButton_;
  SymbolButton* gear_;
  KindTabs* tabs_;
  FilterChips* chips_;
  StatusBanners* banners_;
  ClipListView* list_;
  ClipRow* rows_;
  RowActions* rowActions_;
  NoticeBar* notice_;
  HintLine* hint_;
  PanelMenus* menus_;
  QPointer<PanelSheet> sheet_;
  ClipQuery query_;
  /// Outlives the selection of the list view, which goes with every rebuilt model.
  std::optional<QUuid> selectedId_;
  /// Whether nothing of the selection may be seen, as was last told.
  bool selectionHidden_ = true;
};

}  // namespace nimbrel
