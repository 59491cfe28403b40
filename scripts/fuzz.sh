#!/usr/bin/env bash
# Builds the fuzz targets and runs each for some seconds: scripts/fuzz.sh [SECONDS]
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/packages.sh
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target foreign_bytes_fuzz
mkdir -p build/fuzz/corpus
build/fuzz/foreign_bytes_fuzz -max_total_time="${1:-20}" -max_len=8192 -artifact_prefix=build/fuzz/corpus/ \
  build/fuzz/corpus tests/fuzz/seeds
