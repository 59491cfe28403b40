#include "settings/window/SecuritySettingsTab.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

#include "look/Symbols.h"
#include "look/Tones.h"

namespace nimbrel {
namespace {

constexpr int kSymbolSize = 28;
constexpr qint64 kKeep = -1;

}  // namespace

SecuritySettingsTab::SecuritySettingsTab(const SettingsParts& parts, QWidget* parent)
    : QWidget(parent), parts_(parts) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* const page = new SettingsPage(this);
  column->addWidget(page);
  page->addSection(tr("Protección de credenciales"));
  lock_ = page->addSwitch(
      tr("Proteger datos sensibles con Touch ID"),
      tr("Las contraseñas, tokens, claves de API y tarjetas detectadas en el historial quedarán ocultas "
         "hasta que te autentiques con Touch ID o la contraseña del Mac. El resto del historial permanece "
         "visible "
         "siempre."));
  page->addSection(tr("Autodestrucción programada"));
  hard_ = addExpiry(*page, tr("Datos sensibles y credenciales"),
                    tr("Aplica a contraseñas, claves privadas, tokens de API y tarjetas de crédito."));
  soft_ = addExpiry(*page, tr("Códigos numéricos y 2FA"),
                    tr("Aplica a códigos SMS de verificación de 6 a 8 dígitos."));
  page->addSection({});
  status_ = makeStatus();
  page->addWide(status_);
  showSettings();
  AppSettings& settings = parts_.settings;
  for (const auto changed : {&AppSettings::lockModeChanged, &AppSettings::sensitiveExpiryChanged,
                             &AppSettings::softSensitiveExpiryChanged})
    connect(&settings, changed, this, &SecuritySettingsTab::showSettings);
  connect(lock_, &QCheckBox::clicked, this, &SecuritySettingsTab::switchLock);
  connect(hard_, &Picker::chosen, &settings, &AppSettings::setSensitiveExpiry);
  connect(soft_, &Picker::chosen, &settings, &AppSettings::setSoftSensitiveExpiry);
}

void SecuritySettingsTab::switchLock(bool on) {
  if (on || !parts_.confirmUser)
    return parts_.settings.setLockMode(on ? LockMode::sensitiveOnly : LockMode::disabled);
  // Whoever finds the settings open must not see the secrets for that.
  lock_->setChecked(true);
  if (std::exchange(confirming_, true)) return;
  parts_.confirmUser([tab = QPointer(this)](bool confirmed) {
    if (!tab) return;
    tab->confirming_ = false;
    if (confirmed) tab->parts_.settings.setLockMode(LockMode::disabled);
  });
}

Picker* SecuritySettingsTab::addExpiry(SettingsPage& page, const QString& label, const QString& caption) {
  auto* const picker = new Picker(this);
  picker->addChoice(0, tr("No guardar"));
  picker->addChoice(60, tr("Borrar a 1 minuto"));
  picker->addChoice(300, tr("Borrar a 5 minutos"));
  picker->addChoice(900, tr("Borrar a 15 minutos"));
  picker->addChoice(3600, tr("Borrar a 1 hora"));
  picker->addChoice(kKeep, tr("Conservar"));
  page.addRow(label, picker, caption);
  return picker;
}

QWidget* SecuritySettingsTab::makeStatus() {
  auto* const status = new QWidget(this);
  auto* const row = new QHBoxLayout(status);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(10);
  statusSymbol_ = new QLabel(status);
  statusSymbol_->setFixedWidth(kSymbolSize);
  statusTitle_ = headingLabel({}, status);
  statusText_ = captionLabel({}, status);
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(1);
  texts->addWidget(statusTitle_);
  texts->addWidget(statusText_);
  row->addWidget(statusSymbol_);
  row->addLayout(texts, 1);
  return status;
}

void SecuritySettingsTab::showSettings() {
  const SettingsValues& values = parts_.settings.values();
  lock_->setChecked(values.lockMode != LockMode::disabled);
  const auto show = [](Picker* picker, qint64 seconds) {
    if (seconds < 0)
      picker->setChoice(kKeep, {});
    else
      picker->setChoice(seconds, tr("Borrar a %n segundo(s)", nullptr, grammaticalNumber(seconds)));
  };
  show(hard_, values.sensitiveExpiry);
  show(soft_, values.softSensitiveExpiry);
}

void SecuritySettingsTab::showEncryption() {
  const bool active = parts_.isEncrypted();
  const QString symbol =
      active ? QStringLiteral("lock.shield.fill") : QStringLiteral("exclamationmark.shield.fill");
  statusSymbol_->setPixmap(symbols::pixmap(
      symbol, kSymbolSize, active ? wellColor(palette()) : warningColor(palette()), devicePixelRatioF()));
  statusTitle_->setText(active ? tr("Cifrado en reposo activo") : tr("Cifrado desactivado"));
  statusText_->setText(
      active ? tr("Historial cifrado con AES-256-GCM y clave única en el Llavero (Secure Enclave).")
             : tr("No se pudo acceder al Llavero del sistema. El historial se guardará sin cifrar."));
  status_->setAccessibleName(statusTitle_->text());
  status_->setAccessibleDescription(statusText_->text());
}

void SecuritySettingsTab::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  showEncryption();
}

void SecuritySettingsTab::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && isVisible()) showEncryption();
}

}  // namespace nimbrel
