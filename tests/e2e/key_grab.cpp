#include <QCoreApplication>
#include <cstdio>

#include "platform/linux/X11HotKeyRegistrar.h"

/// Another program with a hot key: key_grab KEYCODE MODIFIERS says "free" and holds the combination until its
/// input ends, or says "taken" and leaves.
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  nimbrel::X11Session session;
  nimbrel::X11HotKeyRegistrar registrar(session);
  const bool isFree = registrar.registerHotKey(1, arguments.value(1).toUInt(), arguments.value(2).toUInt());
  std::puts(isFree ? "free" : "taken");
  std::fflush(stdout);
  if (isFree) static_cast<void>(std::getchar());
  return 0;
}
