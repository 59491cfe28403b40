#pragma once

#include <QWidget>
#include <functional>

#include "app/permission/PermissionState.h"
#include "capture/ClipboardStore.h"
#include "platform/Opener.h"
#include "storage/HistoryCipher.h"

class QVBoxLayout;

namespace nimbrel {

class Banner;

/// What the banners speak of; everything outlives them.
struct StatusSources final {
  ClipboardStore& store;
  PermissionState& permission;
  Opener& opener;
  std::function<HistoryCipher::KeyState()> keyState;
};

/// The banners above the list, one for each thing that keeps the program from doing its work: capture is
/// paused, the pasteboard may not be read, the history is not encrypted, nothing can be pasted. Takes no room
/// while all is well.
class StatusBanners final : public QWidget {
  Q_OBJECT

 public:
  StatusBanners(const StatusSources& sources, QWidget* parent);

  /// Shows those that apply by now.
  void refresh();

 Q_SIGNALS:
  /// Something was asked for that cannot be done here; why, in words.
  void failed(const QString& why);

 private:
  Banner* add(Banner* banner);

  StatusSources sources_;
  QVBoxLayout* column_;
  Banner* paused_;
  Banner* blocked_;
  Banner* keyless_;
  Banner* unreadable_;
  Banner* untrusted_;
};

}  // namespace nimbrel
