#include <gmock/gmock.h>

#include <QTabBar>

#include "panel/SymbolButton.h"
#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class PanelFilter : public testing::PanelViewFixture {
 protected:
  void copyIn(const QString& app, const QString& text) {
    workspace.front = RunningApplication{app.toLower(), app, 1};
    copyText(text);
  }
  QStringList shown() {
    QStringList texts;
    for (int row = 0; row < rows(); ++row)
      texts.append(model()->clipAt(row)->clip.text);
    return texts;
  }
  QMenu* filterMenu() { return openMenu(u"filterButton"_s, u"filterMenu"_s); }
  QTabBar* tabs() { return find<QTabBar>(u"kindTabs"_s); }
  void chooseTab(int tab) {
    QTest::mouseClick(tabs(), Qt::LeftButton, {}, tabs()->tabRect(tab).center());
    settle();
  }
  SymbolButton* filterButton() { return find<SymbolButton>(u"filterButton"_s); }
};

TEST_F(PanelFilter, HasTheFiveKindsInTheirOrder) {
  show(1);
  QStringList labels;
  for (int i = 0; i < tabs()->count(); ++i)
    labels.append(tabs()->tabText(i));
  EXPECT_EQ(labels, (QStringList{u"Todo"_s, u"Texto"_s, u"Imágenes"_s, u"Archivos"_s, u"Fijados"_s}));
}

TEST_F(PanelFilter, ShowsOnlyTheChosenKind) {
  launch();
  copyText(u"texto"_s);
  copyFile(u"/tmp/a.txt"_s);
  copyImage("bild");
  store().togglePin(clip(1).id);
  open();
  EXPECT_EQ(rows(), 3);
  chooseTab(1);
  EXPECT_EQ(shown(), QStringList{u"texto"_s});
  chooseTab(2);
  EXPECT_EQ(rows(), 1);
  EXPECT_TRUE(model()->clipAt(0)->clip.isImage());
  chooseTab(3);
  EXPECT_EQ(rows(), 1);
  EXPECT_TRUE(model()->clipAt(0)->clip.isFile());
  chooseTab(4);
  EXPECT_EQ(rows(), 1);
  EXPECT_TRUE(model()->clipAt(0)->clip.pinned);
  chooseTab(0);
  EXPECT_EQ(rows(), 3);
}

TEST_F(PanelFilter, GoesThroughTheKindsWithTheKeyboardRoundAndRound) {
  show(1);
  QTest::keyClick(field(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(tabs()->currentIndex(), 1);
  QTest::keyClick(field(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  QTest::keyClick(field(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(tabs()->currentIndex(), 4);
}

TEST_F(PanelFilter, ListsTheApplicationsAndTheCollections) {
  launch();
  copyIn(u"Kate"_s, u"uno"_s);
  copyIn(u"Abaco"_s, u"dos"_s);
  copyIn(u"Kate"_s, u"tres"_s);
  store().addRemoteText(u"cuatro"_s, RemoteDeviceType::mac);
  store().setCollection(clip(0).id, u"Recetas & más"_s);
  open();
  EXPECT_EQ(filterButton()->accessibleName(), u"Filtrar por app o colección"_s);
  EXPECT_EQ(entries(*filterMenu()), (QStringList{u"Todas las apps"_s, u"Abaco"_s, u"Kate"_s, u"Mac"_s,
                                                 u"Todas las colecciones"_s, u"Recetas && más"_s}));
}

TEST_F(PanelFilter, ByApplicationShowsAChipAndOnlyItsClips) {
  launch();
  copyIn(u"Kate"_s, u"uno"_s);
  copyIn(u"Gimp"_s, u"dos"_s);
  open();
  EXPECT_EQ(filterButton()->symbol(), u"line.3.horizontal.decrease.circle"_s);
  choose(filterMenu(), u"Kate"_s);
  settle();
  EXPECT_EQ(shown(), QStringList{u"uno"_s});
  EXPECT_EQ(selected(), u"uno"_s);
  EXPECT_TRUE(find(u"appChip"_s)->isVisible());
  EXPECT_EQ(find(u"appChip"_s)->accessibleName(), u"Kate"_s);
  EXPECT_EQ(filterButton()->symbol(), u"line.3.horizontal.decrease.circle.fill"_s);
  click(u"appChipClear"_s);
  EXPECT_EQ(shown(), (QStringList{u"dos"_s, u"uno"_s}));
  EXPECT_FALSE(find(u"appChip"_s)->isVisible());
}

TEST_F(PanelFilter, ByCollectionAndApplicationTogetherAndBackAgain) {
  launch();
  copyIn(u"Kate"_s, u"uno"_s);
  copyIn(u"Gimp"_s, u"dos"_s);
  copyIn(u"Kate"_s, u"tres"_s);
  for (const int row : {1, 2})
    store().setCollection(clip(row).id, u"Recetas"_s);
  open();
  choose(filterMenu(), u"Recetas"_s);
  settle();
  EXPECT_EQ(shown(), (QStringList{u"dos"_s, u"uno"_s}));
  choose(filterMenu(), u"Kate"_s);
  settle();
  EXPECT_EQ(shown(), QStringList{u"uno"_s});
  EXPECT_TRUE(find(u"collectionChip"_s)->isVisible());
  choose(filterMenu(), u"Restablecer filtros"_s);
  EXPECT_EQ(rows(), 3);
  EXPECT_FALSE(entry(*filterMenu(), u"Restablecer filtros"_s));
}

TEST_F(PanelFilter, CombinesWithTheKindAndTheSearch) {
  launch();
  copyIn(u"Kate"_s, u"canción uno"_s);
  copyIn(u"Kate"_s, u"otra cosa"_s);
  copyIn(u"Gimp"_s, u"canción dos"_s);
  store().togglePin(clip(2).id);
  open();
  choose(filterMenu(), u"Kate"_s);
  type(u"cancion"_s);
  EXPECT_EQ(shown(), QStringList{u"canción uno"_s});
  chooseTab(4);
  EXPECT_EQ(shown(), QStringList{u"canción uno"_s});
  chooseTab(3);
  EXPECT_TRUE(shown().isEmpty());
  EXPECT_EQ(list()->emptyText(), u"Sin resultados"_s);
}

TEST_F(PanelFilter, StaysForTheNextUseWhereasTheQueryGoes) {
  launch();
  copyIn(u"Kate"_s, u"uno"_s);
  copyIn(u"Gimp"_s, u"dos"_s);
  open();
  choose(filterMenu(), u"Kate"_s);
  type(u"zzz"_s);
  EXPECT_EQ(rows(), 0);
  view->panelDidHide();
  view->panelDidShow();
  settle();
  EXPECT_EQ(shown(), QStringList{u"uno"_s});
}

TEST_F(PanelFilter, FollowsTheHistoryWhileItIsSet) {
  launch();
  copyIn(u"Kate"_s, u"uno"_s);
  open();
  choose(filterMenu(), u"Kate"_s);
  settle();
  copyIn(u"Gimp"_s, u"dos"_s);
  EXPECT_EQ(shown(), QStringList{u"uno"_s});
  copyIn(u"Kate"_s, u"tres"_s);
  EXPECT_EQ(shown(), (QStringList{u"tres"_s, u"uno"_s}));
  chooseTab(4);
  EXPECT_EQ(rows(), 0);
  store().togglePin(clip(0).id);
  EXPECT_EQ(shown(), QStringList{u"tres"_s});
  store().togglePin(clip(0).id);
  EXPECT_EQ(rows(), 0);
}

TEST_F(PanelFilter, ShowsSecretsAmongTheClipsOfAnApplicationButNeverFindsThem) {
  launch();
  workspace.front = RunningApplication{u"kate"_s, u"Kate"_s, 1};
  copySecret(u"sk-abcdef"_s);
  open();
  choose(filterMenu(), u"Kate"_s);
  settle();
  EXPECT_EQ(rows(), 1);
  type(u"sk-"_s);
  EXPECT_EQ(rows(), 0);
}

}  // namespace
}  // namespace nimbrel
