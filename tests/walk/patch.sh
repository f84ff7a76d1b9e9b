#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A patch changes an installation that stands in the Applications folder, and nothing beside it.
# Usage: patch.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
installed=$HOME/Applications/Demo
mkdir -p "$installed/Sub" "$work/outside" "$work/DemoPatch/"{New,exit}
cd "$work"
echo old | tee "$installed/"{kept,tool,gone.txt} > "$installed/Sub/kept"
ln -s "$work/outside" "$installed/exit"
echo new | tee DemoPatch/{tool,New/file,'gone*Delete*.txt'} > DemoPatch/exit/escaped
chmod 755 DemoPatch/tool
zip -qry patch.zip DemoPatch
"$here/write-package" media/Patch.app "$bin" patch.zip <<< '{2: "1", 7: "1"}, {7: "Demo", 9: "Patch", 13: "1"}'

start_display
media/Patch.app/Contents/MacOS/TessarineStub &
installer=$!
await_window "Patch"
press Return
await_window "Patch" "$WINDOW" # Patch Failed: .../exit/escaped
press Return
await_end "$installer"
tree=$(cd "$installed" && find . -type f -printf '%P %m ' -exec cat {} \; | sort | tr '\n' ' ')
[ "$tree" = "New/file 644 new Sub/kept 644 old kept 644 old tool 755 new " ] || die "the patched tree: $tree"
[ -z "$(ls -A outside)" ] && [ "$(ls -A "$HOME/Applications")" = Demo ] || die "something lies beside the installation"
echo "patch: passed"
