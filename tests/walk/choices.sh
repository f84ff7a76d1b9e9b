#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A package put together byte by byte offers choices and options; one comes from a web server, one fails.
# Usage: choices.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
bundle="$work/media/Setup.app"
resources=$bundle/Contents/Resources
mkdir -p "$resources" "$work/chosen" "$work/web" "$work/path"

# The archives, by three programs of other people.
tree() { # NAME FILE...
  local name=$1 file
  shift
  for file; do
    mkdir -p "$(dirname "$work/$name/$file")"
    echo "$name" > "$work/$name/$file"
  done
}
tree payload "Demo/Read Me" Demo/Tools/old Demo/Tools/kept
tree full Tool.app/Contents/MacOS/Tool old "name with blanks"
tree docs "Read Me" Guide.txt
tree maps deep/down/map
chmod 755 "$work/full/Tool.app/Contents/MacOS/Tool"
ln -s Contents/MacOS/Tool "$work/full/Tool.app/tool"
head -c 30000 /dev/urandom > "$work/maps/tiles"
(cd "$work/payload" && zip -qry "$work/payload.zip" .)
(cd "$work/full" && zip -qry "$resources/full.zip" .)
(cd "$work/docs" && 7z a -tzip -bd -y "$resources/docs.zip" . > /dev/null)
(cd "$work/maps" && bsdtar --format zip -cf "$work/web/maps.zip" deep tiles)

port=$(serve_folder "$work/web")

web="http://127.0.0.1:$port"
"$here/write-package" "$bundle" "$bin" "$work/payload.zip" <<END
{}, {2: "A choice and some options.", 7: "Demo", 9: "Choices", 26: r"$web/thanks?a=1&b=\$(touch planted)",
     28: "Release|notes",
     22: 'Small,none.zip,Tools,Only a little|Full & "100%",/any/where/full.zip,Tools,All of it',
     23: "Documents,docs.zip,demo,Words|Maps,$web/maps.zip?v=1,Maps/World,From the web"
         "| Gone,$web/none.zip,Gone,It isn't there|Unticked,none.zip,Unticked"}
END

# The desktop's browser.
printf '#!/bin/sh\nprintf "%%s\\n" "$@" >> "%s/browser"\n' "$work" > "$work/path/xdg-open"
chmod 755 "$work/path/xdg-open"
export PATH="$work/path:$PATH"

start_display
start_install() {
  "$bundle/Contents/MacOS/TessarineStub" &
  installer=$!
  await_window "Choices"
  main=$WINDOW
  press Return
  await_window "Pick One Choice"
}

echo "choices: declined at the options, with the keyboard"
start_install
press Return
await_window "Select Options"
press Tab Tab Tab Tab space # past the other items, round to "Quit"
await_end "$installer"
[ -z "$(ls -A "$work/chosen")" ] || die "a declined install wrote something"

echo "choices: a choice and three options are taken"
start_install
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
press Return # Install failed for option  Gone
await_window "Release Notes"
[ ! -e "$work/browser" ] || die "the browser was started before the notes were read"
press Return
await_end "$installer"

target=$work/chosen/Demo
same() { [ "$(cd "$target" && find . -type f -exec grep -H . {} + 2>/dev/null | grep -av 'tiles' | sort)" = "$1" ]; }
same "./Guide.txt:docs
./Maps/World/deep/down/map:maps
./Read Me:docs
./Tools/Tool.app/Contents/MacOS/Tool:full
./Tools/kept:payload
./Tools/name with blanks:full
./Tools/old:full" || die "the tree: $(cd "$target" && find . -type f -exec grep -H . {} + | grep -av tiles | sort)"
cmp "$work/maps/tiles" "$target/Maps/World/tiles" || die "the download differs"
[ "$(ls -A "$work/chosen")$(ls -A "$target" | tr '\n' ' ')" = "DemoGuide.txt Maps Read Me Tools " ] || die "left behind"
await 5 "no browser" [ -s "$work/browser" ]
[ "$(grep -c . "$work/browser")" = 1 ] && grep -q "^http://127.0.0.1:$port/thanks?a=1&b=" "$work/browser" ||
  die "the browser was given: $(cat "$work/browser")"
[ -z "$(find "$work" "$PWD" -maxdepth 2 -name planted)" ] || die "an address reached a shell"
grep -q '"GET /maps.zip?v=1 HTTP/1.1" 200 .* "Lumare"' "$work/web.log" || die "the request: $(cat "$work/web.log")"
echo "choices: passed"
