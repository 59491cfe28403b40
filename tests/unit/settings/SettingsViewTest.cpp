#include "settings/window/SettingsView.h"

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QCheckBox>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>

#include "app/hotkeys/HotKeyRecorder.h"
#include "settings/window/ApplicationChooser.h"
#include "settings/window/IgnoredAppsSettingsTab.h"
#include "settings/window/Picker.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace testing;
using ::testing::ElementsAre;

class SettingsViewTest : public ::testing::Test {
 protected:
  /// Opens the window; what must be there before is prepared first.
  void open() {
    view = std::make_unique<SettingsView>(SettingsParts{.settings = settings,
                                                        .keys = keys,
                                                        .hotKeys = dispatcher,
                                                        .loginItem = loginItem,
                                                        .applications = catalog,
                                                        .workspace = workspace,
                                                        .confirmUser = confirmUser,
                                                        .isEncrypted = [this] { return encrypted; },
                                                        .chooseApplication = chooser});
    view->show();
    QApplication::setActiveWindow(view.get());
    tabs = view->findChild<QTabWidget*>();
  }
  void openTab(int index) {
    if (!view) open();
    tabs->setCurrentIndex(index);
  }
  [[nodiscard]] const SettingsValues& values() const { return settings.values(); }
  [[nodiscard]] QCheckBox* toggle(const QString& label) const {
    for (auto* const box : view->findChildren<QCheckBox*>()) {
      if (box->text() == label) return box;
    }
    return nullptr;
  }
  [[nodiscard]] Picker* picker(const QString& label) const {
    for (auto* const found : view->findChildren<Picker*>()) {
      if (found->accessibleName() == label) return found;
    }
    return nullptr;
  }
  [[nodiscard]] QPushButton* button(const QString& label) const {
    for (auto* const found : view->findChildren<QPushButton*>()) {
      if (found->text() == label) return found;
    }
    return nullptr;
  }
  /// All labels of a tab from top to bottom.
  [[nodiscard]] QStringList texts(int index) const {
    QList<std::pair<int, QString>> found;
    QWidget* const tab = tabs->widget(index);
    const auto add = [&](QWidget* widget, const QString& text) {
      if (!text.isEmpty()) found.append({widget->mapTo(tab, QPoint()).y(), text});
    };
    for (auto* const label : tab->findChildren<QLabel*>())
      add(label, label->text());
    for (auto* const box : tab->findChildren<QCheckBox*>())
      add(box, box->text());
    std::sort(found.begin(), found.end());
    QStringList sorted;
    for (const auto& [y, text] : found)
      sorted.append(text);
    return sorted;
  }
  /// Chooses the row of a picker with the keyboard.
  static void choose(Picker* picker, int row) {
    picker->setFocus();
    QTest::keyClick(picker, Qt::Key_Space);
    ASSERT_TRUE(picker->view()->isVisible());
    QTest::keyClick(picker->view(), Qt::Key_Home);
    for (int i = 0; i < row; ++i)
      QTest::keyClick(picker->view(), Qt::Key_Down);
    QTest::keyClick(picker->view(), Qt::Key_Return);
  }
  [[nodiscard]] QListWidget* list() const { return view->findChild<QListWidget*>(); }
  [[nodiscard]] QStringList ignored() const {
    QStringList ids;
    for (const IgnoredApp& app : values().ignoredApps)
      ids.append(app.bundleID);
    return ids;
  }

  LogRecorder log;
  FakeUserDefaults defaults;
  AppSettings settings{defaults};
  FakeKeyReader keys;
  FakeHotKeyRegistrar registrar;
  HotKeyDispatcher dispatcher{registrar};
  FakeLoginItem loginItem;
  FakeApplicationCatalog catalog;
  FakeWorkspace workspace;
  std::function<void(std::function<void(bool)>)> confirmUser;
  bool encrypted = true;
  std::function<void(QWidget*, std::function<void(const InstalledApplication&)>)> chooser;
  std::unique_ptr<SettingsView> view;
  QTabWidget* tabs = nullptr;
};

TEST_F(SettingsViewTest, HasAFixedSizeAndThreeTabs) {
  open();
  EXPECT_EQ(view->size(), QSize(490, 390));
  EXPECT_EQ(tabs->count(), 3);
}

TEST_F(SettingsViewTest, ShowsTheGeneralSectionsInOrder) {
  open();
  EXPECT_THAT(
      texts(0),
      ElementsAre(u"Atajos de teclado"_s, u"Abrir Nimbrel"_s, u"Pegar siguiente en cola"_s,
                  u"Historial y captura"_s, u"Capacidad del historial"_s, u"Iniciar con el Mac"_s,
                  u"Reconocer texto en imágenes (OCR local)"_s,
                  u"OCR en tu Mac: las imágenes no salen del equipo y su texto se puede buscar."_s,
                  u"Guardar formato del texto (RTF y HTML)"_s,
                  u"Conserva negritas, enlaces y estilos cifrados. Con ⌘↩ se pega siempre sin formato."_s));
}

TEST_F(SettingsViewTest, ShowsTheSecuritySectionsInOrder) {
  openTab(1);
  EXPECT_THAT(
      texts(1),
      ElementsAre(u"Protección de credenciales"_s, u"Proteger datos sensibles con Touch ID"_s,
                  u"Las contraseñas, tokens, claves de API y tarjetas detectadas en el historial quedarán "
                  "ocultas hasta que te autentiques con Touch ID o la contraseña del Mac. El resto del "
                  "historial permanece visible siempre."_s,
                  u"Autodestrucción programada"_s, u"Datos sensibles y credenciales"_s,
                  u"Aplica a contraseñas, claves privadas, tokens de API y tarjetas de crédito."_s,
                  u"Códigos numéricos y 2FA"_s, u"Aplica a códigos SMS de verificación de 6 a 8 dígitos."_s,
                  u"Cifrado en reposo activo"_s,
                  u"Historial cifrado con AES-256-GCM y clave única en el Llavero (Secure Enclave)."_s));
}

TEST_F(SettingsViewTest, SaysWhenTheHistoryIsNotSealed) {
  encrypted = false;
  openTab(1);
  EXPECT_THAT(texts(1),
              ::testing::IsSupersetOf(
                  {u"Cifrado desactivado"_s,
                   u"No se pudo acceder al Llavero del sistema. El historial se guardará sin cifrar."_s}));
}

TEST_F(SettingsViewTest, OffersFiveCapacities) {
  open();
  Picker* const capacity = picker(u"Capacidad del historial"_s);
  QList<qint64> offered;
  for (int i = 0; i < capacity->count(); ++i)
    offered.append(capacity->itemData(i).toLongLong());
  EXPECT_THAT(offered, ElementsAre(25, 50, 100, 200, 500));
  EXPECT_EQ(capacity->choice(), 100);
  choose(capacity, 1);
  EXPECT_EQ(values().maxUnpinned, 50);
  EXPECT_EQ(defaults.stored.value(u"maxUnpinned"_s), DefaultsValue(qint64{50}));
}

TEST_F(SettingsViewTest, OffersTheSameExpiriesForBothKindsOfSecrets) {
  openTab(1);
  for (const auto& label : {u"Datos sensibles y credenciales"_s, u"Códigos numéricos y 2FA"_s}) {
    Picker* const expiry = picker(label);
    QStringList offered;
    for (int i = 0; i < expiry->count(); ++i)
      offered.append(u"%1=%2"_s.arg(expiry->itemText(i)).arg(expiry->itemData(i).toLongLong()));
    EXPECT_THAT(offered,
                ElementsAre(u"No guardar=0"_s, u"Borrar a 1 minuto=60"_s, u"Borrar a 5 minutos=300"_s,
                            u"Borrar a 15 minutos=900"_s, u"Borrar a 1 hora=3600"_s, u"Conservar=-1"_s));
  }
  EXPECT_EQ(picker(u"Datos sensibles y credenciales"_s)->choice(), 300);
  EXPECT_EQ(picker(u"Códigos numéricos y 2FA"_s)->choice(), 900);
  choose(picker(u"Datos sensibles y credenciales"_s), 5);
  choose(picker(u"Códigos numéricos y 2FA"_s), 0);
  EXPECT_EQ(values().sensitiveExpiry, -1);
  EXPECT_EQ(values().softSensitiveExpiry, 0);
}

TEST_F(SettingsViewTest, ShowsAValueThatIsNoneOfTheChoicesUntilAnotherIsChosen) {
  settings.setMaxUnpinned(1234);
  settings.setSensitiveExpiry(120);
  settings.setSoftSensitiveExpiry(-7);
  open();
  Picker* const capacity = picker(u"Capacidad del historial"_s);
  EXPECT_EQ(capacity->choice(), 1234);
  EXPECT_EQ(capacity->count(), 6);
  EXPECT_EQ(picker(u"Datos sensibles y credenciales"_s)->choice(), 120);
  EXPECT_EQ(picker(u"Códigos numéricos y 2FA"_s)->currentText(), u"Conservar");
  EXPECT_EQ(values().softSensitiveExpiry, -7);
  choose(capacity, 0);
  EXPECT_EQ(capacity->count(), 5);
  EXPECT_EQ(values().maxUnpinned, 25);
}

TEST_F(SettingsViewTest, NeitherTheWheelNorAnArrowKeyChangesAPicker) {
  open();
  Picker* const capacity = picker(u"Capacidad del historial"_s);
  capacity->setFocus();
  QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(capacity, &wheel);
  QTest::keyClick(capacity, Qt::Key_Up);
  QTest::keyClick(capacity->view(), Qt::Key_Up);
  QTest::keyClick(capacity->view(), Qt::Key_Escape);
  QTest::keyClick(capacity, Qt::Key_PageUp);
  QTest::keyClick(capacity, Qt::Key_2);
  EXPECT_EQ(capacity->choice(), 100);
  EXPECT_EQ(values().maxUnpinned, 100);
}

TEST_F(SettingsViewTest, SwitchesRecognitionAndFormats) {
  open();
  QCheckBox* const ocr = toggle(u"Reconocer texto en imágenes (OCR local)"_s);
  QCheckBox* const rich = toggle(u"Guardar formato del texto (RTF y HTML)"_s);
  EXPECT_TRUE(ocr->isChecked() && rich->isChecked());
  QTest::keyClick(ocr, Qt::Key_Space);
  EXPECT_FALSE(values().ocrEnabled);
  QTest::mouseClick(rich, Qt::LeftButton, {}, QPoint(8, rich->height() / 2));
  EXPECT_FALSE(values().richEnabled);
}

TEST_F(SettingsViewTest, SwitchesTheLock) {
  openTab(1);
  QCheckBox* const lock = toggle(u"Proteger datos sensibles con Touch ID"_s);
  EXPECT_FALSE(lock->isChecked());
  QTest::keyClick(lock, Qt::Key_Space);
  EXPECT_EQ(values().lockMode, LockMode::sensitiveOnly);
  QTest::keyClick(lock, Qt::Key_Space);
  EXPECT_EQ(values().lockMode, LockMode::disabled);
}

TEST_F(SettingsViewTest, SwitchesTheLockOffForTheUserAlone) {
  std::function<void(bool)> answer;
  confirmUser = [&](std::function<void(bool)> done) { answer = std::move(done); };
  openTab(1);
  QCheckBox* const lock = toggle(u"Proteger datos sensibles con Touch ID"_s);
  QTest::keyClick(lock, Qt::Key_Space);
  EXPECT_FALSE(answer);
  EXPECT_EQ(values().lockMode, LockMode::sensitiveOnly);
  for (const bool confirmed : {false, true}) {
    QTest::keyClick(lock, Qt::Key_Space);
    ASSERT_TRUE(answer);
    EXPECT_TRUE(lock->isChecked());
    EXPECT_EQ(values().lockMode, LockMode::sensitiveOnly);
    std::exchange(answer, {})(confirmed);
    EXPECT_EQ(lock->isChecked(), !confirmed);
  }
  EXPECT_EQ(values().lockMode, LockMode::disabled);
}

TEST_F(SettingsViewTest, FollowsChangesFromElsewhere) {
  open();
  settings.setMaxUnpinned(200);
  settings.setOcrEnabled(false);
  settings.setLockMode(LockMode::sensitiveOnly);
  settings.setSensitiveExpiry(3600);
  settings.setHotKey({0, 256, u"A"_s});
  EXPECT_EQ(picker(u"Capacidad del historial"_s)->choice(), 200);
  EXPECT_FALSE(toggle(u"Reconocer texto en imágenes (OCR local)"_s)->isChecked());
  EXPECT_TRUE(toggle(u"Proteger datos sensibles con Touch ID"_s)->isChecked());
  EXPECT_EQ(picker(u"Datos sensibles y credenciales"_s)->choice(), 3600);
  EXPECT_NE(button(u"⌘A"_s), nullptr);
}

TEST_F(SettingsViewTest, ReadsTheLoginItemWhenItIsShownAndSwitchesIt) {
  loginItem.enabled = true;
  open();
  QCheckBox* const login = toggle(u"Iniciar con el Mac"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return login->isChecked(); }));
  login->click();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !loginItem.enabled; }));
  view->hide();
  loginItem.enabled = true;
  view->show();
  EXPECT_TRUE(QTest::qWaitFor([&] { return login->isChecked(); }));
}

TEST_F(SettingsViewTest, ALoginItemThatFailsIsLoggedAndShowsTheRealState) {
  loginItem.failure = u"disco lleno"_s;
  loginItem.enabled = true;
  open();
  QCheckBox* const login = toggle(u"Iniciar con el Mac"_s);
  ASSERT_TRUE(QTest::qWaitFor([&] { return login->isChecked(); }));
  login->click();
  EXPECT_FALSE(login->isChecked());
  EXPECT_TRUE(QTest::qWaitFor([&] { return log.has(u"Iniciar con el Mac: disco lleno"_s); }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return login->isChecked(); }));
}

TEST_F(SettingsViewTest, RecordsBothHotKeys) {
  open();
  const auto recorders = view->findChildren<HotKeyRecorder*>();
  ASSERT_EQ(recorders.size(), 2);
  keys.next = PressedKey{.keyCode = 0, .modifiers = 256, .characters = u"a"_s};
  for (HotKeyRecorder* const recorder : recorders) {
    recorder->findChild<QPushButton*>()->click();
    QTest::keyClick(recorder->findChild<KeyCaptureView*>(), Qt::Key_X);
  }
  EXPECT_EQ(values().hotKey, (HotKeyCombo{0, 256, u"A"_s}));
  EXPECT_EQ(values().nextHotKey, (HotKeyCombo{0, 256, u"A"_s}));
}

TEST_F(SettingsViewTest, ARefusedHotKeyKeepsTheOldOne) {
  settings.setHotKeyApplier([](const auto&) { return false; });
  open();
  HotKeyRecorder* const recorder = view->findChildren<HotKeyRecorder*>().first();
  recorder->findChild<QPushButton*>()->click();
  keys.next = PressedKey{.keyCode = 0, .modifiers = 256, .characters = u"a"_s};
  QTest::keyClick(recorder->findChild<KeyCaptureView*>(), Qt::Key_X);
  EXPECT_EQ(values().hotKey, defaultHotKey());
  EXPECT_EQ(recorder->findChild<QPushButton*>()->text(), u"⇧⌘V");
  EXPECT_EQ(recorder->message(), u"Ya está en uso");
}

TEST_F(SettingsViewTest, ListsTheIgnoredApplicationsWithTheirIcons) {
  QPixmap red(16, 16);
  red.fill(Qt::red);
  catalog.installed = {{u"com.bitwarden.desktop"_s, u"Bitwarden"_s, u"bw"_s}};
  catalog.icons.insert(u"bw"_s, QIcon(red));
  openTab(2);
  EXPECT_THAT(texts(2),
              ElementsAre(u"Las aplicaciones añadidas a esta lista no registrarán nada de lo que copies "
                          "dentro de ellas."_s));
  EXPECT_EQ(list()->count(), 10);
  EXPECT_EQ(list()->item(0)->text(), u"Contraseñas");
  const auto color = [this](int row) {
    return list()->item(row)->icon().pixmap(16, 16).toImage().pixelColor(8, 8);
  };
  EXPECT_TRUE(QTest::qWaitFor([&] { return color(4) == QColor(Qt::red); }));
  EXPECT_NE(color(0), QColor(Qt::red));
  EXPECT_FALSE(list()->item(0)->icon().isNull());
}

TEST_F(SettingsViewTest, RemovesTheSelectedApplication) {
  openTab(2);
  QPushButton* const remove = button(u"Quitar aplicación seleccionada"_s);
  EXPECT_FALSE(remove->isEnabled());
  list()->setCurrentRow(0);
  EXPECT_TRUE(remove->isEnabled());
  remove->click();
  EXPECT_EQ(ignored().first(), u"com.apple.keychainaccess");
  EXPECT_EQ(list()->count(), 9);
  QTest::keyClick(list(), Qt::Key_Delete);
  EXPECT_EQ(ignored().first(), u"com.1password.1password");
  defaults.values = defaults.stored;
  EXPECT_EQ(AppSettings(defaults).values().ignoredApps, values().ignoredApps);
}

TEST_F(SettingsViewTest, RemovingTheLastOneDisablesTheButton) {
  settings.setIgnoredApps({{u"a"_s, u"A"_s}});
  openTab(2);
  list()->setCurrentRow(0);
  button(u"Quitar aplicación seleccionada"_s)->click();
  EXPECT_TRUE(ignored().isEmpty());
  EXPECT_FALSE(button(u"Quitar aplicación seleccionada"_s)->isEnabled());
  QTest::keyClick(list(), Qt::Key_Delete);
}

TEST_F(SettingsViewTest, AddsAnInstalledApplicationAtTheEndAndSelectsIt) {
  catalog.installed = {{u"org.kde.kate"_s, u"Kate"_s, {}}, {u"xterm"_s, u"XTerm"_s, {}}};
  openTab(2);
  button(u"Añadir aplicación…"_s)->click();
  auto* const dialog = view->findChild<ApplicationChooser*>();
  ASSERT_NE(dialog, nullptr);
  auto* const installed = dialog->findChild<QListView*>();
  ASSERT_TRUE(QTest::qWaitFor([&] { return installed->model()->rowCount() == 2; }));
  QTest::keyClicks(dialog->findChild<QLineEdit*>(), u"kat"_s);
  QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
  EXPECT_EQ(values().ignoredApps.last(), (IgnoredApp{u"org.kde.kate"_s, u"Kate"_s}));
  EXPECT_EQ(list()->currentRow(), 10);
  EXPECT_TRUE(QTest::qWaitFor([&] { return view->findChild<ApplicationChooser*>() == nullptr; }));
}

TEST_F(SettingsViewTest, AddsTheApplicationInFrontWithOneClick) {
  workspace.other = RunningApplication{u"org.example.App"_s, u"Mi & App"_s, 7};
  openTab(2);
  button(u"Añadir aplicación…"_s)->click();
  auto* const front = view->findChild<ApplicationChooser*>()->findChild<QPushButton*>(u"frontApplication"_s);
  ASSERT_NE(front, nullptr);
  EXPECT_EQ(front->text(), u"Añadir la aplicación en uso: Mi && App");
  front->click();
  EXPECT_EQ(values().ignoredApps.last(), (IgnoredApp{u"org.example.App"_s, u"Mi & App"_s}));
}

TEST_F(SettingsViewTest, AnApplicationIsInTheListOnce) {
  chooser = [](QWidget*, const auto& chosen) {
    chosen({.identifier = u"com.authy"_s, .name = u"Otra"_s, .icon = {}});
  };
  openTab(2);
  button(u"Añadir aplicación…"_s)->click();
  EXPECT_EQ(list()->count(), 10);
  EXPECT_EQ(list()->currentItem()->text(), u"Authy");
}

TEST_F(SettingsViewTest, ClosesWithEscapeAndWithTheCloseKeys) {
  for (const QKeySequence::StandardKey key : {QKeySequence::Cancel, QKeySequence::Close}) {
    if (!view) open();
    view->show();
    QTest::keySequence(view.get(), key);
    EXPECT_FALSE(view->isVisible());
  }
}

TEST_F(SettingsViewTest, EveryControlIsReachedByTabAndHasANameForScreenReaders) {
  open();
  for (int index = 0; index < tabs->count(); ++index) {
    tabs->setCurrentIndex(index);
    if (auto* const ignoredApps = list()) ignoredApps->setCurrentRow(0);
    QSet<QWidget*> expected;
    for (auto* const widget : tabs->widget(index)->findChildren<QWidget*>()) {
      const bool isControl = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
                             qobject_cast<QListWidget*>(widget);
      if (isControl && widget->isVisible() && widget->isEnabled()) expected.insert(widget);
    }
    EXPECT_GE(expected.size(), 3);
    for (QWidget* const widget : std::as_const(expected)) {
      QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(widget);
      EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
    }
    tabs->tabBar()->setFocus();
    for (int i = 0; i < 30; ++i) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      expected.remove(QApplication::focusWidget());
    }
    EXPECT_TRUE(expected.isEmpty()) << index;
  }
}

TEST_F(SettingsViewTest, MayGoWhileItStillAsksTheSystem) {
  openTab(2);
  button(u"Añadir aplicación…"_s)->click();
  view.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace nimbrel
