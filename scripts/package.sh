#!/usr/bin/env bash
# Builds the Debian package and has it looked at: the descriptions by their validators, the package by lintian.
#
#   scripts/package.sh [FOLDER]
#
# The package ends up in the folder, or else in build/package.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$(realpath -m "${1:-build/package}")
bash scripts/packages.sh
desktop-file-validate data/app.nimbrel.Nimbrel.desktop
appstreamcli validate --no-net data/app.nimbrel.Nimbrel.metainfo.xml
bash scripts/build.sh release nimbrel nimbrel-imaging desktop_files
mkdir -p "$folder"
cpack --config build/release/CPackConfig.cmake -B "$folder" >/dev/null
rm -rf "$folder/_CPack_Packages"
package=$(ls -t "$folder"/nimbrel_*.deb | head -1)
lintian --fail-on error "$package"
echo "$package"
