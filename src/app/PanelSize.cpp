#include "app/PanelSize.h"

#include <algorithm>

#include "app/FloatingPanel.h"

namespace nimbrel {
namespace {

QString widthKey() {
  return QStringLiteral("panelWidth");
}
QString heightKey() {
  return QStringLiteral("panelHeight");
}

int stored(const UserDefaults& defaults, const QString& key, int standard, int least, int most) {
  const auto value = defaults.value(key);
  const auto* const number = value ? std::get_if<qint64>(&*value) : nullptr;
  return number ? static_cast<int>(std::clamp<qint64>(*number, least, most)) : standard;
}

}  // namespace

QSize storedPanelSize(const UserDefaults& defaults, const QSize& standard) {
  constexpr QSize least = FloatingPanel::kMinimumSize;
  constexpr QSize most = FloatingPanel::kMaximumSize;
  return {stored(defaults, widthKey(), standard.width(), least.width(), most.width()),
          stored(defaults, heightKey(), standard.height(), least.height(), most.height())};
}

void storePanelSize(UserDefaults& defaults, const QSize& size) {
  defaults.set(widthKey(), qint64{size.width()});
  defaults.set(heightKey(), qint64{size.height()});
  defaults.synchronize();
}

}  // namespace nimbrel
