#!/usr/bin/env bash
# Writes down in the bundle which intents its program offers; without that Shortcuts finds none. Where the command-line
# tools alone are installed, the tool for it is missing, and the bundle goes without.
#
#   app-intents-metadata.sh BUNDLE FOLDER SDK TRIPLE VERSION
#
# FOLDER has the lists of the sources, of what the compiler tells of them and of what the program is linked with;
# VERSION is the oldest system's.
set -euo pipefail
bundle=$1 folder=$2 sdk=$3 triple=$4 version=$5
identifier=app.nimbrel.Nimbrel
resources=$bundle/Contents/Resources
metadata=$resources/Metadata.appintents

rm -rf "$metadata"
if ! processor=$(xcrun --find appintentsmetadataprocessor 2>/dev/null); then
  echo "warning: without Xcode the bundle does not tell Shortcuts of its intents" >&2
  exit 0
fi

options=(
  --output "$resources"
  --toolchain-dir "${processor%/usr/bin/*}"
  --module-name NimbrelIntents
  --sdk-root "$sdk"
  --xcode-version "$(xcodebuild -version | awk '/^Build version/ { print $3 }')"
  --platform-family macOS
  --deployment-target "$version"
  --target-triple "$triple"
  --binary-file "$bundle/Contents/MacOS/nimbrel"
  --dependency-file "$folder/dependencies.dat"
  --stringsdata-file "$folder/shortcuts.stringsdata"
  --source-file-list "$folder/sources"
  --swift-const-vals-list "$folder/values"
  --compile-time-extraction
)
# Only newer ones ask whose intents they are.
case $("$processor" --help 2>&1 || true) in
  *--bundle-identifier*) options+=(--bundle-identifier "$identifier") ;;
esac
"$processor" "${options[@]}"
# It takes a program without intents for none of its business.
if [ ! -d "$metadata" ]; then
  echo "error: no intents were found in the program" >&2
  exit 1
fi

# So that the phrases can be spoken; they can be chosen without.
if trainer=$(xcrun --find appintentsnltrainingprocessor 2>/dev/null); then
  mkdir -p "$folder/phrases"
  "$trainer" --infoplist-path "$bundle/Contents/Info.plist" --temp-dir-path "$folder/phrases" \
    --bundle-id "$identifier" --product-path "$bundle" --extracted-metadata-path "$metadata" --archive-ssu-assets ||
    echo "warning: the phrases of the shortcuts can be chosen, but not spoken" >&2
fi
