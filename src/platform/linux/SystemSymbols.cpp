#include "platform/symbols/SystemSymbols.h"

namespace nimbrel {

QImage systemSymbol(const QString&, int, const QColor&) {
  // Icon themes know other names, and draw in colours of their own.
  return {};
}

}  // namespace nimbrel
