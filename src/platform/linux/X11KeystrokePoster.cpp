#include "platform/linux/X11KeystrokePoster.h"

#include <xcb/xtest.h>

#include <QCoreApplication>

#include "platform/linux/X11KeyCodes.h"

namespace nimbrel {
namespace {

// Key symbols of keysymdef.h.
constexpr xcb_keysym_t kSmallV = 0x0076;
constexpr quint32 kVirtualV = 9;
constexpr xcb_keysym_t kInsert = 0xff63;
constexpr xcb_keysym_t kShiftLeft = 0xffe1;
constexpr xcb_keysym_t kControlLeft = 0xffe3;

QList<xcb_keysym_t> symbolsOf(PasteChord chord) {
  switch (chord) {
    case PasteChord::controlV:
      return {kControlLeft, kSmallV};
    case PasteChord::controlShiftV:
      return {kControlLeft, kShiftLeft, kSmallV};
    case PasteChord::shiftInsertPrimary:
      return {kShiftLeft, kInsert};
  }
  return {};
}

}  // namespace

bool isXtestUsable(X11Session& session) {
  if (!session.isConnected()) return false;
  const auto* const extension = xcb_get_extension_data(session.connection(), &xcb_test_id);
  return extension && extension->present;
}

X11KeystrokePoster::X11KeystrokePoster(X11Session& session, DesktopEntries& entries,
                                       X11Pasteboard& pasteboard)
    : session_(session),
      keyboard_(session),
      active_(session.connection(), session.atoms(), entries),
      pasteboard_(pasteboard) {}

std::optional<RunningApplication> X11KeystrokePoster::focusedApplication() {
  // The focus may be on an inner window; the application is named on its top-level one.
  constexpr int kMaxDepth = 8;
  xcb_window_t window = session_.focusWindow();
  for (int depth = 0; depth < kMaxDepth && window > XCB_INPUT_FOCUS_POINTER_ROOT && window != session_.root();
       ++depth) {
    if (auto application = active_.applicationOf(window)) return application;
    window = session_.parentOf(window);
  }
  return active_.current();
}

void X11KeystrokePoster::postPaste() {
  if (!isXtestUsable(session_)) return;
  const auto application = focusedApplication();
  if (application && application->processId == QCoreApplication::applicationPid()) return;
  const PasteChord chord = pasteChordOf(application ? application->identifier : QString());
  // Anything else that PRIMARY may hold must not be pasted in the clip's place.
  if (chord == PasteChord::shiftInsertPrimary && !pasteboard_.offerAsPrimary()) return;
  QList<xcb_keycode_t> keys;
  for (const xcb_keysym_t symbol : symbolsOf(chord)) {
    auto key = keyboard_.keyFor(symbol);
    // Layouts without Latin letters: programs then go by the position.
    if (!key && symbol == kSmallV) key = x11KeyCode(kVirtualV);
    if (!key) return;
    keys.append(*key);
  }
  press(keys);
}

void X11KeystrokePoster::press(const QList<xcb_keycode_t>& chord) {
  const auto fake = [this](std::uint8_t type, xcb_keycode_t key) {
    xcb_test_fake_input(session_.connection(), type, key, XCB_CURRENT_TIME, session_.root(), 0, 0, 0);
  };
  const QList<xcb_keycode_t> held = keyboard_.heldModifiers();
  // As long as a hot key is held down, the server gives every key to whoever grabbed it.
  xcb_ungrab_keyboard(session_.connection(), XCB_CURRENT_TIME);
  // One batch, which the server works off without a pause: the user has no time to let go of a key in the
  // middle.
  for (const xcb_keycode_t key : held)
    fake(XCB_KEY_RELEASE, key);
  for (const xcb_keycode_t key : chord)
    fake(XCB_KEY_PRESS, key);
  for (auto key = chord.crbegin(); key != chord.crend(); ++key)
    fake(XCB_KEY_RELEASE, *key);
  for (const xcb_keycode_t key : held)
    fake(XCB_KEY_PRESS, key);
  session_.flush();
}

}  // namespace nimbrel
