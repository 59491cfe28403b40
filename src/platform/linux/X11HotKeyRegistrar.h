#pragma once

#include <QHash>
#include <QList>
#include <QObject>

#include "platform/HotKeyRegistrar.h"
#include "platform/linux/X11Keyboard.h"
#include "platform/linux/X11Session.h"

namespace nimbrel {

/// Passive key grabs on the root window, by position, whatever the state of Caps Lock and Num Lock.
class X11HotKeyRegistrar final : public QObject, public HotKeyRegistrar {
 public:
  /// The session must outlive this.
  explicit X11HotKeyRegistrar(X11Session& session);
  ~X11HotKeyRegistrar() override;

  [[nodiscard]] bool registerHotKey(quint32 id, quint32 keyCode, quint32 modifiers) override;
  void unregisterHotKey(quint32 id) override;
  void setPressHandler(std::function<void(quint32 id)> handler) override { handler_ = std::move(handler); }

 private:
  struct Grab {
    xcb_keycode_t key;
    std::uint16_t modifiers;
    /// The combination in the program's terms.
    quint32 carbonModifiers;
    bool operator==(const Grab&) const = default;
  };

  [[nodiscard]] QList<std::uint16_t> lockStates() const;
  [[nodiscard]] bool take(const Grab& grab);
  void release(const Grab& grab);
  void handle(const xcb_generic_event_t& event);
  void hold(xcb_keycode_t key);
  void forget(xcb_keycode_t released);
  void followKeyboardSoon();
  void followKeyboard();

  X11Session& session_;
  X11Modifiers modifiers_;
  QHash<quint32, Grab> grabs_;
  /// The key that is being held down, 0 for none; its repetitions are no presses.
  xcb_keycode_t held_ = 0;
  bool followsSoon_ = false;
  std::function<void(quint32)> handler_;
};

}  // namespace nimbrel
