#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A split set on three discs: the installer goes on in a copy of itself, which asks for the discs.
# Usage: split.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
temporary=$work/tessarine-$(id -u)
mkdir -p "$work/Demo" "$work/drive" "$work/disc2" "$work/disc3" "$work/chosen"
head -c 300000 /dev/urandom > "$work/Demo/data"
(cd "$work" && zip -qr payload.zip Demo)
"$here/write-package" "$work/drive/Setup.app" "$bin" "$work/payload.zip" 100000 100000 \
  <<< '{}, {7: "Demo", 9: "Split"}'
mv -t "$work/disc2" "$work/drive/Data#2"
mv -t "$work/disc3" "$work/drive/Data#End"

# Starts the installer and leads its copy to the first question for a disc. Sets copy.
start_install() {
  "$work/drive/Setup.app/Contents/MacOS/TessarineStub" &
  installer=$!
  await_window "Split"
  press Return
  await_end "$installer"
  await_window "Install" # the copy's folder dialog
  copy=$(pgrep -f "^$temporary/[0-9]{4}/Setup.app/Contents/MacOS/TessarineStub")
  enter "$work/chosen"
  press Return
  await_window "Confirmation"
}

start_display
echo "split: no further disc"
start_install
press Escape
await_end "$copy"
[ -z "$(ls -A "$work/chosen")" ] || die "something was left: $(ls -A "$work/chosen")"

echo "split: three discs, and a clipboard that somebody else has taken"
before=$(ls -d "$temporary"/[0-9][0-9][0-9][0-9])
printf 'mine' | xclip -i -selection clipboard # taken over by the installer, which runs next
start_install
[ "$(xclip -o -selection clipboard)" = "$work/drive/" ] || die "the clipboard: $(xclip -o -selection clipboard)"
[ ! -e "$before" ] || die "the copy of an earlier run was left"
for disc in 2 3; do
  mv "$work/drive" "$work/out$disc"
  mv "$work/disc$disc" "$work/drive"
  press Return
  if [ $disc = 2 ]; then await_window "Confirmation" "$WINDOW"; fi
done
await_end "$copy"
cmp "$work/Demo/data" "$work/chosen/Demo/data" || die "the installed file differs"
[ "$(ls -A "$work/chosen")" = Demo ] || die "left beside the target: $(ls -A "$work/chosen")"
echo "split: passed"
