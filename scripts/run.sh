#!/usr/bin/env bash
# Builds Nimbrel and starts it. Without a display, on a server or in a container, it plays the main job on a private
# virtual desktop instead, says what it saw and leaves screenshots.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh release nimbrel
if [ -n "${DISPLAY:-}" ]; then
  exec build/release/nimbrel "$@"
fi
echo "No display: playing the main job on a virtual desktop."
NIMBREL_TRAY=yes NIMBREL_WM=${NIMBREL_WM:-xfwm4} exec bash scripts/virtual-desktop.sh \
  /usr/bin/python3 scripts/demo.py "$PWD/build/release/nimbrel" "${NIMBREL_SCREENSHOTS:-$PWD/screenshots}"
