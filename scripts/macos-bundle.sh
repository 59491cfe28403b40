#!/usr/bin/env bash
# Makes of the built Nimbrel.app one that needs nothing else, signs it, and puts it into a disk image:
#
#   scripts/macos-bundle.sh [--identity NAME] [--output DIR]
#
# NAME is a signing identity of the keychain; without one the signature is good for this Mac only. The image ends up in
# DIR, or else in build/macos/package. `cmake --workflow --preset macos` builds the program.
set -euo pipefail

usage() {
  echo "usage: ${0##*/} [--identity NAME] [--output DIR]" >&2
  exit 2
}

fail() {
  echo "${0##*/}: $*" >&2
  exit 1
}

# The first of these programs that is there.
find_tool() {
  local name
  for name in "$@"; do
    command -v "$name" && return
  done
  fail "$1 is not installed"
}

# What a program or library says of itself: where it looks for libraries, its own name as one, which it is linked
# with, and the oldest systems that it was built for.
search_paths() {
  otool -l "$1" | awk '$1 == "cmd" { path = $2 == "LC_RPATH" }
    path && $1 == "path" { sub(/^ *path /, ""); sub(/ [(]offset [0-9]+[)]$/, ""); print }'
}
own_name() {
  otool -D "$1" | tail -n +2 | tail -n 1
}
linked_names() {
  otool -L "$1" | awk '/^\t/ { sub(/^\t/, ""); sub(/ [(]compatibility version .*$/, ""); print }'
}
systems() {
  otool -l "$1" | awk '$1 == "cmd" { build = $2 == "LC_BUILD_VERSION"; old = $2 == "LC_VERSION_MIN_MACOSX" }
    (build && $1 == "minos") || (old && $1 == "version") { print $2 }'
}

identity=-
output=
while [ $# -gt 0 ]; do
  if [ $# -lt 2 ] || [ -z "$2" ]; then usage; fi
  case $1 in
    --identity) identity=$2 ;;
    --output) output=$2 ;;
    *) usage ;;
  esac
  shift 2
done
[ -n "$output" ] || output="$(dirname "$0")/../build/macos/package"
mkdir -p "$output"
output=$(cd "$output" && pwd)
cd "$(dirname "$0")/.."

built=build/macos/Nimbrel.app
[ -x "$built/Contents/MacOS/nimbrel" ] || fail "there is no $built: cmake --workflow --preset macos"
macdeployqt=$(find_tool macdeployqt macdeployqt6)
qtpaths=$(find_tool qtpaths6 qtpaths)
qt_libraries=$("$qtpaths" --query QT_INSTALL_LIBS)
qt_plugins=$("$qtpaths" --query QT_INSTALL_PLUGINS)
qt_translations=$("$qtpaths" --query QT_INSTALL_TRANSLATIONS)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
app=$work/image/Nimbrel.app
contents=$app/Contents
plist=$contents/Info.plist
mkdir "$work/image"
cp -R "$built" "$app"

# The plugins that the program uses, and where it finds them and the toolkit's own texts.
plugins=(platforms/libqcocoa.dylib styles/libqmacstyle.dylib)
executables=()
for plugin in "${plugins[@]}"; do
  mkdir -p "$contents/PlugIns/${plugin%/*}"
  cp "$qt_plugins/$plugin" "$contents/PlugIns/$plugin"
  executables+=("-executable=$contents/PlugIns/$plugin")
done
chmod -R u+w "$contents/PlugIns"
mkdir -p "$contents/Resources/translations"
for language in es en; do
  if [ -e "$qt_translations/qtbase_$language.qm" ]; then
    cp "$qt_translations/qtbase_$language.qm" "$contents/Resources/translations/"
  fi
done
printf '[Paths]\nPlugins = PlugIns\nTranslations = Resources/translations\n' >"$contents/Resources/qt.conf"

# Nothing is stripped, so that crash reports can be read; the tool's own word on whether it went well is not relied on.
"$macdeployqt" "$app" -verbose=1 -no-plugins -no-strip "-libpath=$qt_libraries" "${executables[@]}"
chmod -R u+w "$app"

# Every program and library in the bundle, one a line.
binaries=$work/binaries
find "$contents" -type f -print | while IFS= read -r file; do
  case $(file -b "$file") in
    Mach-O*) printf '%s\n' "$file" ;;
  esac
done >"$binaries"

# Where a linked name leads to from a file of the bundle.
resolved() {
  case $2 in
    @executable_path/*) echo "$contents/MacOS/${2#*/}" ;;
    @loader_path/*) echo "$(dirname "$1")/${2#*/}" ;;
    @rpath/*) echo "$contents/Frameworks/${2#*/}" ;;
    *) echo "$2" ;;
  esac
}

foreign=0
while IFS= read -r file; do
  paths=$(search_paths "$file")
  own=$(own_name "$file")
  names=$(linked_names "$file")
  # What is looked for outside first could be anybody's.
  while IFS= read -r path; do
    case $path in
      "" | @* | /usr/lib/* | /System/*) ;;
      *) install_name_tool -delete_rpath "$path" "$file" ;;
    esac
  done <<<"$paths"
  while IFS= read -r linked; do
    case $linked in
      "" | "$own" | /usr/lib/* | /System/*) continue ;;
      @*) if [ -e "$(resolved "$file" "$linked")" ]; then continue; fi ;;
    esac
    echo "${file#"$contents/"} needs $linked" >&2
    foreign=1
  done <<<"$names"
done <"$binaries"
[ "$foreign" -eq 0 ] || fail "the bundle needs what is not in it"

# The libraries may have been built for a newer system than the program; the bundle says which it really needs.
minimum=$(
  {
    plutil -extract LSMinimumSystemVersion raw "$plist"
    while IFS= read -r file; do systems "$file"; done <"$binaries"
  } | sort -t . -k 1,1n -k 2,2n -k 3,3n | tail -n 1
)
plutil -replace LSMinimumSystemVersion -string "$minimum" "$plist"

# Inside out: a signature covers those of what is inside. The hardened runtime takes libraries of the same signer only,
# and who signs without an identity is nobody.
signing=(--force --sign "$identity")
if [ "$identity" != - ]; then
  signing+=(--options runtime --timestamp)
fi
find "$contents/PlugIns" "$contents/Frameworks" -type f -name '*.dylib' -print |
  while IFS= read -r library; do
    codesign "${signing[@]}" "$library"
  done
find "$contents/Frameworks" -type d -name '*.framework' -prune -print |
  while IFS= read -r framework; do
    codesign "${signing[@]}" "$framework"
  done
# What checks the entitlements when the program starts cannot read comments.
plutil -convert xml1 -o "$work/entitlements" data/macos/Nimbrel.entitlements
codesign "${signing[@]}" --entitlements "$work/entitlements" "$app"
codesign --verify --deep --strict "$app"

version=$(plutil -extract CFBundleShortVersionString raw "$plist")
architecture=$(lipo -archs "$contents/MacOS/nimbrel" | tr -d ' ')
image=$output/Nimbrel-$version-$architecture.dmg
ln -s /Applications "$work/image/Applications"
hdiutil create -quiet -ov -volname Nimbrel -srcfolder "$work/image" -fs HFS+ -format UDZO "$image"
if [ "$identity" != - ]; then
  codesign --force --sign "$identity" --timestamp "$image"
  codesign --verify --strict "$image"
fi
echo "For macOS $minimum and newer:"
echo "$image"
