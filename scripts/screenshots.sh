#!/usr/bin/env bash
# Takes the pictures of the panel in all its states that the documentation shows, in light and dark:
#
#   scripts/screenshots.sh [FOLDER]
#
# Without a folder they replace those in docs/screenshots. The main states are taken at 1.5 and 2 pixels to the point
# too.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-docs/screenshots}
cmake --preset release >/dev/null
cmake --build build/release --target panel_gallery
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
rm -f "$folder"/*.png
build/release/panel_gallery "$folder"
for scale in 1.5 2; do
  QT_SCALE_FACTOR=$scale build/release/panel_gallery "$folder/at-$scale" list search banners pictures strange-texts
done
# Small enough to be kept beside the sources.
find "$folder" -name '*.png' -exec mogrify -dither None -colors 256 -define png:compression-level=9 -strip {} +
