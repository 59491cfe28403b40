#include <gmock/gmock.h>

#include <QPushButton>

#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using KeyState = HistoryCipher::KeyState;

class PanelBanners : public testing::PanelViewFixture {
 protected:
  QStringList shown() {
    QStringList names;
    for (const QString& name : {u"pausedBanner"_s, u"blockedBanner"_s, u"keylessBanner"_s,
                                u"unreadableKeyBanner"_s, u"untrustedBanner"_s}) {
      if (find(name)->isVisible()) names.append(name);
    }
    return names;
  }
  QString said(const QString& banner) { return find(banner)->accessibleName(); }
  QPushButton* button(const QString& banner) { return find(banner)->findChild<QPushButton*>(); }
};

TEST_F(PanelBanners, TakeNoRoomWhileAllIsWell) {
  show(1);
  EXPECT_FALSE(find(u"banners"_s)->isVisible());
}

TEST_F(PanelBanners, ShowAtOnceThatCaptureIsPausedAndResumeIt) {
  show(1);
  store().setPaused(true);
  EXPECT_EQ(shown(), QStringList{u"pausedBanner"_s});
  EXPECT_EQ(said(u"pausedBanner"_s), u"Captura en pausa: lo que copies no se guarda."_s);
  EXPECT_EQ(button(u"pausedBanner"_s)->text(), u"Reanudar"_s);
  button(u"pausedBanner"_s)->click();
  EXPECT_FALSE(store().isPaused());
  EXPECT_TRUE(shown().isEmpty());
}

TEST_F(PanelBanners, LeaveTheKeyboardToTheFieldWhenTheirButtonHasDoneItsWork) {
  show(1);
  for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
    store().setPaused(true);
    button(u"pausedBanner"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button(u"pausedBanner"_s), key);
    EXPECT_FALSE(store().isPaused());
    EXPECT_TRUE(field()->hasFocus());
  }
}

TEST_F(PanelBanners, SayThatThePasteboardIsBlockedAndOpenTheSettings) {
  show(1);
  pasteboard.given = Pasteboard::Access::alwaysDeny;
  permission.recheck();
  EXPECT_EQ(shown(), QStringList{u"blockedBanner"_s});
  EXPECT_EQ(said(u"blockedBanner"_s),
            u"macOS bloquea el acceso al portapapeles. Permítelo en Privacidad y seguridad."_s);
  EXPECT_EQ(button(u"blockedBanner"_s)->text(), u"Abrir"_s);
  button(u"blockedBanner"_s)->click();
  EXPECT_EQ(opener.opened, QStringList{u"privacy"_s});
}

TEST_F(PanelBanners, SayThatThereIsNoKeyStore) {
  keyState = KeyState::unavailable;
  show(1);
  EXPECT_EQ(shown(), QStringList{u"keylessBanner"_s});
  EXPECT_EQ(said(u"keylessBanner"_s),
            u"El Llavero no está disponible: el historial se guardará sin cifrar."_s);
  EXPECT_FALSE(button(u"keylessBanner"_s));
}

TEST_F(PanelBanners, SayThatTheKeyCannotBeReadAndOpenTheKeyStore) {
  keyState = KeyState::unreadable;
  show(1);
  EXPECT_EQ(shown(), QStringList{u"unreadableKeyBanner"_s});
  EXPECT_EQ(said(u"unreadableKeyBanner"_s),
            u"No se pudo leer la clave del Llavero: el historial se guarda SIN cifrar."_s);
  EXPECT_EQ(button(u"unreadableKeyBanner"_s)->text(), u"Abrir Llaveros"_s);
  button(u"unreadableKeyBanner"_s)->click();
  EXPECT_EQ(opener.opened, QStringList{u"keys"_s});
  EXPECT_FALSE(find(u"noticeBar"_s)->isVisible());
}

TEST_F(PanelBanners, SayWhenThereIsNothingToOpenThatWith) {
  keyState = KeyState::unreadable;
  opener.bare = true;
  show(1);
  button(u"unreadableKeyBanner"_s)->click();
  EXPECT_TRUE(find(u"noticeBar"_s)->isVisible());
}

TEST_F(PanelBanners, AskForTrust) {
  trust.trusted = false;
  permission.recheck();
  show(1);
  EXPECT_EQ(shown(), QStringList{u"untrustedBanner"_s});
  EXPECT_EQ(said(u"untrustedBanner"_s),
            u"Para pegar automáticamente, concede el permiso de Accesibilidad."_s);
  EXPECT_EQ(button(u"untrustedBanner"_s)->text(), u"Conceder"_s);
  button(u"untrustedBanner"_s)->click();
  EXPECT_EQ(trust.requests, 1);
}

TEST_F(PanelBanners, SayWhatToDoWhereTrustCannotBeGiven) {
  trust.trusted = false;
  trust.hasSettings = false;
  permission.recheck();
  show(1);
  button(u"untrustedBanner"_s)->click();
  EXPECT_TRUE(find(u"noticeBar"_s)->isVisible());
  EXPECT_TRUE(find(u"noticeBar"_s)->accessibleName().contains(u"Ctrl-V"));
}

TEST_F(PanelBanners, LeaveRoomForTheListHoweverManyThereAre) {
  trust.trusted = false;
  pasteboard.given = Pasteboard::Access::alwaysDeny;
  keyState = KeyState::unreadable;
  launch();
  permission.recheck();
  store().setPaused(true);
  for (int i = 0; i < 5; ++i)
    store().addRemoteText(QString::number(i), RemoteDeviceType::mac);
  open({340, 440});
  EXPECT_EQ(shown().size(), 4);
  EXPECT_GE(list()->height(), RowGeometry::kLow);
  for (const QString& name : shown())
    EXPECT_TRUE(view->rect().contains(QRect(find(name)->mapTo(view.get(), QPoint()), find(name)->size())));
}

}  // namespace
}  // namespace nimbrel
