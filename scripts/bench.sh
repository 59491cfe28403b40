#!/usr/bin/env bash
# Builds the release and runs the benchmarks, printing JSON: scripts/bench.sh history|detection|imaging|desktop [OPTION OF THE BENCHMARK…]
set -euo pipefail
cd "$(dirname "$0")/.."
which=${1:?history, detection, imaging or desktop}
shift
bash scripts/build.sh release nimbrel "${which}_bench" >&2
run=("$PWD/build/release/${which}_bench" --benchmark_format=json "$@")
if [ "$which" = desktop ]; then
  run=(bash scripts/virtual-desktop.sh "${run[@]}")
fi
exec "${run[@]}"
