#include "settings/window/ApplicationChooser.h"

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QTest>

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
  InstalledIcons icons{catalog};
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
