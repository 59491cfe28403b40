#include "panel/ContentView.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "panel/ClipListView.h"
#include "panel/CollectionSheet.h"
#include "panel/ConfirmSheet.h"
#include "panel/FilterChips.h"
#include "panel/HintLine.h"
#include "panel/KindTabs.h"
#include "panel/NoticeBar.h"
#include "panel/PanelMenus.h"
#include "panel/PanelTheme.h"
#include "panel/RowActions.h"
#include "panel/SearchField.h"
#include "panel/StatusBanners.h"
#include "panel/SymbolButton.h"

namespace nimbrel {
namespace {

/// A slim bar without arrows, like the panel's own lines.
QString scrollBarStyle(const PanelTheme& theme) {
  QColor handle = theme.secondaryText;
  handle.setAlpha(110);
  return QStringLiteral(
             "QScrollBar:vertical { background: transparent; width: 8px; margin: 0; }"
             "QScrollBar::handle:vertical { background: %1; border-radius: 3px; margin: 0 1px; min-height: "
             "24px; }"
             "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
             "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: none; }")
      .arg(handle.name(QColor::HexArgb));
}

/// Opens a menu under a button, its right edges in line.
void openUnder(const QWidget& button, QMenu& menu) {
  const QPoint corner = button.mapToGlobal(button.rect().bottomRight());
  menu.popup(corner - QPoint(menu.sizeHint().width() - 1, -2));
}

}  // namespace

ContentView::ContentView(const PanelServices& services, QWidget* parent)
    : QWidget(parent),
      services_(services),
      pasteboardText_([&store = services.store] { return store.pasteboardText(); }),
      model_(new ClipListModel(services.store, this)),
      actions_({.store = services.store,
                .opener = services.opener,
                .settings = services.settings,
                .authenticate = services.authenticate}),
      // In the order in which Tab goes through them.
      search_(new SearchField(pasteboardText_, this)),
      filterButton_(new SymbolButton(QStringLiteral("line.3.horizontal.decrease.circle"),
                                     tr("Filtrar por app o colección"), this)),
      gear_(new SymbolButton(QStringLiteral("gearshape"), tr("Opciones"), this)),
      tabs_(new KindTabs(this)),
      chips_(new FilterChips(this)),
      banners_(new StatusBanners({.store = services.store,
                                  .permission = services.permission,
                                  .opener = services.opener,
                                  .keyState = services.keyState},
                                 this)),
      list_(new ClipListView(this)),
      rows_(new ClipRow(*model_, services.store, services.clock, services.icons, list_)),
      notice_(new NoticeBar(this)),
      hint_(new HintLine(this)),
      menus_(new PanelMenus(services.store, actions_, *this)) {
  buildList();
  rowActions_ = new RowActions(*list_, *model_, actions_);
  buildLayout();
  followModel();
  followActions();
  followMenus();
  connect(search_, &QLineEdit::textChanged, this, &ContentView::setQueryText);
  connect(tabs_, &KindTabs::kindChosen, this, [this](ClipKind kind) {
    setFilter({kind, query_.filter.app, query_.filter.collection});
  });
  connect(chips_, &FilterChips::appCleared, this, [this] {
    setFilter({query_.filter.kind, {}, query_.filter.collection});
  });
  connect(chips_, &FilterChips::collectionCleared, this, [this] {
    setFilter({query_.filter.kind, query_.filter.app, {}});
  });
  connect(banners_, &StatusBanners::failed, this, &ContentView::explain);
  for (QWidget* const child : findChildren<QWidget*>())
    child->installEventFilter(this);
  applyTheme();
  keepSelection();
}

ContentView::~ContentView() = default;

void ContentView::buildList() {
  list_->setObjectName(QStringLiteral("clipList"));
  list_->setAccessibleName(tr("Historial"));
  list_->setClips(model_);
  list_->setItemDelegate(rows_);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_, &QListView::pressed, this, [this](const QModelIndex& index) { select(index.row()); });
  // The clip that was clicked, whatever a search that still runs is about to bring.
  connect(list_, &QListView::doubleClicked, this, [this](const QModelIndex& index) {
    runOnClip(PanelCommand::Kind::paste, model_->clipAt(index.row()));
  });
  connect(list_, &QWidget::customContextMenuRequested, this, [this](const QPoint& point) {
    const QModelIndex index = list_->indexAt(point);
    if (index.isValid()) showClipMenu(index.row(), list_->viewport()->mapToGlobal(point));
  });
}

void ContentView::buildLayout() {
  filterButton_->setObjectName(QStringLiteral("filterButton"));
  gear_->setObjectName(QStringLiteral("gear"));
  auto* const top = new QHBoxLayout;
  top->setContentsMargins(10, 10, 8, 8);
  top->setSpacing(4);
  top->addWidget(search_);
  top->addSpacing(2);
  top->addWidget(filterButton_);
  top->addWidget(gear_);
  auto* const tabs = new QHBoxLayout;
  tabs->setContentsMargins(10, 0, 10, 8);
  tabs->addWidget(tabs_);
  auto* const middle = new QHBoxLayout;
  middle->setContentsMargins(6, 4, 6, 0);
  middle->addWidget(list_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(top);
  column->addLayout(tabs);
  column->addWidget(chips_);
  column->addWidget(banners_);
  column->addLayout(middle, 1);
  column->addWidget(hint_);
}

void ContentView::followModel() {
  for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
    connect(model_, signal, this, [this] { keepSelection(); });
  connect(model_, &QAbstractItemModel::rowsMoved, this, [this] { keepSelection(); });
  connect(model_, &QAbstractItemModel::modelReset, this, [this] {
    keepSelection();
    showSelection();
  });
  connect(model_, &QAbstractItemModel::dataChanged, this, [this] {
    updateState();
    // A clip may be found a secret while it is looked at.
    const int row = selectedRow();
    if (row >= 0 && selectionHidden_ != (model_->secrecyOf(row) == Secrecy::masked)) tellOfSelection(row);
  });
  const auto repaint = qOverload<>(&QWidget::update);
  connect(&services_.store.thumbnails(), &Thumbnails::ready, list_->viewport(), repaint);
  connect(&services_.store.examiner(), &ClipExaminer::examined, list_->viewport(), repaint);
  connect(&services_.icons, &InstalledIcons::iconsFound, list_->viewport(), repaint);
  connect(&services_.store, &ClipboardStore::queueChanged, this, [this] {
    list_->viewport()->update();
    rowActions_->refresh();
  });
  // Also of what the list does not show.
  connect(&services_.store, &ClipboardStore::clipInserted, this, &ContentView::updateState);
  connect(&services_.store, &ClipboardStore::clipsRemoved, this, &ContentView::updateState);
}

void ContentView::followActions() {
  connect(&actions_, &ClipActions::pasteRequested, this, &ContentView::pasteRequested);
  connect(&actions_, &ClipActions::leaveRequested, this, &ContentView::dismissRequested);
  connect(&actions_, &ClipActions::failed, this, &ContentView::explain);
  connect(&actions_, &ClipActions::removed, this, &ContentView::tellOfRemoval);
  connect(&actions_, &ClipActions::restored, this, [this](const QUuid& id) {
    // There may be more that was deleted just before.
    if (services_.store.canUndoRemoval())
      tellOfRemoval(true);
    else
      notice_->dismiss();
    if (const auto row = model_->rowOf(id)) select(*row);
    showSelection();
  });
  connect(&actions_, &ClipActions::unlocked, this, [this](const QUuid& id) { model_->reveal(id); });
  connect(notice_, &NoticeBar::activated, &actions_, &ClipActions::undoRemoval);
  connect(notice_, &NoticeBar::dismissed, this, [this] { services_.store.settleRemovals(); });
  connect(notice_, &NoticeBar::keyboardReleased, this, [this] { search_->setFocus(Qt::OtherFocusReason); });
  connect(notice_, &NoticeBar::said, this, &ContentView::placeNotice);
}

void ContentView::followMenus() {
  // The field has the keyboard again when a menu closes.
  connect(filterButton_, &SymbolButton::clicked, this, [this] {
    search_->setFocus(Qt::OtherFocusReason);
    openUnder(*filterButton_, *menus_->filterMenu(query_.filter));
  });
  connect(gear_, &SymbolButton::clicked, this, [this] {
    search_->setFocus(Qt::OtherFocusReason);
    openUnder(*gear_, *menus_->gearMenu());
  });
  connect(menus_, &PanelMenus::filterChosen, this, &ContentView::setFilter);
  connect(menus_, &PanelMenus::newCollectionRequested, this,
          [this](const ClipRef& clip) { chooseCollection(clip, {}); });
  connect(menus_, &PanelMenus::previewRequested, this, &ContentView::preview);
  connect(menus_, &PanelMenus::clearRequested, this, &ContentView::confirmClearing);
  connect(menus_, &PanelMenus::settingsRequested, this, &ContentView::settingsRequested);
  connect(menus_, &PanelMenus::quitRequested, this, &ContentView::quitRequested);
}

void ContentView::panelDidShow() {
  banners_->refresh();
  search_->setText({});
  select(0);
  list_->scrollToTop();
  search_->setFocus(Qt::ActiveWindowFocusReason);
}

void ContentView::panelDidHide() {
  while (QWidget* const menu = QApplication::activePopupWidget())
    menu->close();
  if (sheet_) sheet_->cancel();
  notice_->dismiss();
  actions_.forgetUnlocking();
  model_->maskAll();
  rows_->forgetSecrets();
  search_->setText({});
}

void ContentView::chooseFilter() {
  filterButton_->click();
}

void ContentView::searchFor(const QString& text) {
  search_->setText(text);
}

ClipRef ContentView::selectedClip() const {
  const int row = selectedRow();
  return row < 0 ? ClipRef() : model_->clipAt(row);
}

int ContentView::selectedRow() const {
  const QModelIndex current = list_->currentIndex();
  return current.isValid() ? current.row() : -1;
}

bool ContentView::isMasked(const ClipRef& clip) const {
  const auto row = model_->rowOf(clip->clip.id);
  return row ? model_->secrecyOf(*row) == Secrecy::masked : clip->clip.isSensitive();
}

void ContentView::setQueryText(const QString& text) {
  query_.text = text;
  search();
}

void ContentView::setFilter(const ClipFilter& filter) {
  query_.filter = filter;
  const bool filtered = filter.app || filter.collection;
  filterButton_->setActive(filtered);
  filterButton_->setSymbol(filtered ? QStringLiteral("line.3.horizontal.decrease.circle.fill")
                                    : QStringLiteral("line.3.horizontal.decrease.circle"));
  chips_->setFilter(filter);
  search();
}

void ContentView::search() {
  model_->setQuery(query_);
}

void ContentView::select(int row) {
  const auto before = selectedId_;
  if (row < 0 || row >= model_->rowCount()) {
    selectedId_.reset();
    list_->setCurrentIndex({});
  } else {
    selectedId_ = model_->clipAt(row)->clip.id;
    list_->setCurrentIndex(model_->index(row));
  }
  updateState();
  if (selectedId_ == before) return;
  if (!selectedId_) return tellOfSelection(-1);
  if (QAccessible::isActive()) {
    // The keyboard stays in the search field; what a screen reader is to tell of is the row.
    QAccessibleEvent focus(list_, QAccessible::Focus);
    focus.setChild(row);
    QAccessible::updateAccessibility(&focus);
  }
  tellOfSelection(row);
}

void ContentView::tellOfSelection(int row) {
  selectionHidden_ = row < 0 || model_->secrecyOf(row) == Secrecy::masked;
  Q_EMIT quickLookSelectionChanged(selectionHidden_ ? ClipRef() : model_->clipAt(row));
}

void ContentView::keepSelection() {
  const auto row = selectedId_ ? model_->rowOf(*selectedId_) : std::nullopt;
  select(row.value_or(0));
}

void ContentView::showSelection() {
  list_->scrollTo(list_->currentIndex());
}

void ContentView::step(int rows) {
  const int count = model_->rowCount();
  if (count == 0) return;
  const int row = selectedRow();
  if (row < 0) return select(rows > 0 ? 0 : count - 1);
  select(std::clamp(row + rows, 0, count - 1));
}

void ContentView::updateState() {
  const ClipRef clip = selectedClip();
  hint_->setText(hintFor(clip ? &clip->clip : nullptr));
  list_->setEmptyText(services_.store.items().isEmpty() ? tr("Nada copiado todavía") : tr("Sin resultados"));
}

bool ContentView::eventFilter(QObject* watched, QEvent* event) {
  // The field, and whatever else has the keyboard, must not see the keys that the panel acts on.
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  auto& press = static_cast<QKeyEvent&>(*event);
  return watched == search_ ? handleKey(press) : handleKeyBesideField(press);
}

bool ContentView::handleKeyBesideField(QKeyEvent& event) {
  const bool plain = !(event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
  auto* const button = qobject_cast<QAbstractButton*>(focusWidget());
  const bool presses =
      event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Space;
  if (button && plain && presses) {
    if (!event.isAutoRepeat()) press(*button);
    return true;
  }
  if (handleKey(event)) return true;
  // Whatever is typed is looked for.
  const QString text = event.text();
  if (!plain || text.isEmpty() || !text.front().isPrint()) return false;
  search_->setFocus(Qt::OtherFocusReason);
  search_->insert(text);
  return true;
}

void ContentView::press(QAbstractButton& button) {
  const QPointer<QAbstractButton> pressed(&button);
  const bool ofRow = rowActions_->isAncestorOf(&button);
  button.click();
  // One that has done its work and gone leaves the keyboard to the field, and not to whatever comes next.
  if (!ofRow && !sheet_ && pressed && !pressed->isVisible()) search_->setFocus(Qt::OtherFocusReason);
}

bool ContentView::handleKey(const QKeyEvent& event) {
  const PanelKeyState state{.hasQuery = !search_->text().isEmpty(),
                            .canUndo = services_.store.canUndoRemoval()};
  const auto command = panelCommand(event, services_.keys, state);
  // A key that is held down moves on, and does everything else once.
  if (command && (!event.isAutoRepeat() || command->movesOn())) {
    run(*command);
    // Whoever uses the keys looks at what is selected. Nothing else moves the list.
    if (command->concernsRows()) showSelection();
  }
  return command.has_value();
}

void ContentView::run(const PanelCommand& command) {
  using Kind = PanelCommand::Kind;
  // What is done to a row is done to what was asked for last.
  if (command.concernsRows()) model_->finishSearch();
  switch (command.kind) {
    case Kind::selectPrevious:
      return step(-1);
    case Kind::selectNext:
      return step(1);
    case Kind::selectPageUp:
      return step(-list_->rowsPerPage());
    case Kind::selectPageDown:
      return step(list_->rowsPerPage());
    case Kind::selectFirst:
      return select(0);
    case Kind::selectLast:
      return select(model_->rowCount() - 1);
    case Kind::nextKind:
      return tabs_->step(1);
    case Kind::previousKind:
      return tabs_->step(-1);
    case Kind::undoRemoval:
      return actions_.undoRemoval();
    case Kind::openSettings:
      return settingsRequested();
    case Kind::dismiss:
      return dismissRequested();
    default:
      break;
  }
  const int row = command.kind == Kind::pasteRow ? command.row : selectedRow();
  if (row >= 0 && row < model_->rowCount()) runOnClip(command.kind, model_->clipAt(row));
}

void ContentView::runOnClip(PanelCommand::Kind kind, const ClipRef& ref) {
  using Kind = PanelCommand::Kind;
  // Kept alive although the list may let go of it.
  const ClipRef clip = ref;
  switch (kind) {
    case Kind::paste:
    case Kind::pasteRow:
      return actions_.paste(clip->clip);
    case Kind::pastePlain:
      return actions_.pastePlain(clip->clip);
    case Kind::pasteRecognizedText:
      return actions_.pasteRecognizedText(clip->clip);
    case Kind::openLink:
      return actions_.openLink(clip->clip);
    case Kind::remove:
      return actions_.remove(clip->clip);
    case Kind::togglePin:
      return actions_.togglePin(clip->clip);
    case Kind::toggleQueue:
      return actions_.toggleQueue(clip->clip);
    case Kind::chooseCollection:
      return chooseCollection(clip, clip->clip.collection.value_or(QString()));
    case Kind::preview:
      return preview(clip);
    case Kind::showMenu: {
      const QRect row = list_->visualRect(list_->currentIndex());
      return showClipMenu(selectedRow(), list_->viewport()->mapToGlobal(row.center()));
    }
    default:
      return;
  }
}

void ContentView::preview(const ClipRef& clip) {
  if (isMasked(clip)) return explain(tr("Este elemento está oculto."));
  Q_EMIT quickLookRequested(clip);
}

void ContentView::chooseCollection(const ClipRef& clip, const QString& name) {
  auto* const sheet = new CollectionSheet(name, services_.store.collections(), pasteboardText_, this);
  connect(sheet, &CollectionSheet::assigned, this,
          [this, clip](const QString& chosen) { actions_.setCollection(clip->clip, chosen); });
  openSheet(sheet);
}

QString ContentView::whatClearingDeletes() const {
  const int count = static_cast<int>(services_.store.items().unpinnedCount());
  return tr("Se borrarán %n elemento(s). Los fijados se conservan. No se puede deshacer.", nullptr, count);
}

void ContentView::confirmClearing() {
  auto* const sheet =
      new ConfirmSheet(tr("¿Borrar el historial?"), whatClearingDeletes(), tr("Borrar"), this);
  // What is copied while the question stands goes too, and nobody is to be surprised by that.
  const auto recount = [this, sheet] { sheet->setNote(whatClearingDeletes()); };
  connect(&services_.store, &ClipboardStore::clipInserted, sheet, recount);
  connect(&services_.store, &ClipboardStore::clipsRemoved, sheet, recount);
  connect(sheet, &ConfirmSheet::confirmed, this, [this] {
    notice_->dismiss();
    services_.store.clearHistory();
  });
  openSheet(sheet);
}

void ContentView::openSheet(PanelSheet* sheet) {
  if (sheet_) sheet_->cancel();
  sheet_ = sheet;
  connect(sheet, &PanelSheet::closed, this, [this] { search_->setFocus(Qt::OtherFocusReason); });
  sheet->open();
}

void ContentView::showClipMenu(int row, const QPoint& position) {
  select(row);
  search_->setFocus(Qt::OtherFocusReason);
  menus_->clipMenu(model_->clipAt(row), model_->secrecyOf(row))->popup(position);
}

void ContentView::tellOfRemoval(bool canUndo) {
  // What went before must not be taken for what has just gone for good.
  if (!canUndo) services_.store.settleRemovals();
  notice_->say(tr("Elemento borrado"), canUndo ? tr("Deshacer") : QString());
}

void ContentView::tellLockUnavailable() {
  explain(tr("No se puede pedir la contraseña en este escritorio: el elemento sigue oculto."));
}

void ContentView::explain(const QString& why) {
  notice_->say(why, services_.store.canUndoRemoval() ? tr("Deshacer borrado") : QString());
}

void ContentView::placeNotice() {
  const int across = width() - 20;
  const int high = notice_->heightForWidth(across);
  notice_->setGeometry(10, height() - hint_->height() - high - 8, across, high);
}

void ContentView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(0, list_->y() - 4, width(), 1, panelTheme(palette()).hairline);
}

void ContentView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  placeNotice();
}

void ContentView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && list_) applyTheme();
}

void ContentView::applyTheme() {
  QPalette colors = list_->palette();
  colors.setColor(QPalette::Base, Qt::transparent);
  if (colors != list_->palette()) list_->setPalette(colors);
  list_->verticalScrollBar()->setStyleSheet(scrollBarStyle(panelTheme(palette())));
}

}  // namespace nimbrel
