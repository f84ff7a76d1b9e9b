#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A choice and options are picked by keyboard and mouse; one comes from a web server, one fails.
# Usage: choices.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
bundle="$work/media/Setup.app"
resources=$bundle/Contents/Resources
mkdir -p "$resources" "$work/"{chosen,web,path,payload/Demo/Tools,full/Tool.app/Contents/MacOS,docs,maps/deep}
# The archives, by three programs of other people.
cd "$work"
echo old | tee "payload/Demo/Read Me" payload/Demo/Tools/old > payload/Demo/Tools/kept
install -m 755 /bin/true full/Tool.app/Contents/MacOS/Tool
ln -s Contents/MacOS/Tool full/Tool.app/tool
echo new | tee full/old "full/name with blanks" "docs/Read Me" > docs/Guide.txt
head -c 30000 /dev/urandom > maps/deep/tiles
(cd payload && zip -qry ../payload.zip .)
(cd full && zip -qry "$resources/full.zip" .)
(cd docs && 7z a -tzip -bd -y "$resources/docs.zip" . > /dev/null)
bsdtar --format zip -C maps -cf web/maps.zip deep

web="http://127.0.0.1:$(serve_folder "$work/web")"
"$here/write-package" "$bundle" "$bin" "$work/payload.zip" <<END
{}, {7: "Demo", 9: "Choices", 26: r"$web/thanks?a=1&b=\$(touch planted)", 28: "Release|notes",
     22: 'Small,none.zip,Tools,Only a little|Full & "100%",/any/where/full.zip,Tools,All of it',
     23: "Documents,docs.zip,demo,Words|Maps,$web/maps.zip?v=1,Maps/World|Gone,$web/none.zip,Gone|Unticked,none.zip,X"}
END
printf '#!/bin/sh\nprintf "%%s\\n" "$@" >> "%s/browser"\n' "$work" > path/xdg-open # the desktop's browser
chmod 755 path/xdg-open
export PATH="$work/path:$PATH"

start_display
"$bundle/Contents/MacOS/TessarineStub" &
installer=$!
await_window "Choices"
main=$WINDOW
press Return
await_window "Pick One Choice"
press Down
click 280 88
await_window "Select Options"
press space
click 27 56
click 27 88
press Return
await_window "Choices" "$main" # the folder dialog
enter "$work/chosen"
press Return
await_window "Choices" "$main" # Setup file download failed.
message=$WINDOW
press Return
await 20 "no second message" eval 'is_in_front Choices "$main" && [ "$WINDOW" != "$message" ]'
press Return # Install failed for option Gone
await_window "Release Notes"
[ ! -e browser ] || die "the browser was started before the notes were read"
press Return
await_end "$installer"

mkdir wanted
cp -a payload/Demo/. docs/. wanted
cp -a full/. wanted/Tools
cp -a maps wanted/Maps
mkdir wanted/Maps/World
mv wanted/Maps/deep wanted/Maps/World
diff -r --no-dereference wanted chosen/Demo || die "the installed tree differs"
[ "$(ls -A chosen)" = Demo ] || die "something was left beside the target"
await 5 "no browser" [ -s browser ]
[ "$(cat browser)" = "$web/thanks?a=1&b=\$(touch planted)" ] || die "the browser was given: $(cat browser)"
grep -q '"GET /maps.zip?v=1 HTTP/1.1" 200 .* "Lumare"' web.log || die "the request: $(cat web.log)"
echo "choices: passed"
