#include "app/Doctor.h"

#include <QCoreApplication>

namespace nimbrel {
namespace {

using Grade = Finding::Grade;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(Doctor)
};

bool isMac(const DoctorFacts& facts) {
  return facts.desktop.kind == DesktopFacts::Kind::mac;
}

Finding program(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Programa");
  if (facts.isRunning) return {Grade::works, subject, Texts::tr("en marcha"), {}};
  return {Grade::partly, subject, Texts::tr("no está en marcha"),
          Texts::tr("Arráncalo desde el menú o con «nimbrel»; los ajustes lo arrancan con la sesión.")};
}

Finding database(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Historial");
  const DatabaseHealth& health = facts.database;
  switch (health.state) {
    case DatabaseHealth::State::missing:
      return {Grade::works, subject, Texts::tr("aún no hay ninguno"), {}};
    case DatabaseHealth::State::damaged:
      return {Grade::fails, subject, Texts::tr("la base de datos está dañada: %1").arg(health.detail),
              Texts::tr("Termina Nimbrel con «nimbrel quit» y ejecuta «nimbrel doctor --repair».")};
    case DatabaseHealth::State::untouchable:
      return {Grade::fails, subject, Texts::tr("la base de datos no se puede abrir: %1").arg(health.detail),
              Texts::tr("Mira los permisos de %1 y si la escribió una versión más reciente de Nimbrel.")
                  .arg(facts.storageDirectory)};
    case DatabaseHealth::State::sound:
      break;
  }
  const QString rows = Texts::tr("%n elemento(s)", nullptr, static_cast<int>(health.rows));
  if (health.unreadable == 0) return {Grade::works, subject, rows, {}};
  return {Grade::partly, subject,
          Texts::tr("%1, de ellos %2 que no se pueden leer").arg(rows).arg(health.unreadable),
          Texts::tr("Se cifraron con otra clave: se verán si vuelve el almacén de claves en que estaba.")};
}

Finding storage(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Carpeta");
  if (facts.canWriteStorage) return {Grade::works, subject, facts.storageDirectory, {}};
  return {Grade::fails, subject, Texts::tr("no se puede escribir en %1").arg(facts.storageDirectory),
          Texts::tr("El historial solo vive en la memoria. Mira los permisos y el espacio libre.")};
}

Finding keyStore(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Almacén de claves");
  const QString advice =
      isMac(facts) ? Texts::tr(
                         "Sin clave el historial se guarda sin cifrar: abre Acceso a Llaveros y desbloquea "
                         "el llavero de inicio de sesión.")
                   : Texts::tr(
                         "Sin clave el historial se guarda sin cifrar: instala o arranca gnome-keyring, "
                         "KWallet o KeePassXC.");
  if (!facts.keyStore)
    return {Grade::fails, subject, Texts::tr("no contesta"),
            Texts::tr("Quizá espera a que lo desbloquees: busca su ventana, o entra de nuevo en la sesión.")};
  switch (*facts.keyStore) {
    case SecretLookup::Outcome::found:
      return {Grade::works, subject, Texts::tr("tiene la clave del historial"), {}};
    case SecretLookup::Outcome::notFound:
      if (facts.database.unreadable > 0)
        return {Grade::fails, subject, Texts::tr("no tiene la clave con la que se cifró el historial"),
                Texts::tr("Recupera el almacén de claves en que estaba, o el historial seguirá ilegible.")};
      return {Grade::works, subject, Texts::tr("responde; la clave se crea en el primer arranque"), {}};
    case SecretLookup::Outcome::unavailable:
      return {Grade::fails, subject, Texts::tr("no hay ninguno"), advice};
    case SecretLookup::Outcome::failed:
      break;
  }
  return {Grade::fails, subject, Texts::tr("no deja leer la clave"),
          Texts::tr("Desbloquéalo y arranca Nimbrel de nuevo.")};
}

QList<Finding> hotKeys(const DoctorFacts& facts) {
  QList<Finding> findings;
  const HotKeyCombo combos[] = {facts.settings.hotKey, facts.settings.nextHotKey};
  for (qsizetype i = 0; i < facts.desktop.takenHotKeys.size() && i < 2; ++i) {
    const QString subject = Texts::tr("Atajo %1").arg(combos[i].displayString());
    const bool taken = facts.desktop.takenHotKeys.at(i);
    if (taken && facts.isRunning)
      findings.append({Grade::works, subject, Texts::tr("lo tiene Nimbrel, u otro programa"), {}});
    if (taken && !facts.isRunning)
      findings.append({Grade::fails, subject, Texts::tr("lo tiene otro programa"),
                       Texts::tr("Elige otro en los ajustes, o quítaselo al otro programa.")});
    if (!taken && facts.isRunning)
      findings.append({Grade::fails, subject, Texts::tr("Nimbrel no lo tiene"),
                       Texts::tr("Elígelo otra vez en los ajustes, o arranca Nimbrel de nuevo.")});
    if (!taken && !facts.isRunning) findings.append({Grade::works, subject, Texts::tr("está libre"), {}});
  }
  return findings;
}

Finding paste(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Pegar");
  if (facts.desktop.canPressKeys)
    return {Grade::works, subject, Texts::tr("Nimbrel puede pulsar teclas"), {}};
  return {Grade::fails, subject, Texts::tr("Nimbrel no puede pulsar teclas"),
          Texts::tr("Falta la extensión XTEST del servidor X. Pega tú con Ctrl-V.")};
}

Finding tray(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Bandeja");
  if (facts.desktop.hasTray) return {Grade::works, subject, Texts::tr("hay una"), {}};
  return {Grade::partly, subject, Texts::tr("no hay ninguna: el símbolo no se ve"),
          Texts::tr("Todo funciona con el atajo. En GNOME hace falta la extensión AppIndicator.")};
}

QList<Finding> display(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Escritorio");
  if (!facts.desktop.hasDisplay)
    return {{Grade::fails, subject, Texts::tr("no hay ninguno a la vista"),
             Texts::tr("Ejecuta esto en una terminal del escritorio.")}};
  const QString kind = isMac(facts) ? QStringLiteral("macOS") : QStringLiteral("X11");
  QList<Finding> findings{{Grade::works, subject, kind, {}}};
  if (facts.desktop.hasForeignWindows)
    findings = {
        {Grade::partly, subject, Texts::tr("Wayland"),
         Texts::tr("Nimbrel solo ve, por XWayland, los programas de X11: elige una sesión X11 al entrar.")}};
  findings << hotKeys(facts) << tray(facts);
  // A Mac answers for the terminal that the command was started in.
  if (!isMac(facts)) findings << paste(facts);
  return findings;
}

Finding recognition(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Texto en imágenes");
  if (!facts.desktop.hasImageHelper)
    return {Grade::fails, subject, Texts::tr("falta el ayudante nimbrel-imaging"),
            Texts::tr("No se guardan imágenes. Instala Nimbrel otra vez.")};
  if (!facts.settings.ocrEnabled) return {Grade::works, subject, Texts::tr("apagado en los ajustes"), {}};
  const QStringList& languages = facts.desktop.recognitionLanguages;
  // The system's own recognizer has whatever languages it has.
  if (languages.size() == 2 || (isMac(facts) && !languages.isEmpty()))
    return {Grade::works, subject, languages.join(QStringLiteral(", ")), {}};
  return {Grade::partly, subject,
          Texts::tr("faltan idiomas; hay: %1").arg(languages.join(QStringLiteral(", "))),
          isMac(facts) ? Texts::tr("Actualiza macOS: el reconocimiento de texto es del sistema.")
                       : Texts::tr("Instala tesseract-ocr-spa y tesseract-ocr-eng.")};
}

Finding lock(const DoctorFacts& facts) {
  const QString subject = Texts::tr("Protección de secretos");
  const bool isOn = facts.settings.lockMode != LockMode::disabled;
  if (!facts.desktop.hasLockAction)
    return {
        isOn ? Grade::fails : Grade::partly, subject, Texts::tr("polkit no conoce la acción de Nimbrel"),
        Texts::tr("Instala el paquete, o copia app.nimbrel.Nimbrel.policy a /usr/share/polkit-1/actions.")};
  if (!facts.lockObstacle)
    return {Grade::works, subject, isOn ? Texts::tr("encendida") : Texts::tr("apagada en los ajustes"), {}};
  return {isOn ? Grade::fails : Grade::partly, subject,
          Texts::tr("no se puede pedir la contraseña (%1)").arg(*facts.lockObstacle),
          isMac(facts) ? Texts::tr("Pon una contraseña a tu cuenta, y Touch ID si el Mac lo tiene.")
                       : Texts::tr("Hacen falta polkit, su agente en la sesión y Nimbrel instalado.")};
}

Finding bus(const DoctorFacts& facts) {
  const QString subject = QStringLiteral("D-Bus");
  if (facts.desktop.hasSessionBus) return {Grade::works, subject, Texts::tr("hay un bus de sesión"), {}};
  return {Grade::fails, subject, Texts::tr("no hay un bus de sesión"),
          Texts::tr("Sin él no hay órdenes, ni almacén de claves, ni un solo Nimbrel por sesión: instala "
                    "dbus-user-session.")};
}

Finding setAside(const DoctorFacts& facts) {
  return {
      Grade::partly, Texts::tr("Historial apartado"), facts.setAside.join(QStringLiteral(", ")),
      Texts::tr(
          "Quedó al reparar, en %1. Bórralo cuando no lo necesites: también guarda lo que ya había caducado.")
          .arg(facts.storageDirectory)};
}

}  // namespace

QList<Finding> diagnose(const DoctorFacts& facts) {
  QList<Finding> findings{program(facts), storage(facts), database(facts)};
  if (!facts.setAside.isEmpty()) findings.append(setAside(facts));
  findings << keyStore(facts);
  findings += display(facts);
  findings << recognition(facts) << lock(facts);
  if (!isMac(facts)) findings << bus(facts);
  return findings;
}

QString report(const QList<Finding>& findings) {
  QString text;
  for (const Finding& finding : findings) {
    const QString mark = finding.grade == Grade::works    ? QStringLiteral("✓")
                         : finding.grade == Grade::partly ? QStringLiteral("!")
                                                          : QStringLiteral("✗");
    text += QStringLiteral("%1 %2: %3\n").arg(mark, finding.subject, finding.text);
    if (!finding.advice.isEmpty()) text += QStringLiteral("    %1\n").arg(finding.advice);
  }
  return text;
}

}  // namespace nimbrel
