#!/usr/bin/env bash
# Runs a command on a private desktop: an X server, a D-Bus session that stands for the system's bus too, an unlocked
# key store, a window manager and a tray, with folders of its own, all gone afterwards.
#
#   scripts/virtual-desktop.sh COMMAND [ARGUMENT…]
#
# NIMBREL_WM      window manager: openbox (default), xfwm4, or none
# NIMBREL_TRAY    "yes" starts a tray
# NIMBREL_KEYRING "no" starts no key store
# NIMBREL_QPA     Qt's platform: xcb (default), or offscreen for programs that speak X themselves
# NIMBREL_SCREEN  size and depth, 1280x900x24 by default
set -euo pipefail

if [ -z "${NIMBREL_DESKTOP_INNER:-}" ]; then
  export NIMBREL_DESKTOP_INNER=1
  exec dbus-run-session -- bash "$0" "$@"
fi
unset NIMBREL_DESKTOP_INNER

home=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$home"
}
trap cleanup EXIT

export HOME=$home XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config XDG_CACHE_HOME=$home/cache
export XDG_RUNTIME_DIR=$home/run NO_AT_BRIDGE=1 QT_QPA_PLATFORM=${NIMBREL_QPA:-xcb} QT_QPA_PLATFORMTHEME= GDK_BACKEND=x11
export DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS
unset WAYLAND_DISPLAY XAUTHORITY
mkdir -p "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

# The server picks a free display number and writes it once it accepts clients.
mkfifo "$home/display"
Xvfb -displayfd 3 -screen 0 "${NIMBREL_SCREEN:-1280x900x24}" -nolisten tcp -noreset 3>"$home/display" >"$home/xvfb.log" 2>&1 &
pids+=($!)
read -r number <"$home/display"
export DISPLAY=:$number
# What the bus starts belongs to this desktop too.
dbus-update-activation-environment HOME DISPLAY XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME XDG_RUNTIME_DIR \
  QT_QPA_PLATFORM DBUS_SYSTEM_BUS_ADDRESS

if [ "${NIMBREL_KEYRING:-yes}" != no ]; then
  printf 'nimbrel' | gnome-keyring-daemon --unlock --components=secrets --daemonize >"$home/keyring.log" 2>&1
fi

case "${NIMBREL_WM:-openbox}" in
  none) ;;
  openbox) openbox >"$home/wm.log" 2>&1 & pids+=($!) ;;
  xfwm4) xfwm4 --compositor="${NIMBREL_COMPOSITOR:-on}" >"$home/wm.log" 2>&1 & pids+=($!) ;;
esac
if [ "${NIMBREL_WM:-openbox}" != none ]; then
  for _ in $(seq 100); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.05
  done
fi
if [ "${NIMBREL_TRAY:-no}" = yes ]; then
  trayer --edge top --align right --widthtype request --height 24 --SetDockType true >"$home/tray.log" 2>&1 &
  pids+=($!)
fi

# In the background and waited for, so that a signal reaches the trap while the command runs.
"$@" &
command=$!
pids+=("$command")
wait "$command"
