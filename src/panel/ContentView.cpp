#include "panel/ContentView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "look/Symbols.h"
#include "panel/ClipRow.h"
#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

constexpr int kGearSize = 30;

/// A list that says what is missing when it is empty.
class ClipListView final : public QListView {
 public:
  explicit ClipListView(QWidget* parent) : QListView(parent) {}

 protected:
  void paintEvent(QPaintEvent* event) override {
    QListView::paintEvent(event);
    if (model()->rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setFont(panelFont(13));
    painter.setPen(panelTheme(palette()).secondaryText);
    painter.drawText(viewport()->rect(), Qt::AlignCenter, property("emptyText").toString());
  }
};

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

}  // namespace

ContentView::ContentView(ClipboardStore& store, const Clock& clock, QWidget* parent)
    : QWidget(parent),
      store_(store),
      model_(new ClipListModel(store, this)),
      search_(new SearchField([&store] { return store.pasteboardText(); }, this)),
      list_(new ClipListView(this)),
      gear_(new QToolButton(this)),
      hint_(new HintLine(this)) {
  buildLayout(clock);
  followModel();
  search_->installEventFilter(this);
  connect(search_, &QLineEdit::textChanged, this, &ContentView::setQuery);
  connect(list_, &QListView::clicked, this, [this](const QModelIndex& index) { select(index.row()); });
  connect(list_, &QListView::doubleClicked, this,
          [this](const QModelIndex& index) { paste(index.row(), false); });
  applyTheme();
  keepSelection();
}

void ContentView::buildLayout(const Clock& clock) {
  list_->setObjectName(QStringLiteral("clipList"));
  list_->setAccessibleName(tr("Historial"));
  list_->setModel(model_);
  list_->setItemDelegate(new ClipRow(clock, store_.thumbnails(), list_));
  list_->setUniformItemSizes(true);
  list_->setFrameShape(QFrame::NoFrame);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setDragEnabled(false);
  list_->viewport()->setAutoFillBackground(false);
  gear_->setObjectName(QStringLiteral("gear"));
  gear_->setFixedSize(kGearSize, kGearSize);
  gear_->setAutoRaise(true);
  gear_->setFocusPolicy(Qt::NoFocus);
  gear_->setAccessibleName(tr("Ajustes"));
  gear_->setToolTip(gear_->accessibleName());
  connect(gear_, &QToolButton::clicked, this, &ContentView::settingsRequested);
  auto* const top = new QHBoxLayout;
  top->setContentsMargins(10, 10, 10, 8);
  top->addWidget(search_);
  top->addWidget(gear_);
  auto* const middle = new QHBoxLayout;
  middle->setContentsMargins(6, 0, 6, 0);
  middle->addWidget(list_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(top);
  column->addLayout(middle, 1);
  column->addWidget(hint_);
}

void ContentView::followModel() {
  for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
    connect(model_, signal, this, [this] { keepSelection(); });
  connect(model_, &QAbstractItemModel::rowsMoved, this, [this] { keepSelection(); });
  connect(model_, &QAbstractItemModel::dataChanged, this, [this] { updateState(); });
  connect(&store_.thumbnails(), &Thumbnails::ready, list_->viewport(), qOverload<>(&QWidget::update));
}

void ContentView::panelDidShow() {
  search_->clear();
  select(0);
  list_->scrollToTop();
  search_->setFocus(Qt::ActiveWindowFocusReason);
}

void ContentView::panelDidHide() {
  search_->clear();
}

ClipRef ContentView::selectedClip() const {
  const int row = selectedRow();
  return row < 0 ? ClipRef() : model_->clipAt(row);
}

int ContentView::selectedRow() const {
  const QModelIndex current = list_->currentIndex();
  return current.isValid() ? current.row() : -1;
}

void ContentView::setQuery(const QString& query) {
  model_->setQuery(query);
  keepSelection();
}

void ContentView::select(int row) {
  if (row < 0 || row >= model_->rowCount()) {
    selectedId_.reset();
    list_->setCurrentIndex({});
  } else {
    selectedId_ = model_->clipAt(row)->clip.id;
    // Setting the same row again would scroll back to it whenever something else in the list changes.
    if (selectedRow() != row) list_->setCurrentIndex(model_->index(row));
  }
  updateState();
}

void ContentView::keepSelection() {
  const auto row = selectedId_ ? model_->rowOf(*selectedId_) : std::nullopt;
  select(row.value_or(0));
}

void ContentView::moveSelection(Move move) {
  const int count = model_->rowCount();
  if (count == 0) return;
  const int row = selectedRow();
  if (row < 0) return select(move == Move::down ? 0 : count - 1);
  select(std::clamp(row + (move == Move::down ? 1 : -1), 0, count - 1));
}

void ContentView::updateState() {
  const ClipRef clip = selectedClip();
  hint_->setText(hintFor(clip ? &clip->clip : nullptr));
  list_->setProperty("emptyText",
                     store_.items().isEmpty() ? tr("Nada copiado todavía") : tr("Sin resultados"));
  if (model_->rowCount() == 0) list_->viewport()->update();
}

bool ContentView::eventFilter(QObject* watched, QEvent* event) {
  if (watched != search_) return QWidget::eventFilter(watched, event);
  // The field must not see the keys that the panel acts on.
  if (event->type() == QEvent::KeyPress) {
    const auto* const press = static_cast<QKeyEvent*>(event);
    if (handleKey(press->key(), press->modifiers())) return true;
  }
  return QWidget::eventFilter(watched, event);
}

bool ContentView::handleKey(int key, Qt::KeyboardModifiers modifiers) {
  const auto held = modifiers & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
  if (held == Qt::ControlModifier) return handleCommand(key);
  if (held != Qt::NoModifier) return false;
  switch (key) {
    case Qt::Key_Up:
      moveSelection(Move::up);
      return true;
    case Qt::Key_Down:
      moveSelection(Move::down);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      paste(selectedRow(), false);
      return true;
    case Qt::Key_Escape:
      Q_EMIT dismissRequested();
      return true;
    default:
      return false;
  }
}

bool ContentView::handleCommand(int key) {
  if (key >= Qt::Key_1 && key <= Qt::Key_9) {
    paste(key - Qt::Key_1, false);
    return true;
  }
  const ClipRef clip = selectedClip();
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      paste(selectedRow(), true);
      return true;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      if (clip) store_.removeClip(clip->clip.id);
      return true;
    case Qt::Key_P:
      if (clip) store_.togglePin(clip->clip.id);
      return true;
    case Qt::Key_T:
      if (clip && store_.copyRecognizedText(clip->clip)) Q_EMIT pasteRequested();
      return true;
    case Qt::Key_Comma:
      Q_EMIT settingsRequested();
      return true;
    default:
      return false;
  }
}

void ContentView::paste(int row, bool plainOnly) {
  if (row < 0 || row >= model_->rowCount()) return;
  const ClipRef clip = model_->clipAt(row);
  store_.copyToPasteboard(clip->clip, plainOnly);
  Q_EMIT pasteRequested();
}

void ContentView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && list_) applyTheme();
}

void ContentView::applyTheme() {
  QPalette colors = list_->palette();
  colors.setColor(QPalette::Base, Qt::transparent);
  if (colors != list_->palette()) list_->setPalette(colors);
  const PanelTheme theme = panelTheme(palette());
  list_->verticalScrollBar()->setStyleSheet(scrollBarStyle(theme));
  gear_->setIcon(symbols::icon(QStringLiteral("gearshape"), theme.secondaryText));
}

}  // namespace nimbrel
