#include "platform/linux/DesktopEntries.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class DesktopEntriesTest : public ::testing::Test {
 protected:
  void install(const QString& name, const QByteArray& content) {
    const QString path = folder.filePath(name);
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  DesktopEntry find(const QString& id, const QString& windowClass, const QString& instance = {}) {
    entries.load();
    return entries.find(id, {windowClass, instance});
  }

  QTemporaryDir folder;
  DesktopEntries entries{{folder.path()}};
};

TEST_F(DesktopEntriesTest, FindApplicationsByIdAndByWindowClass) {
  install(u"org.kde.kate.desktop"_s, "[Desktop Entry]\nName=Kate\nStartupWMClass=kate-window\n");
  const DesktopEntry kate{u"org.kde.kate"_s, u"Kate"_s};
  EXPECT_EQ(find(u"org.kde.kate"_s, QString()), kate);
  EXPECT_EQ(find(QString(), u"Org.KDE.Kate"_s), kate);
  EXPECT_EQ(find(QString(), u"Kate-Window"_s), kate);
}

TEST_F(DesktopEntriesTest, NameUnknownApplicationsByTheirClass) {
  EXPECT_EQ(find(QString(), u"XTerm"_s), (DesktopEntry{u"XTerm"_s, u"XTerm"_s}));
}

TEST_F(DesktopEntriesTest, MapPasswordManagersToTheIgnoreListsIdentifiers) {
  install(u"org.keepassxc.KeePassXC.desktop"_s, "[Desktop Entry]\nName=KeePassXC\n");
  EXPECT_EQ(find(QString(), u"KeePassXC"_s).identifier, u"org.keepassxc.keepassxc"_s);
  EXPECT_EQ(find(u"org.keepassxc.KeePassXC"_s, QString()).identifier, u"org.keepassxc.keepassxc"_s);
  EXPECT_EQ(find(QString(), u"Bitwarden"_s).identifier, u"com.bitwarden.desktop"_s);
  EXPECT_EQ(find(QString(), u"1Password"_s).identifier, u"com.1password.1password"_s);
}

TEST_F(DesktopEntriesTest, KnowPasswordManagersBeforeAnyFileIsRead) {
  EXPECT_EQ(entries.find(QString(), {u"KeePassXC"_s}).identifier, u"org.keepassxc.keepassxc"_s);
  EXPECT_EQ(entries.find(QString(), {u"Kate"_s}), (DesktopEntry{u"Kate"_s, u"Kate"_s}));
}

TEST_F(DesktopEntriesTest, MakeSubfoldersPartOfTheId) {
  install(u"kde/kate.desktop"_s, "[Desktop Entry]\nName=Kate\n");
  EXPECT_EQ(find(u"kde-kate"_s, QString()).name, u"Kate"_s);
}

TEST_F(DesktopEntriesTest, ReadOnlyTheMainGroup) {
  install(u"a.desktop"_s, "# x\n[Other]\nName=No\n[Desktop Entry]\nName=Sí\n[Desktop Action x]\nName=No\n");
  EXPECT_EQ(find(u"a"_s, QString()).name, u"Sí"_s);
}

TEST_F(DesktopEntriesTest, GuessTheClassOfApplicationsThatStateNone) {
  install(u"org.gnome.Evince.desktop"_s,
          "[Desktop Entry]\nType=Application\nName=Visor\nExec=/usr/bin/evince %U\n");
  install(u"gimp.desktop"_s, "[Desktop Entry]\nType=Application\nName=GIMP\nExec=gimp-2.10 %U\n");
  install(u"shell.desktop"_s, "[Desktop Entry]\nType=Application\nName=Guion\nExec=sh -c x\n");
  install(u"settings.desktop"_s, "[Desktop Entry]\nType=Application\nNoDisplay=true\nName=X\nExec=xeyes\n");
  EXPECT_EQ(find(QString(), u"Evince"_s).identifier, u"org.gnome.Evince");
  EXPECT_EQ(find(QString(), u"Gimp-2.10"_s).identifier, u"gimp");
  EXPECT_EQ(find(QString(), u"sh"_s).identifier, u"sh");
  EXPECT_EQ(find(QString(), u"XEyes"_s).identifier, u"XEyes");
}

TEST_F(DesktopEntriesTest, PreferWhatIsStatedToWhatIsGuessed) {
  install(u"a.b.term.desktop"_s, "[Desktop Entry]\nType=Application\nName=Uno\nExec=term\n");
  install(u"other.desktop"_s, "[Desktop Entry]\nType=Application\nName=Dos\nStartupWMClass=Term\n");
  EXPECT_EQ(find(QString(), u"Term"_s).identifier, u"other");
}

TEST_F(DesktopEntriesTest, GuessNothingForAnApplicationThatStatesItsClassOrRunsInATerminal) {
  install(u"mail.desktop"_s,
          "[Desktop Entry]\nType=Application\nName=Correo\nExec=browser --app=x\nStartupWMClass=crx_1\n");
  install(u"org.example.Top.desktop"_s,
          "[Desktop Entry]\nType=Application\nName=Top\nExec=top\nTerminal=true\n");
  EXPECT_EQ(find({}, u"Browser"_s).identifier, u"Browser");
  EXPECT_EQ(find({}, u"Top"_s).identifier, u"Top");
}

TEST_F(DesktopEntriesTest, GuessNothingThatSeveralApplicationsMightBe) {
  install(u"a.desktop"_s, "[Desktop Entry]\nType=Application\nName=A\nExec=suite --a\n");
  install(u"b.desktop"_s, "[Desktop Entry]\nType=Application\nName=B\nExec=suite --b\n");
  install(u"c.desktop"_s, "[Desktop Entry]\nType=Application\nName=C\nExec=suite --c\n");
  EXPECT_EQ(find({}, u"Suite"_s).identifier, u"Suite");
}

TEST_F(DesktopEntriesTest, TellAWindowOfABrowserThatIsAnApplicationByItsInstance) {
  install(u"mail.desktop"_s, "[Desktop Entry]\nType=Application\nName=Correo\nStartupWMClass=crx_1\n");
  install(u"browser.desktop"_s, "[Desktop Entry]\nType=Application\nName=Web\nStartupWMClass=Browser\n");
  EXPECT_EQ(find({}, u"Browser"_s, u"crx_1"_s).identifier, u"mail");
  EXPECT_EQ(find({}, u"Browser"_s, u"browser"_s).identifier, u"browser");
}

TEST_F(DesktopEntriesTest, ListAnApplicationUnderTheIdentifierOfItsWindows) {
  const QByteArray hidden = "[Desktop Entry]\nType=Application\nNoDisplay=true\nName=X\nStartupWMClass=";
  const QByteArray visible = "[Desktop Entry]\nType=Application\nName=B\nStartupWMClass=";
  install(u"a.desktop"_s, hidden + "First\n");
  install(u"b.desktop"_s, visible + "First\n");
  install(u"c.desktop"_s, visible + "Second\n");
  install(u"d.desktop"_s, hidden + "Second\n");
  entries.load();
  EXPECT_THAT(entries.shown(), ::testing::UnorderedElementsAre(InstalledApplication{u"b"_s, u"B"_s, {}},
                                                               InstalledApplication{u"c"_s, u"B"_s, {}}));
  EXPECT_EQ(find({}, u"First"_s).identifier, u"b");
  EXPECT_EQ(find({}, u"Second"_s).identifier, u"c");
  // Two that menus show are one application as far as their windows can tell.
  install(u"e.desktop"_s, "[Desktop Entry]\nType=Application\nName=E\nStartupWMClass=Twice\n");
  install(u"f.desktop"_s, "[Desktop Entry]\nType=Application\nName=F\nStartupWMClass=Twice\n");
  entries.load();
  EXPECT_THAT(entries.shown(), ::testing::IsSupersetOf({InstalledApplication{u"e"_s, u"E"_s, {}},
                                                        InstalledApplication{u"e"_s, u"F"_s, {}}}));
}

TEST_F(DesktopEntriesTest, KnowWhatIsListedByWhateverItsWindowsSay) {
  const QByteArray shown = "[Desktop Entry]\nType=Application\nName=N\n";
  const QByteArray hidden = shown + "NoDisplay=true\n";
  install(u"foo.desktop"_s, shown);
  install(u"foo-url-handler.desktop"_s, hidden + "StartupWMClass=foo\n");
  install(u"foo-safe.desktop"_s, shown + "StartupWMClass=Foo\n");
  install(u"org.x.Bar.Prefs.desktop"_s, shown + "StartupWMClass=bar\n");
  install(u"org.x.Bar.desktop"_s, shown + "StartupWMClass=bar\n");
  install(u"launcher.desktop"_s, shown + "StartupWMClass=keepassxc\n");
  install(u"org.x.Baz.desktop"_s, shown + "Exec=baz\n");
  install(u"org.x.BazSettings.desktop"_s, shown + "Exec=baz --preferences\n");
  install(u"java.desktop"_s, shown + "StartupWMClass=sun-awt-X11-XFramePeer\n");
  entries.load();
  QStringList listed;
  for (const InstalledApplication& application : entries.shown())
    listed.append(application.identifier);
  const struct {
    QString id;
    QString windowClass;
    QString instance;
    QString expected;
  } windows[] = {
      {{}, u"Foo"_s, u"foo"_s, u"foo"_s},
      {u"foo"_s, {}, {}, u"foo"_s},
      {u"org.x.Bar"_s, u"bar"_s, {}, u"org.x.Bar.Prefs"_s},
      {u"org.x.Bar.Prefs"_s, {}, {}, u"org.x.Bar.Prefs"_s},
      {{}, u"Bar"_s, {}, u"org.x.Bar.Prefs"_s},
      {u"launcher"_s, {}, {}, u"org.keepassxc.keepassxc"_s},
      {{}, u"KeePassXC"_s, {}, u"org.keepassxc.keepassxc"_s},
      {{}, u"Baz"_s, u"baz"_s, u"org.x.Baz"_s},
  };
  for (const auto& window : windows) {
    const DesktopEntry found = entries.find(window.id, {window.windowClass, window.instance});
    EXPECT_EQ(found.identifier, window.expected)
        << window.id.toStdString() << window.windowClass.toStdString();
    EXPECT_TRUE(listed.contains(found.identifier)) << found.identifier.toStdString();
  }
  EXPECT_EQ(entries.find({}, {u"Editor"_s, u"sun-awt-X11-XFramePeer"_s}).identifier, u"Editor");
}

TEST_F(DesktopEntriesTest, ListTheApplicationsThatMenusShow) {
  install(u"org.kde.kate.desktop"_s, "[Desktop Entry]\nType=Application\nName=Kate\nIcon=kate\n");
  install(u"org.keepassxc.KeePassXC.desktop"_s, "[Desktop Entry]\nType=Application\nName=KeePassXC\n");
  install(u"a.desktop"_s, "[Desktop Entry]\nType=Application\nNoDisplay=true\nName=A\n");
  install(u"b.desktop"_s, "[Desktop Entry]\nType=Link\nName=B\n");
  install(u"c.desktop"_s, "[Desktop Entry]\nType=Application\nHidden=true\nName=C\n");
  install(u"d.desktop"_s, "[Desktop Entry]\nType=Application\nOnlyShowIn=Ninguno;\nName=D\n");
  EXPECT_TRUE(entries.shown().isEmpty());
  entries.load();
  EXPECT_THAT(entries.shown(), ::testing::UnorderedElementsAre(
                                   InstalledApplication{u"org.kde.kate"_s, u"Kate"_s, u"kate"_s},
                                   InstalledApplication{u"org.keepassxc.keepassxc"_s, u"KeePassXC"_s, {}}));
}

TEST_F(DesktopEntriesTest, AFileOfTheUsersOwnHidesOneForEverybody) {
  QTemporaryDir user;
  QFile file(user.filePath(u"kate.desktop"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("[Desktop Entry]\nHidden=true\n");
  file.close();
  install(u"kate.desktop"_s, "[Desktop Entry]\nType=Application\nName=Kate\n");
  DesktopEntries both({user.path(), folder.path()});
  both.load();
  EXPECT_TRUE(both.shown().isEmpty());
  EXPECT_EQ(both.find(u"kate"_s, {}).name, u"kate");
}

TEST_F(DesktopEntriesTest, KnowWhatWasInstalledMeanwhileWhenReadAgain) {
  EXPECT_EQ(find(u"kate"_s, {}).name, u"kate");
  install(u"kate.desktop"_s, "[Desktop Entry]\nType=Application\nName=Kate\n");
  EXPECT_EQ(find(u"kate"_s, {}).name, u"Kate");
}

TEST_F(DesktopEntriesTest, SurviveFilesThatAreNone) {
  install(u"a.desktop"_s, QByteArray(300'000, '\xff'));
  install(u"b.desktop"_s, {});
  EXPECT_EQ(find(u"b"_s, QString()), (DesktopEntry{u"b"_s, u"b"_s}));
}

}  // namespace
}  // namespace nimbrel
