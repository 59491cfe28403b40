#include <gmock/gmock.h>

#include <QApplication>
#include <QStandardPaths>

/// Every test program has an application object; it shows windows only where a test does.
int main(int argc, char** argv) {
  ::testing::InitGoogleMock(&argc, argv);
  QStandardPaths::setTestModeEnabled(true);
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
