#pragma once

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <memory>

#include "panel/ClipListView.h"
#include "panel/ContentView.h"
#include "support/PanelFixture.h"

namespace nimbrel::testing {

/// The panel's content on a screen of its own, driven by keys and clicks.
class PanelViewFixture : public PanelFixture {
 protected:
  ~PanelViewFixture() override {
    tester.reset();
    view.reset();
  }

  /// The panel over the history as it is.
  ContentView& open(const QSize& size = {480, 440}) {
    view = std::make_unique<ContentView>(services(), nullptr);
    tester = std::make_unique<QAbstractItemModelTester>(
        list()->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    view->resize(size);
    view->show();
    view->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
    view->panelDidShow();
    return *view;
  }
  /// The panel over clips with the texts "1" to `count`, the newest first.
  void show(int count) {
    launch();
    for (int i = count; i >= 1; --i)
      copyText(QString::number(i));
    open();
  }

  template <typename Widget = QWidget>
  Widget* find(const QString& name) {
    auto* const found = view->findChild<Widget*>(name);
    EXPECT_TRUE(found) << name.toStdString();
    return found;
  }
  QLineEdit* field() { return view->findChild<QLineEdit*>(QStringLiteral("searchField")); }
  ClipListView* list() { return view->findChild<ClipListView*>(QStringLiteral("clipList")); }
  ClipListModel* model() { return static_cast<ClipListModel*>(list()->model()); }
  int rows() { return model()->rowCount(); }

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(field(), key, modifiers);
  }
  /// Types, and waits for what is found.
  void type(const QString& text) {
    QTest::keyClicks(field(), text);
    settle();
  }
  void settle() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !model()->isSearching(); }));
  }
  void click(const QString& button) { QTest::mouseClick(find(button), Qt::LeftButton); }
  /// Opens a menu by its button and gives it.
  QMenu* openMenu(const QString& button, const QString& menu) {
    bury();
    click(button);
    return find<QMenu>(menu);
  }
  /// Deletes what is closed.
  static void bury() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  /// The context menu of the selected clip.
  QMenu* clipMenu() {
    bury();
    press(Qt::Key_F10, Qt::ShiftModifier);
    return find<QMenu>(QStringLiteral("clipMenu"));
  }
  static QAction* entry(const QMenu& menu, const QString& text) {
    for (QAction* const action : menu.actions()) {
      if (action->text() == text) return action;
    }
    return nullptr;
  }
  static QStringList entries(const QMenu& menu) {
    QStringList texts;
    for (const QAction* const action : menu.actions()) {
      if (!action->isSeparator()) texts.append(action->text());
    }
    return texts;
  }
  /// Chooses an entry as a click on it would.
  void choose(QMenu* menu, const QString& text) {
    QAction* const action = entry(*menu, text);
    ASSERT_TRUE(action) << text.toStdString();
    action->trigger();
    menu->close();
  }

  QString selected() { return view->selectedClip() ? view->selectedClip()->clip.text : QString(); }
  QString pasted() {
    return pasteboard.writes.isEmpty() ? QString() : pasteboard.writes.last().text.value_or(QString());
  }
  QString hint() { return find(QStringLiteral("hintLine"))->accessibleName(); }
  /// Copies a picture in which a text is recognised.
  void copyReadImage(const QByteArray& bytes, const QString& text) {
    copyImage(bytes);
    imageTexts.handler(clip(0).id, text);
  }

  std::unique_ptr<ContentView> view;
  std::unique_ptr<QAbstractItemModelTester> tester;
};

}  // namespace nimbrel::testing
