#!/usr/bin/env bash
# Configures and builds a preset, the packages it needs included: scripts/build.sh [PRESET] [TARGET…]
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}
shift || true
bash scripts/packages.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" ${1:+--target "$@"}
