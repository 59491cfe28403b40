#include "settings/window/ApplicationChooser.h"

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QTest>

#include "settings/window/ApplicationListModel.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace testing;
using ::testing::ElementsAre;

class ApplicationChooserTest : public ::testing::Test {
 protected:
  ApplicationChooserTest() {
    dialog.setApplications({{u"z"_s, u"Zapatero"_s, {}},
                            {u"org.kde.kate"_s, u"Kate"_s, {}},
                            {u"org.kde.kate"_s, u"Kate"_s, u"again"_s},
                            {u"known"_s, u"Ábaco"_s, {}},
                            {u"cafe"_s, u"Café Élite"_s, {}}});
    QObject::connect(&dialog, &ApplicationChooser::chosen,
                     [this](const auto& app) { chosen.append(app.identifier); });
    dialog.show();
  }
  [[nodiscard]] QStringList shown() const {
    QStringList names;
    for (int row = 0; row < list->model()->rowCount(); ++row)
      names.append(list->model()->index(row, 0).data().toString());
    return names;
  }

  FakeApplicationCatalog catalog;
  InstalledIcons icons{catalog, kApplicationIconSize};
  ApplicationChooser dialog{std::nullopt, {u"known"_s}, icons, nullptr};
  QListView* list = dialog.findChild<QListView*>();
  QLineEdit* search = dialog.findChild<QLineEdit*>();
  QStringList chosen;
};

TEST_F(ApplicationChooserTest, ListsEachApplicationOnceInOrder) {
  EXPECT_THAT(shown(),
              ElementsAre(u"Ábaco (ya está en la lista)"_s, u"Café Élite"_s, u"Kate"_s, u"Zapatero"_s));
}

TEST_F(ApplicationChooserTest, SearchesByWordsWithoutCaseOrAccents) {
  search->setText(u"elite CAF"_s);
  EXPECT_THAT(shown(), ElementsAre(u"Café Élite"_s));
  search->setText(u"org.kde"_s);
  EXPECT_THAT(shown(), ElementsAre(u"Kate"_s));
  search->setText(u"nada"_s);
  EXPECT_TRUE(shown().isEmpty());
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_TRUE(chosen.isEmpty());
  EXPECT_TRUE(dialog.isVisible());
}

TEST_F(ApplicationChooserTest, TheArrowsMoveThroughTheListWhileTheUserTypes) {
  search->setText(u"a"_s);
  QTest::keyClick(search, Qt::Key_Down);
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_THAT(chosen, ElementsAre(u"org.kde.kate"_s));
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ApplicationChooserTest, WhatIsInTheListAlreadyCannotBeChosen) {
  search->setText(u"ábaco"_s);
  QTest::keyClick(search, Qt::Key_Return);
  QTest::keyClick(search, Qt::Key_Down);
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(ApplicationChooserTest, WhatWasTypedBeforeTheListWasThereFindsItsApplicationToo) {
  ApplicationChooser early(std::nullopt, {}, icons, nullptr);
  QStringList found;
  QObject::connect(&early, &ApplicationChooser::chosen,
                   [&](const auto& app) { found.append(app.identifier); });
  early.show();
  auto* const field = early.findChild<QLineEdit*>();
  QTest::keyClicks(field, u"kat"_s);
  early.setApplications({{u"org.kde.kate"_s, u"Kate"_s, {}}});
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_THAT(found, ElementsAre(u"org.kde.kate"_s));
}

TEST_F(ApplicationChooserTest, ALongNameInFrontDoesNotStretchTheWindow) {
  const RunningApplication front{u"<img src=x>"_s, QString(600, u'N') + u"\n\n"_s + QString(600, u'M'), 7};
  ApplicationChooser wide(front, {}, icons, nullptr);
  wide.show();
  EXPECT_LE(wide.width(), 480);
  auto* const button = wide.findChild<QPushButton*>(u"frontApplication"_s);
  EXPECT_FALSE(button->text().contains(u'\n'));
  EXPECT_EQ(button->toolTip(), u"<qt>&lt;img src=x&gt;</qt>");
}

TEST_F(ApplicationChooserTest, LooksAnIconUpOnceAndNotWhileItPaints) {
  QPixmap red(16, 16);
  red.fill(Qt::red);
  catalog.icons.insert(u"red"_s, QIcon(red));
  icons.setApplications({{u"a"_s, u"A"_s, u"red"_s}, {u"b"_s, u"B"_s, u"missing"_s}});
  const QIcon generic = genericApplicationIcon(dialog.palette());
  EXPECT_EQ(icons.icon(u"a"_s, generic).cacheKey(), generic.cacheKey());
  EXPECT_EQ(icons.icon(u"b"_s, generic).cacheKey(), generic.cacheKey());
  const QSignalSpy found(&icons, &InstalledIcons::iconsFound);
  ASSERT_TRUE(QTest::qWaitFor([&] { return found.size() == 1; }));
  EXPECT_NE(icons.icon(u"a"_s, generic).cacheKey(), generic.cacheKey());
  EXPECT_EQ(icons.icon(u"b"_s, generic).cacheKey(), generic.cacheKey());
  QTest::qWait(10);
  EXPECT_EQ(found.size(), 1);
}

TEST_F(ApplicationChooserTest, AnIconThatWasAskedForTooEarlyIsToldOfWhenItsApplicationIsKnown) {
  InstalledIcons late(catalog, kApplicationIconSize);
  const QSignalSpy asked(&late, &InstalledIcons::unknownAskedFor);
  const QSignalSpy found(&late, &InstalledIcons::iconsFound);
  for (const QString& id : {u"a"_s, u"b"_s, u"c"_s, u"a"_s})
    EXPECT_TRUE(late.icon(id, {}).isNull());
  EXPECT_EQ(asked.count(), 0);
  QTest::qWait(1);
  EXPECT_EQ(asked.count(), 1);
  EXPECT_TRUE(late.icon(u"c"_s, {}).isNull());
  QTest::qWait(1);
  EXPECT_EQ(asked.count(), 1);
  late.setApplications({{u"d"_s, u"D"_s, {}}});
  EXPECT_EQ(found.count(), 0);
  late.setApplications({{u"a"_s, u"A"_s, {}}});
  EXPECT_EQ(found.count(), 1);
}

TEST_F(ApplicationChooserTest, EscapeChoosesNothing) {
  search->setText(u"kate"_s);
  QTest::keyClick(search, Qt::Key_Escape);
  EXPECT_TRUE(chosen.isEmpty());
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ApplicationChooserTest, ADoubleClickChooses) {
  const QRect row = list->visualRect(list->model()->index(2, 0));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row.center());
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row.center());
  EXPECT_THAT(chosen, ElementsAre(u"org.kde.kate"_s));
}

}  // namespace
}  // namespace nimbrel
