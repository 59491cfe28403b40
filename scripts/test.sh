#!/usr/bin/env bash
# Builds Nimbrel as it is released, warnings as errors, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh release
ctest --preset release "$@"
