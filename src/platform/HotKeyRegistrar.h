#pragma once

#include <QtGlobal>
#include <functional>

namespace nimbrel {

/// The bits of the Carbon modifier mask.
namespace hotKeyModifier {
inline constexpr quint32 command = 256;
inline constexpr quint32 shift = 512;
inline constexpr quint32 option = 2048;
inline constexpr quint32 control = 4096;
inline constexpr quint32 all = command | shift | option | control;
}  // namespace hotKeyModifier

/// System-wide key combinations, in the terms of `HotKeyCombo`: virtual key codes by position and the Carbon
/// modifier mask. Main thread.
class HotKeyRegistrar {
 public:
  virtual ~HotKeyRegistrar() = default;

  /// Reserves a combination under an identifier that has none yet. False when the system or another program
  /// refuses it; then nothing is reserved.
  [[nodiscard]] virtual bool registerHotKey(quint32 id, quint32 keyCode, quint32 modifiers) = 0;

  /// Gives a combination back; an unknown identifier does nothing.
  virtual void unregisterHotKey(quint32 id) = 0;

  /// Called on the main thread with the identifier of each combination pressed; not again while it is held
  /// down.
  virtual void setPressHandler(std::function<void(quint32 id)> handler) = 0;
};

}  // namespace nimbrel
