#include "panel/StatusBanners.h"

#include <QVBoxLayout>

#include "panel/Banner.h"

namespace nimbrel {

StatusBanners::StatusBanners(const StatusSources& sources, QWidget* parent)
    : QWidget(parent), sources_(sources), column_(new QVBoxLayout(this)) {
  setObjectName(QStringLiteral("banners"));
  column_->setContentsMargins(10, 0, 10, 8);
  column_->setSpacing(6);
  paused_ = add(new Banner(QStringLiteral("pausedBanner"), QStringLiteral("pause.circle.fill"),
                           tr("Captura en pausa: lo que copies no se guarda."), tr("Reanudar"),
                           Banner::Tone::notice, this));
  blocked_ =
      add(new Banner(QStringLiteral("blockedBanner"), QStringLiteral("exclamationmark.triangle"),
                     tr("macOS bloquea el acceso al portapapeles. Permítelo en Privacidad y seguridad."),
                     tr("Abrir"), Banner::Tone::notice, this));
  keyless_ = add(new Banner(QStringLiteral("keylessBanner"), QStringLiteral("exclamationmark.shield.fill"),
                            tr("El Llavero no está disponible: el historial se guardará sin cifrar."), {},
                            Banner::Tone::alarm, this));
  unreadable_ = add(new Banner(QStringLiteral("unreadableKeyBanner"),
                               QStringLiteral("lock.open.trianglebadge.exclamationmark"),
                               tr("No se pudo leer la clave del Llavero: el historial se guarda SIN cifrar."),
                               tr("Abrir Llaveros"), Banner::Tone::alarm, this));
  untrusted_ = add(new Banner(QStringLiteral("untrustedBanner"), QStringLiteral("hand.raised"),
                              tr("Para pegar automáticamente, concede el permiso de Accesibilidad."),
                              tr("Conceder"), Banner::Tone::notice, this));
  connect(paused_, &Banner::activated, this, [this] { sources_.store.setPaused(false); });
  connect(blocked_, &Banner::activated, this, [this] {
    if (!sources_.permission.openPrivacySettings())
      Q_EMIT failed(tr("No hay ningún programa con que abrirlo."));
  });
  connect(unreadable_, &Banner::activated, this, [this] {
    if (!sources_.opener.openKeyStore()) Q_EMIT failed(tr("No hay ningún programa con que abrirlo."));
  });
  connect(untrusted_, &Banner::activated, this, [this] {
    if (!sources_.permission.requestAccessibility())
      Q_EMIT failed(tr("Este escritorio no permite que un programa pulse teclas: pega tú con Ctrl-V."));
  });
  connect(&sources_.store, &ClipboardStore::pauseChanged, this, &StatusBanners::refresh);
  connect(&sources_.permission, &PermissionState::changed, this, &StatusBanners::refresh);
  refresh();
}

Banner* StatusBanners::add(Banner* banner) {
  column_->addWidget(banner);
  return banner;
}

void StatusBanners::refresh() {
  using KeyState = HistoryCipher::KeyState;
  const KeyState key = sources_.keyState();
  paused_->setVisible(sources_.store.isPaused());
  blocked_->setVisible(sources_.permission.pasteboardBlocked());
  keyless_->setVisible(key == KeyState::unavailable);
  unreadable_->setVisible(key == KeyState::unreadable);
  untrusted_->setVisible(!sources_.permission.accessibilityGranted());
  bool any = false;
  for (const Banner* const banner : {paused_, blocked_, keyless_, unreadable_, untrusted_})
    any = any || !banner->isHidden();
  setVisible(any);
}

}  // namespace nimbrel
