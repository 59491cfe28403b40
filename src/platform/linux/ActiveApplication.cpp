#include "platform/linux/ActiveApplication.h"

#include <algorithm>

namespace nimbrel {
namespace {

constexpr std::uint32_t kMaxPropertyWords = 256;
/// The list of all windows is the window manager's, and the topmost is its last.
constexpr std::uint32_t kMaxWindows = 16 * 1024;

xcb_get_property_cookie_t ask(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                              std::uint32_t words = kMaxPropertyWords) {
  return xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, words);
}

QByteArray take(xcb_connection_t* connection, xcb_get_property_cookie_t cookie) {
  xcb_generic_error_t* error = nullptr;
  const XcbPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, &error));
  const XcbPointer<xcb_generic_error_t> owned(error);
  if (!reply) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          xcb_get_property_value_length(reply.get())};
}

std::uint32_t cardinal(const QByteArray& bytes) {
  std::uint32_t value = 0;
  if (bytes.size() >= static_cast<qsizetype>(sizeof value))
    std::copy_n(bytes.constData(), sizeof value, reinterpret_cast<char*>(&value));
  return value;
}

QList<std::uint32_t> cardinals(const QByteArray& bytes) {
  QList<std::uint32_t> values;
  for (qsizetype at = 0; at + qsizetype{sizeof(std::uint32_t)} <= bytes.size(); at += sizeof(std::uint32_t))
    values.append(cardinal(bytes.mid(at)));
  return values;
}

}  // namespace

xcb_window_t ActiveApplication::activeWindow() {
  const auto cookie =
      ask(connection_, rootWindow(connection_), atoms_.atom(QStringLiteral("_NET_ACTIVE_WINDOW")));
  return cardinal(take(connection_, cookie));
}

std::optional<RunningApplication> ActiveApplication::current() {
  const xcb_window_t window = activeWindow();
  if (window == XCB_WINDOW_NONE) return std::nullopt;
  return applicationOf(window);
}

QList<std::uint32_t> ActiveApplication::list(xcb_window_t window, const QString& property) {
  return cardinals(take(connection_, ask(connection_, window, atoms_.atom(property), kMaxWindows)));
}

bool ActiveApplication::isForWork(xcb_window_t window) {
  const QList<std::uint32_t> types = list(window, QStringLiteral("_NET_WM_WINDOW_TYPE"));
  if (types.contains(atoms_.atom(QStringLiteral("_NET_WM_WINDOW_TYPE_DOCK"))) ||
      types.contains(atoms_.atom(QStringLiteral("_NET_WM_WINDOW_TYPE_DESKTOP"))))
    return false;
  const QList<std::uint32_t> states = list(window, QStringLiteral("_NET_WM_STATE"));
  if (states.contains(atoms_.atom(QStringLiteral("_NET_WM_STATE_HIDDEN")))) return false;
  constexpr std::uint32_t kEveryDesktop = 0xffffffff;
  const std::uint32_t current =
      list(rootWindow(connection_), QStringLiteral("_NET_CURRENT_DESKTOP")).value(0, kEveryDesktop);
  const std::uint32_t desktop = list(window, QStringLiteral("_NET_WM_DESKTOP")).value(0, kEveryDesktop);
  return desktop == kEveryDesktop || current == kEveryDesktop || desktop == current;
}

std::optional<RunningApplication> ActiveApplication::topmostBut(qint64 processId) {
  QList<std::uint32_t> windows = list(rootWindow(connection_), QStringLiteral("_NET_CLIENT_LIST_STACKING"));
  windows.append(activeWindow());
  for (auto window = windows.crbegin(); window != windows.crend(); ++window) {
    const auto application = *window != XCB_WINDOW_NONE ? applicationOf(*window) : std::nullopt;
    if (application && application->processId != processId && isForWork(*window)) return application;
  }
  return std::nullopt;
}

std::optional<RunningApplication> ActiveApplication::applicationOf(xcb_window_t window) {
  const auto classCookie = ask(connection_, window, XCB_ATOM_WM_CLASS);
  const auto idCookie = ask(connection_, window, atoms_.atom(QStringLiteral("_GTK_APPLICATION_ID")));
  const auto pidCookie = ask(connection_, window, atoms_.atom(QStringLiteral("_NET_WM_PID")));
  // WM_CLASS holds two strings, each with a NUL at its end: the instance and the class.
  const QList<QByteArray> windowClass = take(connection_, classCookie).split('\0');
  const QByteArray applicationId = take(connection_, idCookie).split('\0').first();
  const std::uint32_t processId = cardinal(take(connection_, pidCookie));
  const QString className = QString::fromUtf8(windowClass.value(1));
  if (className.isEmpty() && applicationId.isEmpty()) return std::nullopt;
  const DesktopEntry entry =
      entries_.find(QString::fromUtf8(applicationId),
                    {.className = className, .instance = QString::fromUtf8(windowClass.value(0))});
  return RunningApplication{.identifier = entry.identifier, .name = entry.name, .processId = processId};
}

}  // namespace nimbrel
