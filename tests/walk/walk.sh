#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A package is made by the packager and installed by hand: declined, installed, replaced, broken off.
# Usage: walk.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
mkdir -p "$work/chosen" "$work/Media Name"

"$here/../../demo/make-payload" "$work/payload"
cat > "$work/package.json" <<END
{
  "windowTitle": "Walk",
  "message": "A walk through an install.",
  "preInstallNotes": {"html": "<html><h1>Before you go on</h1><p>A page.</p></html>"},
  "agreement": "First line\nSecond line",
  "labels": {"agree": "I do, and I have read every word of it", "folderTitle": "Where to"},
  "targetFolder": "Lantern",
  "promptToReplace": true,
  "payload": {"folder": "$work/payload/Lantern"}
}
END
"$bin/tessarine-pack" "$work/package.json" "$work/Media Name/Setup.app"
runtime="$work/Media Name/Setup.app/Contents/MacOS/TessarineStub"

# Starts an install, by a program that has its children's ends ignored (and this shell, in the background, keyboard
# interrupts), and leads it to the notes.
start_install() {
  env --ignore-signal=CHLD --default-signal=INT "$runtime" &
  installer=$!
  await_window "Walk"
  click 336 208
  await_window "Pre-Installation Notes"
}

# Leads an install from the notes into a folder.
choose() {
  press Return
  await_window "License Agreement"
  press Return
  await_window "Where to"
  enter "$1"
  press Return
}

same_tree() { diff <(cd "$1" && list_tree) <(cd "$2" && list_tree); }
list_tree() { find . -printf '%P %y %m %l\n' | sort; find . -type f -exec sha256sum {} + | sort; }

start_display

echo "walk: declined, with the keyboard and the mouse"
start_install
press Escape
await_end "$installer"
start_install
click 692 508
await_window "License Agreement"
press alt+F4 # the desktop asks the window to close: that declines
await_end "$installer"
[ -z "$(ls -A "$work/chosen")" ] && [ ! -e "$HOME/Applications" ] || die "a declined install wrote something"

echo "walk: installed"
start_install
choose "$work/chosen"
await_end "$installer"
same_tree "$work/payload/Lantern" "$work/chosen/Lantern" || die "the installed tree differs"
[ "$(ls -A "$work/chosen")" = Lantern ] || die "something was left beside the target"
said=$("$work/chosen/Lantern/Lantern.app/Contents/MacOS/Lantern")
[ "$said" = $'Lantern 1.2\nA small light is enough to read by.\nGlow: on' ] || die "it doesn't run: $said"

echo "walk: an existing target is replaced"
touch "$work/chosen/Lantern/mine"
start_install
choose "$work/chosen"
press Return Escape Return # the dialog's own Return was meant once
xdotool keydown Return     # and is held
await_window "Confirmation"
sleep 1
xdotool keyup Return
is_in_front "Confirmation" "" && [ -e "$work/chosen/Lantern/mine" ] || die "a key for the window before was its answer"
press Return
await_end "$installer"
same_tree "$work/payload/Lantern" "$work/chosen/Lantern" || die "the replaced tree differs"

echo "walk: a signal ends the run where it stands, and nothing has changed"
for signal in TERM INT HUP; do
  start_install
  if [ $signal != TERM ]; then choose "$work/chosen"; fi
  if [ $signal = INT ]; then await_window "Confirmation"; fi
  kill -"$signal" "$installer"
  await_end "$installer"
  [ "$(ls -A "$work/chosen")" = Lantern ] || die "$signal left something"
  same_tree "$work/payload/Lantern" "$work/chosen/Lantern" || die "$signal cost the old one"
done
echo "walk: passed"
