#include <gmock/gmock.h>

#include <QAccessible>
#include <QTabBar>

#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// What a screen reader is told.
class PanelAccessibility : public testing::PanelViewFixture {
 protected:
  static QAccessibleInterface* of(QObject* object) { return QAccessible::queryAccessibleInterface(object); }
  static QString name(QAccessibleInterface* interface) { return interface->text(QAccessible::Name); }
  /// Every text of an interface and of all below it.
  static QString everything(QAccessibleInterface* interface) {
    QString all;
    for (int kind = QAccessible::Name; kind <= QAccessible::Accelerator; ++kind)
      all += interface->text(static_cast<QAccessible::Text>(kind)) + u'\n';
    for (int i = 0; i < interface->childCount(); ++i) {
      if (QAccessibleInterface* const child = interface->child(i)) all += everything(child);
    }
    return all;
  }
};

TEST_F(PanelAccessibility, KnowsEveryControlByRoleAndName) {
  show(1);
  EXPECT_EQ(of(field())->role(), QAccessible::EditableText);
  EXPECT_EQ(name(of(field())), u"Buscar en el historial"_s);
  EXPECT_EQ(of(find(u"filterButton"_s))->role(), QAccessible::Button);
  EXPECT_EQ(name(of(find(u"filterButton"_s))), u"Filtrar por app o colección"_s);
  EXPECT_EQ(name(of(find(u"gear"_s))), u"Opciones"_s);
  EXPECT_EQ(name(of(find(u"clearSearch"_s))), u"Borrar la búsqueda"_s);
  QAccessibleInterface* const tabs = of(find(u"kindTabs"_s));
  EXPECT_EQ(tabs->role(), QAccessible::PageTabList);
  EXPECT_EQ(name(tabs->child(0)), u"Todo"_s);
  // Qt tells the chosen tab as the focused one.
  EXPECT_TRUE(tabs->child(0)->state().focused);
  EXPECT_FALSE(tabs->child(1)->state().focused);
  for (const QString& button : {u"rowPaste"_s, u"rowQueue"_s, u"rowPin"_s, u"rowRemove"_s})
    EXPECT_EQ(of(find(button))->role(), QAccessible::Button) << button.toStdString();
}

TEST_F(PanelAccessibility, KnowsTheRowsByPositionNameAndState) {
  show(3);
  QAccessibleInterface* const rows = of(list());
  EXPECT_EQ(rows->role(), QAccessible::List);
  EXPECT_EQ(name(rows), u"Historial"_s);
  ASSERT_EQ(rows->childCount(), 3);
  for (int row = 0; row < 3; ++row) {
    QAccessibleInterface* const item = rows->child(row);
    EXPECT_EQ(item->role(), QAccessible::ListItem);
    EXPECT_EQ(rows->indexOfChild(item), row);
    EXPECT_TRUE(name(item).startsWith(QString::number(row + 1)));
    EXPECT_EQ(bool(item->state().selected), row == 0);
  }
  EXPECT_EQ(rows->child(1)->rect().height(), RowGeometry::kLow);
}

TEST_F(PanelAccessibility, SaysWhatTheMarksOfARowShow) {
  show(1);
  store().setCollection(clip(0).id, u"Recetas"_s);
  store().addToQueue(clip(0).id);
  const QString said = name(of(list())->child(0));
  EXPECT_TRUE(said.contains(u"Fijado")) << said.toStdString();
  EXPECT_TRUE(said.contains(u"En la cola"));
  EXPECT_TRUE(said.contains(u"Recetas"));
}

TEST_F(PanelAccessibility, NeverHearsAMaskedText) {
  launch();
  copySecret(u"sk-abcdef"_s);
  open();
  EXPECT_FALSE(everything(of(view.get())).contains(u"abcdef"));
  EXPECT_TRUE(name(of(list())->child(0)).contains(u"Elemento oculto"));
  model()->reveal(clip(0).id);
  EXPECT_TRUE(everything(of(view.get())).contains(u"abcdef"));
  view->panelDidHide();
  EXPECT_FALSE(everything(of(view.get())).contains(u"abcdef"));
}

TEST_F(PanelAccessibility, IsToldOfTheHintsAndTheBanners) {
  show(1);
  store().setPaused(true);
  EXPECT_TRUE(everything(of(view.get())).contains(u"Captura en pausa"));
  EXPECT_TRUE(everything(of(view.get())).contains(u"⌘1–9 directo"));
}

TEST_F(PanelAccessibility, ShowsWhereTheKeyboardIs) {
  show(2);
  // Each control looks different when it has the keyboard.
  for (const QString& control : {u"filterButton"_s, u"gear"_s, u"kindTabs"_s, u"clipList"_s}) {
    QWidget* const widget = find(control);
    field()->setFocus();
    const QImage without = widget->grab().toImage();
    widget->setFocus(Qt::TabFocusReason);
    EXPECT_NE(widget->grab().toImage(), without) << control.toStdString();
  }
}

}  // namespace
}  // namespace nimbrel
