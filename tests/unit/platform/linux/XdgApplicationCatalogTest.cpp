#include "platform/linux/XdgApplicationCatalog.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QPixmap>
#include <QTemporaryDir>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class XdgApplicationCatalogTest : public ::testing::Test {
 protected:
  [[nodiscard]] QString picture(const QString& name, int size) const {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::red);
    const QString path = folder.filePath(name);
    QDir().mkpath(path.section(u'/', 0, -2));
    EXPECT_TRUE(pixmap.save(path, "PNG"));
    return path;
  }
  [[nodiscard]] QIcon icon(const QString& name) { return catalog.icon({u"a"_s, u"A"_s, name}); }

  QTemporaryDir folder;
  DesktopEntries entries{{folder.path()}};
  XdgApplicationCatalog catalog{entries};
};

TEST_F(XdgApplicationCatalogTest, HasAnIconFromAFile) {
  EXPECT_FALSE(icon(picture(u"icon.png"_s, 48)).isNull());
}

TEST_F(XdgApplicationCatalogTest, HasAnIconThatBelongsToNoTheme) {
  qputenv("XDG_DATA_DIRS", QFile::encodeName(folder.path()));
  static_cast<void>(picture(u"pixmaps/nimbrel-test.png"_s, 48));
  EXPECT_FALSE(icon(u"nimbrel-test"_s).isNull());
  EXPECT_FALSE(icon(u"nimbrel-test.png"_s).isNull());
  qunsetenv("XDG_DATA_DIRS");
}

TEST_F(XdgApplicationCatalogTest, HasNoneForWhatIsNoIcon) {
  EXPECT_TRUE(icon({}).isNull());
  EXPECT_TRUE(icon(u"nimbrel-no-such-icon"_s).isNull());
  EXPECT_TRUE(icon(folder.path()).isNull());
  EXPECT_TRUE(icon(folder.filePath(u"missing.png"_s)).isNull());
  // It would take long to decode.
  EXPECT_TRUE(icon(picture(u"large.png"_s, 1025)).isNull());
}

TEST_F(XdgApplicationCatalogTest, KnowsWhatIsInstalledByNow) {
  EXPECT_TRUE(catalog.applications().isEmpty());
  QFile file(folder.filePath(u"kate.desktop"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("[Desktop Entry]\nType=Application\nName=Kate\nIcon=kate\n");
  file.close();
  EXPECT_THAT(catalog.applications(),
              ::testing::ElementsAre(InstalledApplication{u"kate"_s, u"Kate"_s, u"kate"_s}));
}

}  // namespace
}  // namespace nimbrel
