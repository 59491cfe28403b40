#include "settings/window/GeneralSettingsTab.h"

#include <QVBoxLayout>
#include <array>

#include "app/hotkeys/HotKeyRecorder.h"
#include "capture/model/Log.h"

namespace nimbrel {
namespace {

constexpr std::array<qint64, 5> kCapacities{25, 50, 100, 200, 500};

}  // namespace

GeneralSettingsTab::GeneralSettingsTab(const SettingsParts& parts, Background& background, QWidget* parent)
    : QWidget(parent), parts_(parts), background_(background) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* const page = new SettingsPage(this);
  column->addWidget(page);
  addHotKeys(*page);
  addHistory(*page);
  showSettings();
  AppSettings& settings = parts_.settings;
  connect(&settings, &AppSettings::maxUnpinnedChanged, this, &GeneralSettingsTab::showSettings);
  connect(&settings, &AppSettings::ocrEnabledChanged, this, &GeneralSettingsTab::showSettings);
  connect(&settings, &AppSettings::richEnabledChanged, this, &GeneralSettingsTab::showSettings);
  connect(capacity_, &Picker::chosen, &settings, &AppSettings::setMaxUnpinned);
  connect(ocr_, &QCheckBox::clicked, &settings, &AppSettings::setOcrEnabled);
  connect(rich_, &QCheckBox::clicked, &settings, &AppSettings::setRichEnabled);
  connect(launchAtLogin_, &QCheckBox::clicked, this, &GeneralSettingsTab::setLoginItem);
}

void GeneralSettingsTab::addHotKeys(SettingsPage& page) {
  AppSettings& settings = parts_.settings;
  const auto addField = [&](const QString& title, HotKeyCombo SettingsValues::*member,
                            void (AppSettings::*changed)(), bool (AppSettings::*apply)(const HotKeyCombo&)) {
    auto* const recorder =
        new HotKeyRecorder(parts_.keys, parts_.hotKeys, title,
                           [&settings, apply](const HotKeyCombo& combo) { return (settings.*apply)(combo); });
    const auto show = [&settings, recorder, member] { recorder->setCombo(settings.values().*member); };
    show();
    connect(&settings, changed, recorder, show);
    page.addRow(title, recorder);
  };
  page.addSection(tr("Atajos de teclado"));
  addField(tr("Abrir Nimbrel"), &SettingsValues::hotKey, &AppSettings::hotKeyChanged,
           &AppSettings::applyHotKey);
  addField(tr("Pegar siguiente en cola"), &SettingsValues::nextHotKey, &AppSettings::nextHotKeyChanged,
           &AppSettings::applyNextHotKey);
}

void GeneralSettingsTab::addHistory(SettingsPage& page) {
  page.addSection(tr("Historial y captura"));
  capacity_ = new Picker(this);
  for (const qint64 count : kCapacities)
    capacity_->addChoice(count, tr("%n elemento(s)", nullptr, grammaticalNumber(count)));
  page.addRow(tr("Capacidad del historial"), capacity_);
  launchAtLogin_ = page.addSwitch(tr("Iniciar con el Mac"));
  ocr_ = page.addSwitch(tr("Reconocer texto en imágenes (OCR local)"),
                        tr("OCR en tu Mac: las imágenes no salen del equipo y su texto se puede buscar."));
  rich_ = page.addSwitch(
      tr("Guardar formato del texto (RTF y HTML)"),
      tr("Conserva negritas, enlaces y estilos cifrados. Con ⌘↩ se pega siempre sin formato."));
}

void GeneralSettingsTab::showSettings() {
  const SettingsValues& values = parts_.settings.values();
  capacity_->setChoice(values.maxUnpinned,
                       tr("%n elemento(s)", nullptr, grammaticalNumber(values.maxUnpinned)));
  ocr_->setChecked(values.ocrEnabled);
  rich_->setChecked(values.richEnabled);
}

void GeneralSettingsTab::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  readLoginItem();
}

void GeneralSettingsTab::readLoginItem() {
  background_.run([&login = parts_.loginItem] { return login.isEnabled(); },
                  [this](bool enabled) { launchAtLogin_->setChecked(enabled); });
}

void GeneralSettingsTab::setLoginItem(bool enabled) {
  background_.run(
      [&login = parts_.loginItem, enabled] {
        if (const auto failure = login.setEnabled(enabled)) logFailure("Iniciar con el Mac", *failure);
        return login.isEnabled();
      },
      [this](bool isEnabled) { launchAtLogin_->setChecked(isEnabled); });
}

}  // namespace nimbrel
