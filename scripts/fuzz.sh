#!/usr/bin/env bash
# Builds the fuzz targets and runs each for some seconds, the transforms' once for every transform:
# scripts/fuzz.sh [SECONDS [TARGET]]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
only=${2:-}
bash scripts/packages.sh
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target foreign_bytes_fuzz detection_fuzz transform_fuzz

# fuzz NAME TARGET SEEDS [OPTION…]: what is found is left in a corpus of that name.
fuzz() {
  local name=$1 target=$2 seeds=$3
  shift 3
  if [ -n "$only" ] && [ "$only" != "$name" ]; then return; fi
  local corpus=build/fuzz/corpus/$name
  mkdir -p "$corpus"
  echo "== $name"
  "build/fuzz/$target" -max_total_time="$seconds" -max_len=10000 -artifact_prefix="$corpus/" "$@" \
    "$corpus" "tests/fuzz/seeds/$seeds"
}

fuzz foreign_bytes foreign_bytes_fuzz foreign
fuzz detection detection_fuzz detection
for transform in uppercase lowercase titleCase trimWhitespace removeLineBreaks urlEncode urlDecode base64Encode \
  base64Decode formatJSON compactJSON; do
  fuzz "$transform" transform_fuzz transforms "--transform=$transform"
done
