#include "settings/window/ApplicationChooser.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "look/PlainText.h"
#include "look/Tones.h"
#include "settings/window/ApplicationListModel.h"

namespace nimbrel {
namespace {

constexpr QSize kSize(400, 420);
constexpr int kMaxQueryLength = 200;
constexpr int kFrontNameWidth = 180;

}  // namespace

ApplicationChooser::ApplicationChooser(const std::optional<RunningApplication>& front,
                                       const QStringList& known, InstalledIcons& icons, QWidget* parent)
    : QDialog(parent),
      known_(known),
      icons_(icons),
      model_(new ApplicationListModel(icons, known, this)),
      search_(new QLineEdit(this)),
      list_(new QListView(this)) {
  setWindowTitle(tr("Añadir aplicación"));
  resize(kSize);
  auto* const column = new QVBoxLayout(this);
  if (front) addFront(*front);
  search_->setPlaceholderText(tr("Buscar aplicación…"));
  search_->setAccessibleName(tr("Buscar aplicación…"));
  search_->setMaxLength(kMaxQueryLength);
  search_->setClearButtonEnabled(true);
  search_->installEventFilter(this);
  column->addWidget(search_);
  QPalette colors = search_->palette();
  // Some desktops give dark fields the hint of a light one.
  colors.setColor(QPalette::PlaceholderText,
                  blend(colors.color(QPalette::Text), colors.color(QPalette::Base), 0.6));
  search_->setPalette(colors);
  model_->setGenericIcon(genericApplicationIcon(palette()));
  list_->setModel(model_);
  list_->setAccessibleName(tr("Aplicaciones instaladas"));
  list_->setIconSize(kApplicationIconSize);
  list_->setUniformItemSizes(true);
  list_->setSpacing(1);
  column->addWidget(list_, 1);
  auto* const buttons = new QDialogButtonBox(this);
  add_ = buttons->addButton(tr("Añadir"), QDialogButtonBox::AcceptRole);
  auto* const cancel = buttons->addButton(tr("Cancelar"), QDialogButtonBox::RejectRole);
  add_->setDefault(true);
  cancel->setAutoDefault(false);
  column->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &ApplicationChooser::chooseCurrent);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(search_, &QLineEdit::textChanged, this, &ApplicationChooser::search);
  connect(list_, &QListView::doubleClicked, this, &ApplicationChooser::chooseCurrent);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &ApplicationChooser::updateButton);
  connect(&icons_, &InstalledIcons::iconsFound, list_->viewport(), qOverload<>(&QWidget::update));
  connect(&icons_, &InstalledIcons::iconsFound, this, &ApplicationChooser::showFrontIcon);
  search_->setFocus();
  updateButton();
}

void ApplicationChooser::addFront(const RunningApplication& front) {
  front_ = new QPushButton(this);
  front_->setObjectName(QStringLiteral("frontApplication"));
  frontID_ = front.identifier;
  // Any program may give itself any name.
  const QString name = fontMetrics().elidedText(front.name.simplified(), Qt::ElideRight, kFrontNameWidth);
  front_->setText(tr("Añadir la aplicación en uso: %1").arg(plainButtonText(name)));
  front_->setToolTip(plainToolTip(front.identifier));
  front_->setAutoDefault(false);
  front_->setEnabled(!known_.contains(front.identifier));
  const InstalledApplication application{.identifier = front.identifier, .name = front.name, .icon = {}};
  connect(front_, &QPushButton::clicked, this, [this, application] { choose(application); });
  layout()->addWidget(front_);
}

void ApplicationChooser::setApplications(const QList<InstalledApplication>& applications) {
  model_->setApplications(applications);
  // What the user has typed until now finds its application too.
  search(search_->text());
  showFrontIcon();
}

void ApplicationChooser::showFrontIcon() {
  if (front_) front_->setIcon(icons_.icon(frontID_, {}));
}

void ApplicationChooser::search(const QString& query) {
  model_->setQuery(query);
  // Return must add what the search has found.
  if (!query.isEmpty()) list_->setCurrentIndex(model_->firstChoice());
  updateButton();
}

void ApplicationChooser::updateButton() {
  add_->setEnabled(model_->applicationAt(list_->currentIndex()).has_value());
}

void ApplicationChooser::chooseCurrent() {
  if (const auto application = model_->applicationAt(list_->currentIndex())) choose(*application);
}

void ApplicationChooser::choose(const InstalledApplication& application) {
  accept();
  Q_EMIT chosen(application);
}

bool ApplicationChooser::eventFilter(QObject* watched, QEvent* event) {
  if (watched != search_ || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  // The list moves while the user types.
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool moves =
      key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
  if (!moves) return QDialog::eventFilter(watched, event);
  QCoreApplication::sendEvent(list_, event);
  return true;
}

}  // namespace nimbrel
