#include "panel/RowActions.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <utility>

#include "look/Tones.h"
#include "panel/PanelTheme.h"
#include "panel/SymbolButton.h"

namespace nimbrel {
namespace {

constexpr int kButton = 26;
/// Over so many pixels the text behind the buttons fades out.
constexpr int kFade = 18;
/// From the row's edge, so that its outline stays to be seen.
constexpr int kInset = 4;

/// A translucent colour as it looks on a surface.
QColor laidOn(const QColor& surface, const QColor& over) {
  return blend(QColor(over.red(), over.green(), over.blue()), surface, over.alphaF());
}

}  // namespace

RowActions::RowActions(ClipListView& list, ClipListModel& model, ClipActions& actions)
    : QWidget(list.viewport()), list_(list), model_(model), actions_(actions) {
  setObjectName(QStringLiteral("rowActions"));
  setCursor(Qt::ArrowCursor);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(kFade, 0, 0, 0);
  row->setSpacing(0);
  unlock_ = makeButton(QStringLiteral("rowUnlock"), QStringLiteral("touchid"), {},
                       [this](const ClipItem& clip) { actions_.unlock(clip); });
  paste_ = makeButton(QStringLiteral("rowPaste"), QStringLiteral("doc.on.clipboard"), tr("Pegar"),
                      [this](const ClipItem& clip) { actions_.paste(clip); });
  queue_ = makeButton(QStringLiteral("rowQueue"), QStringLiteral("list.bullet.circle"), {},
                      [this](const ClipItem& clip) { actions_.toggleQueue(clip); });
  pin_ = makeButton(QStringLiteral("rowPin"), QStringLiteral("pin"), {},
                    [this](const ClipItem& clip) { actions_.togglePin(clip); });
  remove_ = makeButton(QStringLiteral("rowRemove"), QStringLiteral("trash"), tr("Borrar"),
                       [this](const ClipItem& clip) { actions_.remove(clip); });
  connect(&list_, &ClipListView::rowsShifted, this, &RowActions::refresh);
  connect(list_.selectionModel(), &QItemSelectionModel::currentChanged, this, &RowActions::refresh);
  connect(&model_, &QAbstractItemModel::dataChanged, this, &RowActions::refresh);
  hide();
}

SymbolButton* RowActions::makeButton(const QString& name, const QString& symbol, const QString& label,
                                     Action action) {
  auto* const button = new SymbolButton(symbol, label, this, kButton);
  button->setObjectName(name);
  layout()->addWidget(button);
  button->installEventFilter(this);
  connect(button, &SymbolButton::pressed, this, [this] { pressed_ = clip_ ? clip_->clip.id : QUuid(); });
  connect(button, &SymbolButton::clicked, this, [this, action = std::move(action)] {
    // The list may have moved on between the press and the release.
    const ClipRef clip = clip_;
    if (clip && clip->clip.id == std::exchange(pressed_, {})) action(clip->clip);
  });
  return button;
}

bool RowActions::eventFilter(QObject* watched, QEvent* event) {
  // Once it is known where the keyboard goes.
  if (event->type() == QEvent::FocusOut)
    QMetaObject::invokeMethod(this, &RowActions::refresh, Qt::QueuedConnection);
  return QWidget::eventFilter(watched, event);
}

bool RowActions::hasFocusInside() const {
  const QWidget* const focus = focusWidget();
  return focus && focus->hasFocus() && isAncestorOf(focus);
}

QModelIndex RowActions::row() const {
  if (list_.hasFocus() || hasFocusInside()) return list_.currentIndex();
  return list_.hovered();
}

void RowActions::refresh() {
  const QModelIndex index = row();
  if (!index.isValid()) {
    clip_.reset();
    return hide();
  }
  describe(index);
  const QRect area = list_.visualRect(index);
  const QSize size(layout()->sizeHint().width(), area.height() - 1 - 2 * kInset);
  setGeometry(area.right() + 1 - kInset - size.width(), area.top() + kInset, size.width(), size.height());
  show();
  update();
}

void RowActions::describe(const QModelIndex& index) {
  clip_ = model_.clipAt(index.row());
  selected_ = index == list_.currentIndex();
  const bool masked = model_.secrecyOf(index.row()) == Secrecy::masked;
  const bool queued = model_.isQueued(index.row());
  const bool unlockable = masked && actions_.canUnlock();
  // Not to the next button, which pastes.
  if (!unlockable && unlock_->hasFocus()) list_.setFocus(Qt::OtherFocusReason);
  unlock_->setVisible(unlockable);
  unlock_->setSymbol(actions_.isLocked() ? QStringLiteral("touchid") : QStringLiteral("eye"));
  unlock_->setLabel(actions_.isLocked() ? tr("Desbloquear con Touch ID") : tr("Mostrar el contenido"));
  queue_->setSymbol(queued ? QStringLiteral("list.bullet.circle.fill")
                           : QStringLiteral("list.bullet.circle"));
  queue_->setLabel(queued ? tr("Quitar de la cola") : tr("Añadir a la cola"));
  queue_->setActive(queued);
  pin_->setSymbol(clip_->clip.pinned ? QStringLiteral("pin.fill") : QStringLiteral("pin"));
  pin_->setLabel(clip_->clip.pinned ? tr("Desfijar") : tr("Fijar"));
  pin_->setActive(clip_->clip.pinned);
}

void RowActions::paintEvent(QPaintEvent*) {
  const PanelTheme theme = panelTheme(palette());
  const QColor surface = laidOn(theme.background, selected_ ? theme.selection : theme.field);
  QColor clear = surface;
  clear.setAlpha(0);
  QLinearGradient fade(0, 0, kFade, 0);
  fade.setColorAt(0, clear);
  fade.setColorAt(1, surface);
  QPainter painter(this);
  painter.fillRect(rect(), fade);
}

}  // namespace nimbrel
