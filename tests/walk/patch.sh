#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A patch changes an installation that stands in the Applications folder, and nothing beside it.
# Usage: patch.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
bundle=$work/media/Patch.app
installed=$HOME/Applications/Demo
mkdir -p "$installed/Sub/Old" "$work/outside" "$work/patch/DemoPatch/Sub/Old*Delete*" "$work/patch/DemoPatch/New"
for file in kept tool gone.txt Sub/kept Sub/Old/file .settings; do echo old > "$installed/$file"; done
ln -s "$work/outside" "$installed/exit"
cd "$work/patch/DemoPatch"
mkdir exit
for file in tool Sub/new New/file 'gone*Delete*.txt' .settings exit/escaped; do echo new > "$file"; done
chmod 755 tool
ln -s tool link
(cd .. && zip -qry "$work/patch.zip" DemoPatch)
cd "$work"
"$here/write-package" "$bundle" "$bin" "$work/patch.zip" <<< '{2: "1", 7: "1"}, {7: "Demo", 9: "Patch", 13: "1"}'

start_display
echo "patch: applied, past an item that would leave the installation"
"$bundle/Contents/MacOS/TessarineStub" &
installer=$!
await_window "Patch"
main=$WINDOW
press Return
await_window "Patch" "$main" # Patch Failed: .../exit/escaped
press Return
await_end "$installer"
tree=$(cd "$installed" && find . -mindepth 1 \( -type f -printf '%P %m ' -exec cat {} \; -o -printf '%P %l\n' \) | sort)
[ "$tree" = ".settings 644 old
New 
New/file 644 new
Sub 
Sub/kept 644 old
Sub/new 644 new
exit $work/outside
kept 644 old
link tool
tool 755 new" ] || die "the patched tree: $tree"
[ -z "$(ls -A "$work/outside")" ] || die "the patch left the installation"
[ "$(ls -A "$HOME/Applications")" = Demo ] || die "left beside the installation: $(ls -A "$HOME/Applications")"
echo "patch: passed"
