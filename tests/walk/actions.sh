#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A package whose script uses every entry, whose programs talk over the clipboard, and which has itself
# removed. Names are hostile, and links lie wherever something is deleted.
# Usage: actions.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
hostile=$'-n it\'s "$(touch planted)" `touch planted` & *'
media="$work/media/Disk: 1/$hostile"$'\n -f'
mkdir -p "$HOME/Applications" "$media" "$work/victim" "$work/payload"
echo precious > "$work/victim/kept"
cd "$media"

# Where something is deleted lies a folder with a link to what isn't the installer's.
plant() {
  mkdir -p "$1"
  ln -s "$work/victim" "$1/link"
  echo old > "$1/old"
}
plant "$work/early"
plant "$work/late"
ln -s "$work/victim" "$work/copied"
plant "$HOME/Applications/$hostile"
plant "$media/beside"
ln -s "$work/victim/kept" "$work/link"
temporary=$work/tessarine-$(id -u)
mkdir -m 700 "$temporary"
for name in Data3 PostInstallCleanup.zip PostInstallCleanup.data; do
  ln -s "$work/victim/kept" "$temporary/$name"
done
ln -s "$work/victim" "$temporary/PostInstallCleanup.app"

install -D -m 755 /bin/true "$work/payload/Tool.app/Contents/MacOS/Tool"
touch -d 2001-02-03 "$work/payload/Tool.app/Contents/MacOS/Tool"
ln -s MacOS/Tool "$work/payload/Tool.app/Contents/tool"
echo text > "$work/payload/$hostile"
printf 'cd /\necho "from $PWD" > "%s/ran"\r\nfalse\r\necho "then $?" >> "%s/ran"\r\n' "$work" "$work" \
  > "$work/payload/script"
# It says that it takes its time, and then that it is done.
cat > "$work/before" <<END
#!/bin/sh
xclip -o -selection clipboard > "$work/told"
printf TessarineWait | xclip -i -selection clipboard
sleep 5
printf 'TessarineDone:The desk is clear.' | xclip -i -selection clipboard
END
# It never touches the clipboard.
printf '#!/bin/sh\necho x >> "%s/after-ran"\n' "$work" > "$work/payload/after"
chmod 755 "$work/before" "$work/payload/after"
cp "$work/before" "$media/before"

python3 - "$work" "$hostile" > "$work/package.json" <<'END'
import json, sys
work, hostile = sys.argv[1:]
json.dump({
    "windowTitle": "Actions", "message": "All of them.", "targetFolder": hostile, "applicationFolder": True,
    "payload": {"folder": work + "/payload"},
    "executeBefore": "SetupFolder/before", "executeAfter": "InstallFolder/after",
    "cleanup": {"mode": "deleteFolder"},
    "actions": [
        "preinstallcopy=" + work + "/early;" + work + "/saved",
        "preinstalldelete=" + work + "/early",
        "DELETE=" + work + "/late", "delete=" + work + "/link", "delete=" + work + "/missing",
        "shell=head -c 3000000 /dev/zero; pwd > '" + work + "/shell'; ditto -xk none none; echo refused $? >> '" + work + "/shell'",
        "shellfile=script",
        "createfolder=UserAccount/made/" + hostile,
        "allusersfullaccess=UserAccount/made",
        "Tool.app=" + work + "/copied",
        hostile + "=UserAccount/new/" + hostile,
        hostile + "={" + work + "/victim/kept}",
        hostile + "=[" + work + "/nowhere]" + work + "/never",
        "after=[" + work + "/victim]{" + work + "/both}",
        "absent=/absent"]}, sys.stdout)
END
"$bin/tessarine-pack" "$work/package.json" "$media/Setup.app"

start_display
echo "actions: a program of another process talks while the window waits"
"$media/Setup.app/Contents/MacOS/TessarineStub" &
installer=$!
await_window "Install"
[ "$(cat "$work/told")" = "$media/before" ] || die "the program wasn't told the installer's folder"
press Return # The desk is clear.
await_window "Actions"
echo "actions: the script runs to its end, past its failures"
press Return
await_window "Actions" "$WINDOW"
press Return # Missing File: absent
await_end "$installer"

target="$HOME/Applications/$hostile"
[ ! -e "$work/early" ] && [ ! -e "$work/late" ] && [ ! -L "$work/link" ] || die "not deleted"
[ "$(cat "$work/saved/old")" = old ] || die "not saved"
[ "$(cat "$work/shell")" = "$media"$'\nrefused 1' ] || die "the command: $(cat "$work/shell")"
[ "$(cat "$work/ran")" = $'from /\nthen 0' ] || die "the script file: $(cat "$work/ran")"
[ "$(stat -c %a "$HOME/made")" = 777 ] && [ -d "$HOME/made/$hostile" ] || die "no folder for all"
diff -r --no-dereference "$work/payload/Tool.app" "$work/copied/" || die "the copied bundle differs"
[ "$(stat -c '%a %y' "$work/copied/Contents/MacOS/Tool")" = \
  "$(stat -c '%a %y' "$work/payload/Tool.app/Contents/MacOS/Tool")" ] || die "mode or time got lost"
[ "$(cat "$HOME/new/$hostile")" = text ] && [ ! -e "$work/never" ] && [ -x "$work/both" ] || die "copies"
[ ! -e "$target/old" ] && [ -x "$target/after" ] || die "the old target wasn't replaced"
[ "$(cat "$work/after-ran")" = x ] || die "the program afterwards"

echo "actions: the installer's text outlives it, and its folder goes"
[ "$(xclip -o -selection clipboard)" = "$media/after" ] || die "the clipboard lost its text"
[ -z "$(find /proc/[0-9]*/exe -lname "$media/*" 2>/dev/null)" ] || die "a program keeps the medium busy"
await 10 "the installer's folder stays" [ ! -e "$media" ]
[ "$(ls -A "$work/victim")$(cat "$work/victim/kept")" = keptprecious ] || die "a link was followed"
[ -z "$(find "$work" -name 'planted*')" ] || die "a name was taken for a command"
echo "actions: passed"
