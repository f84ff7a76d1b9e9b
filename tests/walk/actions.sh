#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A package with a script, whose programs talk over the clipboard, and which has itself removed. Names are
# hostile, and links lie wherever something is deleted.
# Usage: actions.sh FOLDER-OF-BINARIES
set -euo pipefail
bin=$1
here=$(cd "$(dirname "$0")" && pwd)
. "$here/driver.sh"

start_walk
start_display
hostile=$'-n it\'s "$(touch planted)" `touch planted` & *'
media="$work/media/Disk: 1/$hostile"$'\n -f'
target="$HOME/Applications/$hostile"
temporary=$work/tessarine-$(id -u)
mkdir -p "$target" "$media/beside" "$work/victim" "$work/early" "$work/payload"
mkdir -m 700 "$temporary"
echo precious > "$work/victim/kept"
cd "$media"

for folder in "$work/early" "$target" "$media/beside"; do
  ln -s "$work/victim" "$folder/link"
  echo old > "$folder/old"
done
ln -s "$work/victim" "$work/copied"
ln -s "$work/victim/kept" "$work/link"
for name in Data3 PostInstallCleanup.zip PostInstallCleanup.data; do
  ln -s "$work/victim/kept" "$temporary/$name"
done
ln -s "$work/victim" "$temporary/PostInstallCleanup.app"

install -D -m 755 /bin/true "$work/payload/Tool.app/Contents/MacOS/Tool"
ln -s MacOS/Tool "$work/payload/Tool.app/Contents/tool"
echo text > "$work/payload/$hostile"
# It says that it takes its time, and then that it is done.
cat > before <<END
#!/bin/sh
xclip -o -selection clipboard > "$work/told"
printf TessarineWait | xclip -i -selection clipboard
sleep 5
printf 'TessarineDone:The desk is clear.' | xclip -i -selection clipboard
END
# It never touches the clipboard.
printf '#!/bin/sh\necho x >> "%s/after-ran"\n' "$work" > "$work/payload/after"
chmod 755 before "$work/payload/after"

python3 - "$work" "$hostile" > "$work/package.json" <<'END'
import json, sys
work, hostile = sys.argv[1:]
json.dump({
    "windowTitle": "Actions", "promptToReplace": False, "targetFolder": hostile, "applicationFolder": True,
    "payload": {"folder": work + "/payload"},
    "executeBefore": "SetupFolder/before", "executeAfter": "InstallFolder/after",
    "cleanup": {"mode": "deleteFolder"},
    "actions": [
        "preinstallcopy=" + work + "/early;" + work + "/saved", "preinstalldelete=" + work + "/early",
        "delete=" + work + "/link", "Tool.app=" + work + "/copied",
        "shell=pwd > '" + work + "/shell'; ditto -xk none none; echo refused $? >> '" + work + "/shell'",
        "absent=/absent",  # a command may have made it
        hostile + "=UserAccount/new/" + hostile]}, sys.stdout)
END
"$bin/tessarine-pack" "$work/package.json" "$media/Setup.app"

echo "actions: a program of another process talks while the window waits"
"$media/Setup.app/Contents/MacOS/TessarineStub" &
installer=$!
await_window "Install"
[ "$(cat "$work/told")" = "$media/before" ] || die "the program wasn't told the installer's folder"
press Return # The desk is clear.
await_window "Actions"
press Return
await_window "Actions" "$WINDOW"
press Return # Missing File: absent
await_end "$installer"

[ ! -e "$work/early" ] && [ ! -L "$work/link" ] && [ "$(cat "$work/saved/old")" = old ] || die "the deletions"
[ "$(cat "$work/shell")" = "$media"$'\nrefused 1' ] || die "the command: $(cat "$work/shell")"
diff -r --no-dereference "$work/payload/Tool.app" "$work/copied/" || die "the copied bundle differs"
[ "$(cat "$HOME/new/$hostile")" = text ] || die "the copy under a hostile name"
[ ! -e "$target/old" ] && [ -x "$target/after" ] || die "the old target wasn't replaced"
[ "$(cat "$work/after-ran")" = x ] || die "the program afterwards"

echo "actions: the installer's text outlives it, and its folder goes"
[ "$(xclip -o -selection clipboard)" = "$media/after" ] || die "the clipboard lost its text"
cd /
[ -z "$(find /proc/[0-9]*/{exe,cwd} -lname "$media*" 2>/dev/null)" ] || die "a program keeps the medium busy"
await 10 "the installer's folder stays" [ ! -e "$media" ]
[ "$(ls -A "$work/victim")$(cat "$work/victim/kept")" = keptprecious ] || die "a link was followed"
[ -z "$(find "$work" -name 'planted*')" ] || die "a name was taken for a command"
echo "actions: passed"
