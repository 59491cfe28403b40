#include "panel/PanelMenus.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::IsSupersetOf;

class PanelMenusTest : public testing::PanelViewFixture {
 protected:
  /// Fixture's own, by a shorter name.
  static QStringList of(QMenu* menu) {
    const QStringList texts = entries(*menu);
    menu->close();
    return texts;
  }
  QMenu* gearMenu() { return openMenu(u"gear"_s, u"gearMenu"_s); }
  QMenu* transformsOf(QMenu* menu) {
    auto* const transforms = menu->findChild<QMenu*>(u"transformsMenu"_s);
    Q_EMIT transforms->aboutToShow();
    return transforms;
  }
};

TEST_F(PanelMenusTest, OfAClipHoldWhatAppliesToIt) {
  launch();
  copyText(u"hola"_s);
  copyText(u"https://example.org"_s);
  copyFile(u"/tmp/a.txt"_s);
  copyImage("vacía");
  copyReadImage("factura", u"Factura 7"_s);
  open();
  const QStringList always{u"Añadir a la cola"_s, u"Asignar a colección"_s, u"Nueva colección…"_s, u"Fijar"_s,
                           u"Borrar"_s,           u"Vista rápida"_s};
  const auto rest = [&](QMenu* menu) {
    QStringList texts = of(menu);
    EXPECT_THAT(texts, IsSupersetOf(always));
    texts.removeIf([&](const QString& text) { return always.contains(text); });
    return texts;
  };
  EXPECT_EQ(rest(clipMenu()), QStringList{u"Pegar texto de la imagen"_s});
  press(Qt::Key_Down);
  EXPECT_EQ(rest(clipMenu()), QStringList());
  press(Qt::Key_Down);
  EXPECT_EQ(rest(clipMenu()), QStringList{u"Mostrar en el Finder"_s});
  press(Qt::Key_Down);
  EXPECT_EQ(rest(clipMenu()),
            (QStringList{u"Pegar sin formato"_s, u"Pegar transformado"_s, u"Abrir enlace"_s}));
  press(Qt::Key_Down);
  EXPECT_EQ(rest(clipMenu()), (QStringList{u"Pegar sin formato"_s, u"Pegar transformado"_s}));
}

TEST_F(PanelMenusTest, PasteWithoutFormatting) {
  launch();
  copyRtf(u"hola"_s, "{\\rtf1 hola}");
  open();
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  choose(clipMenu(), u"Pegar sin formato"_s);
  EXPECT_EQ(pasted(), u"hola"_s);
  EXPECT_FALSE(pasteboard.writes.last().rtf);
  EXPECT_EQ(pastes.count(), 1);
}

TEST_F(PanelMenusTest, PasteTheTextOfAnImage) {
  launch();
  copyReadImage("factura", u"Factura 7"_s);
  open();
  choose(clipMenu(), u"Pegar texto de la imagen"_s);
  EXPECT_EQ(pasted(), u"Factura 7"_s);
}

TEST_F(PanelMenusTest, OpenALinkAndLeave) {
  launch();
  copyText(u"https://example.org/a"_s);
  open();
  const QSignalSpy leavings(view.get(), &ContentView::dismissRequested);
  choose(clipMenu(), u"Abrir enlace"_s);
  EXPECT_EQ(opener.opened, QStringList{u"https://example.org/a"_s});
  EXPECT_EQ(leavings.count(), 1);
  press(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(opener.opened.size(), 2);
  opener.bare = true;
  press(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(leavings.count(), 2);
  EXPECT_TRUE(find(u"noticeBar"_s)->isVisible());
}

TEST_F(PanelMenusTest, RevealAFile) {
  launch();
  copyFile(u"/tmp/a b.txt"_s);
  open();
  choose(clipMenu(), u"Mostrar en el Finder"_s);
  EXPECT_EQ(opener.opened, QStringList{u"reveal file:///tmp/a b.txt"_s});
}

TEST_F(PanelMenusTest, QueueAndUnqueue) {
  show(1);
  choose(clipMenu(), u"Añadir a la cola"_s);
  EXPECT_TRUE(store().isQueued(clip(0).id));
  choose(clipMenu(), u"Quitar de la cola"_s);
  EXPECT_FALSE(store().isQueued(clip(0).id));
  press(Qt::Key_N, Qt::ControlModifier);
  EXPECT_TRUE(store().isQueued(clip(0).id));
}

TEST_F(PanelMenusTest, PinUnpinAndDelete) {
  show(2);
  choose(clipMenu(), u"Fijar"_s);
  EXPECT_TRUE(clip(0).pinned);
  choose(clipMenu(), u"Desfijar"_s);
  EXPECT_FALSE(clip(0).pinned);
  choose(clipMenu(), u"Borrar"_s);
  EXPECT_EQ(texts(), QStringList{u"2"_s});
}

TEST_F(PanelMenusTest, AssignACollectionThatExistsOrNone) {
  show(2);
  store().setCollection(clip(1).id, u"Recetas"_s);
  QMenu* const menu = clipMenu();
  auto* const collections = menu->findChild<QMenu*>(u"collectionsMenu"_s);
  EXPECT_EQ(entries(*collections), (QStringList{u"Sin colección"_s, u"Recetas"_s}));
  EXPECT_TRUE(entry(*collections, u"Sin colección"_s)->isChecked());
  entry(*collections, u"Recetas"_s)->trigger();
  menu->close();
  EXPECT_EQ(clip(0).collection, u"Recetas"_s);
  EXPECT_TRUE(clip(0).pinned);
  QMenu* const again = clipMenu();
  entry(*again->findChild<QMenu*>(u"collectionsMenu"_s), u"Sin colección"_s)->trigger();
  again->close();
  EXPECT_FALSE(clip(0).collection);
  EXPECT_TRUE(clip(0).pinned);
}

TEST_F(PanelMenusTest, ListTheElevenTransformsInTheirOrder) {
  launch();
  copyText(u"hola mundo"_s);
  open();
  QMenu* const menu = clipMenu();
  QMenu* const transforms = transformsOf(menu);
  EXPECT_EQ(entries(*transforms),
            (QStringList{u"Mayúsculas"_s, u"Minúsculas"_s, u"Tipo título"_s, u"Recortar espacios"_s,
                         u"Quitar saltos de línea"_s, u"Codificar URL"_s, u"Decodificar URL"_s,
                         u"Codificar Base64"_s, u"Decodificar Base64"_s, u"Formatear JSON"_s,
                         u"Compactar JSON"_s}));
  for (const QString& label : {u"Decodificar Base64"_s, u"Formatear JSON"_s, u"Compactar JSON"_s})
    EXPECT_FALSE(entry(*transforms, label)->isEnabled()) << label.toStdString();
  EXPECT_TRUE(entry(*transforms, u"Decodificar URL"_s)->isEnabled());
  entry(*transforms, u"Mayúsculas"_s)->trigger();
  EXPECT_EQ(pasted(), u"HOLA MUNDO"_s);
  EXPECT_EQ(clip(0).text, u"hola mundo"_s);
}

TEST_F(PanelMenusTest, SayWhenATransformOfALongTextDoesNotApply) {
  launch();
  copyText(QString(40'000, u'x'));
  open();
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  QMenu* const menu = clipMenu();
  QAction* const format = entry(*transformsOf(menu), u"Formatear JSON"_s);
  EXPECT_TRUE(format->isEnabled());
  format->trigger();
  menu->close();
  EXPECT_EQ(pastes.count(), 0);
  EXPECT_TRUE(pasteboard.writes.isEmpty());
  EXPECT_TRUE(find(u"noticeBar"_s)->accessibleName().contains(u"Formatear JSON"));
}

TEST_F(PanelMenusTest, TransformWhatATemplateBecomes) {
  launch();
  copyText(u"año {año}"_s);
  open();
  QMenu* const menu = clipMenu();
  entry(*transformsOf(menu), u"Mayúsculas"_s)->trigger();
  menu->close();
  EXPECT_EQ(pasted(), u"AÑO 2026"_s);
}

TEST_F(PanelMenusTest, SayNothingAboutASecretByWhatItCanBecome) {
  launch();
  copySecret(u"{\"a\":1}"_s);
  open();
  QMenu* const menu = clipMenu();
  QMenu* const transforms = transformsOf(menu);
  for (const QAction* const action : transforms->actions())
    EXPECT_TRUE(action->isEnabled());
  EXPECT_FALSE(entry(*menu, u"Vista rápida"_s));
  entry(*transforms, u"Formatear JSON"_s)->trigger();
  EXPECT_TRUE(pasteboard.writes.last().concealed);
}

TEST_F(PanelMenusTest, OfTheGearPauseAndResume) {
  show(1);
  EXPECT_EQ(of(gearMenu()),
            (QStringList{u"Pausar captura"_s, u"Borrar historial"_s, u"Ajustes"_s, u"Salir"_s}));
  choose(gearMenu(), u"Pausar captura"_s);
  EXPECT_TRUE(store().isPaused());
  EXPECT_EQ(of(gearMenu()).first(), u"Reanudar captura"_s);
  choose(gearMenu(), u"Reanudar captura"_s);
  EXPECT_FALSE(store().isPaused());
}

TEST_F(PanelMenusTest, OfTheGearOpenTheSettingsAndQuit) {
  show(1);
  const QSignalSpy settingsAsked(view.get(), &ContentView::settingsRequested);
  const QSignalSpy quits(view.get(), &ContentView::quitRequested);
  choose(gearMenu(), u"Ajustes"_s);
  choose(gearMenu(), u"Salir"_s);
  press(Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_EQ(settingsAsked.count(), 2);
  EXPECT_EQ(quits.count(), 1);
}

TEST_F(PanelMenusTest, OfTheGearClearTheHistoryOnlyWhenConfirmed) {
  show(3);
  store().togglePin(clip(1).id);
  choose(gearMenu(), u"Borrar historial"_s);
  auto* sheet = find(u"confirmSheet"_s);
  ASSERT_TRUE(sheet->isVisible());
  EXPECT_EQ(texts().size(), 3);
  // What has the keyboard is what changes nothing.
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(texts().size(), 3);
  EXPECT_FALSE(sheet->isVisible());
  EXPECT_TRUE(field()->hasFocus());
  bury();
  choose(gearMenu(), u"Borrar historial"_s);
  find<QPushButton>(u"sheetYes"_s)->click();
  EXPECT_EQ(texts(), QStringList{u"2"_s});
}

TEST_F(PanelMenusTest, OfTheGearOfferNoClearingOfNothing) {
  show(1);
  store().togglePin(clip(0).id);
  QMenu* const menu = gearMenu();
  EXPECT_FALSE(entry(*menu, u"Borrar historial"_s)->isEnabled());
}

TEST_F(PanelMenusTest, TheCollectionDialogAssignsAName) {
  show(2);
  press(Qt::Key_K, Qt::ControlModifier);
  auto* name = find<QLineEdit>(u"collectionName"_s);
  EXPECT_EQ(name->placeholderText(), u"Nombre de colección"_s);
  EXPECT_TRUE(name->hasFocus());
  EXPECT_TRUE(name->text().isEmpty());
  QTest::keyClicks(name, u"Recetas "_s);
  QTest::keyClick(name, Qt::Key_Return);
  EXPECT_EQ(clip(0).collection, u"Recetas"_s);
  EXPECT_TRUE(field()->hasFocus());
  bury();
  press(Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(find<QLineEdit>(u"collectionName"_s)->text(), u"Recetas"_s);
}

TEST_F(PanelMenusTest, TheCollectionDialogForANewOneBeginsEmptyAndCanBeLeft) {
  show(1);
  store().setCollection(clip(0).id, u"Recetas"_s);
  const QSignalSpy dismissals(view.get(), &ContentView::dismissRequested);
  choose(clipMenu(), u"Nueva colección…"_s);
  auto* const name = find<QLineEdit>(u"collectionName"_s);
  EXPECT_TRUE(name->text().isEmpty());
  QTest::keyClicks(name, u"Otra"_s);
  QTest::keyClick(name, Qt::Key_Escape);
  EXPECT_EQ(clip(0).collection, u"Recetas"_s);
  EXPECT_EQ(dismissals.count(), 0);
  EXPECT_TRUE(field()->hasFocus());
}

TEST_F(PanelMenusTest, TheCollectionDialogOffersTheCollectionsThatThereAre) {
  show(4);
  for (int row = 0; row < 3; ++row)
    store().setCollection(clip(row).id, QStringList{u"Cocina"_s, u"Código & más"_s, u"Viajes"_s}.at(row));
  press(Qt::Key_End);
  press(Qt::Key_K, Qt::ControlModifier);
  auto* const name = find<QLineEdit>(u"collectionName"_s);
  EXPECT_TRUE(find(u"suggestion3"_s)->isVisible());
  QTest::keyClicks(name, u"co"_s);
  // Nothing is written that nobody typed.
  EXPECT_EQ(name->text(), u"co"_s);
  EXPECT_TRUE(find(u"suggestion1"_s)->isVisible());
  EXPECT_EQ(find(u"suggestion2"_s)->accessibleName(), u"Colección Código & más"_s);
  EXPECT_FALSE(find(u"suggestion3"_s)->isVisible());
  click(u"suggestion2"_s);
  EXPECT_EQ(clip(3).collection, u"Código & más"_s);
}

TEST_F(PanelMenusTest, TheCollectionDialogTakesWhatWasTypedAndKnowsACollectionInAnyCase) {
  show(3);
  store().setCollection(clip(0).id, u"Cocina"_s);
  press(Qt::Key_End);
  press(Qt::Key_K, Qt::ControlModifier);
  QTest::keyClicks(find(u"collectionName"_s), u"Co"_s);
  QTest::keyClick(find(u"collectionName"_s), Qt::Key_Return);
  EXPECT_EQ(clip(2).collection, u"Co"_s);
  bury();
  press(Qt::Key_K, Qt::ControlModifier);
  find<QLineEdit>(u"collectionName"_s)->setText(u" cocina "_s);
  QTest::keyClick(find(u"collectionName"_s), Qt::Key_Return);
  EXPECT_EQ(clip(2).collection, u"Cocina"_s);
}

TEST_F(PanelMenusTest, TheCollectionDialogTellsTwoCollectionsApartThatDifferInCase) {
  show(3);
  store().setCollection(clip(0).id, u"Cocina"_s);
  store().setCollection(clip(1).id, u"cocina"_s);
  const QString second = store().collections().last();
  press(Qt::Key_End);
  press(Qt::Key_K, Qt::ControlModifier);
  click(u"suggestion2"_s);
  EXPECT_EQ(clip(2).collection, second);
  bury();
  press(Qt::Key_K, Qt::ControlModifier);
  QTest::keyClick(find(u"collectionName"_s), Qt::Key_Return);
  EXPECT_EQ(clip(2).collection, second);
}

TEST_F(PanelMenusTest, TheCollectionDialogPastesWithoutAskingTheOwner) {
  show(1);
  pasteboard.copyText(u"dos\npalabras"_s);
  press(Qt::Key_K, Qt::ControlModifier);
  auto* const name = find<QLineEdit>(u"collectionName"_s);
  QTest::keyClick(name, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(name->text(), u"dos palabras"_s);
  EXPECT_FALSE(name->acceptDrops());
  QTest::mouseClick(name, Qt::MiddleButton);
  EXPECT_EQ(name->text(), u"dos palabras"_s);
}

TEST_F(PanelMenusTest, OfAClipCanDoNothingAnyMoreOnceItHasGone) {
  show(2);
  copySecret(u"sk-abcdef"_s);
  press(Qt::Key_Home);
  QMenu* const menu = clipMenu();
  store().removeClip(clip(0).id);
  EXPECT_TRUE(menu->isVisible());
  for (const QMenu* const each : menu->findChildren<QMenu*>() + QList<QMenu*>{menu}) {
    for (const QAction* const action : each->actions())
      EXPECT_FALSE(action->isEnabled()) << action->text().toStdString();
  }
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_TRUE(pasteboard.writes.isEmpty());
}

TEST_F(PanelMenusTest, TheCollectionDialogSaysWhenItsClipHasGone) {
  show(2);
  press(Qt::Key_K, Qt::ControlModifier);
  QTest::keyClicks(find(u"collectionName"_s), u"Uno"_s);
  store().removeClip(clip(0).id);
  QTest::keyClick(find(u"collectionName"_s), Qt::Key_Return);
  EXPECT_EQ(find(u"noticeBar"_s)->accessibleName(), u"Este elemento ya no está en el historial."_s);
  EXPECT_TRUE(store().collections().isEmpty());
}

TEST_F(PanelMenusTest, OfAClipStayAsTheyAreWhenAnotherGoes) {
  show(2);
  QMenu* const menu = clipMenu();
  store().removeClip(clip(1).id);
  EXPECT_TRUE(entry(*menu, u"Fijar"_s)->isEnabled());
}

TEST_F(PanelMenusTest, TheQuestionBeforeClearingCountsWhatIsCopiedMeanwhile) {
  show(2);
  choose(openMenu(u"gear"_s, u"gearMenu"_s), u"Borrar historial"_s);
  const auto says = [this](const QString& text) {
    const auto labels = find(u"confirmSheet"_s)->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel* l) { return l->text().contains(text); });
  };
  EXPECT_TRUE(says(u"Se borrarán 2 elemento"_s));
  copyText(u"llega ahora"_s);
  EXPECT_TRUE(says(u"Se borrarán 3 elemento"_s));
}

TEST_F(PanelMenusTest, TheCollectionDialogKeepsALongNameWhole) {
  show(1);
  const QString name = u"Colección "_s.repeated(20).trimmed();
  store().setCollection(clip(0).id, name);
  press(Qt::Key_K, Qt::ControlModifier);
  QTest::keyClick(find(u"collectionName"_s), Qt::Key_Return);
  EXPECT_EQ(clip(0).collection, name);
}

TEST_F(PanelMenusTest, AKeyHeldDownAnswersNoDialog) {
  show(1);
  press(Qt::Key_K, Qt::ControlModifier);
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
  QCoreApplication::sendEvent(find(u"collectionName"_s), &held);
  EXPECT_TRUE(find(u"collectionSheet"_s)->isVisible());
}

TEST_F(PanelMenusTest, TheCollectionDialogKeepsTheKeyboardToItself) {
  show(2);
  press(Qt::Key_K, Qt::ControlModifier);
  for (int i = 0; i < 5; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(find(u"collectionSheet"_s)->isAncestorOf(QApplication::focusWidget()));
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::ControlModifier);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_EQ(texts().size(), 2);
  EXPECT_FALSE(clip(0).pinned);
  view->panelDidHide();
  EXPECT_FALSE(clip(0).collection);
}

}  // namespace
}  // namespace nimbrel
