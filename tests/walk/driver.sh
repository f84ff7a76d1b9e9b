# SPDX-License-Identifier: MIT
# A scripted user: a display with a window manager, and hands on mouse and keyboard. To be sourced.
# Places of controls are given in the points of a window's content.

# A folder of the walk's own, $work, that holds its home and goes with the display when it ends.
start_walk() {
  work=$(mktemp -d)
  trap finish_walk EXIT
  export HOME="$work/home" TMPDIR="$work" XDG_RUNTIME_DIR="$work"
  # Leaks can't be looked for behind the helper's wall, and the toolkit's libraries have some of their own.
  export ASAN_OPTIONS=detect_leaks=0
  mkdir -p "$HOME"
}

finish_walk() {
  stop_display
  chmod -R u+w "$work"
  rm -rf "$work"
}

# Starts a display of its own and a window manager. Sets DISPLAY.
start_display() {
  local pipe
  pipe=$(mktemp -u)
  mkfifo "$pipe"
  Xvfb -screen 0 1100x760x24 -nolisten tcp -displayfd 3 3>"$pipe" >/dev/null 2>&1 &
  DISPLAY=":$(head -n 1 "$pipe")"
  rm -f "$pipe"
  export DISPLAY QT_QPA_PLATFORM=xcb
  openbox --sm-disable >/dev/null 2>&1 &
  await 5 "the window manager never came up" is_managed
}
is_managed() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }

stop_display() {
  local process
  for process in $(jobs -p); do kill "$process" 2>/dev/null || true; done
  wait 2>/dev/null || true
}

die() {
  echo "walk: $*" >&2
  if [ -n "${shots:-}" ]; then import -window root "$shots/failed.png" 2>/dev/null || true; fi
  exit 1
}

# Tries a command for up to so many seconds, until it succeeds: await SECONDS COMPLAINT COMMAND...
await() {
  local end=$((SECONDS + $1)) complaint=$2
  shift 2
  until "$@"; do
    [ "$SECONDS" -le "$end" ] || die "$complaint"
    sleep 0.1
  done
}

# Waits for a window with exactly this title in front, other than the window named second; sets WINDOW.
await_window() {
  await 20 "no window \"$1\" in front" is_in_front "$1" "${2:-}"
  sleep 0.2 # painted
}
is_in_front() {
  WINDOW=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -n 1)
  [ -n "$WINDOW" ] && [ "$WINDOW" != "$2" ] && [ "$(xdotool getactivewindow 2>/dev/null)" = "$WINDOW" ]
}

await_end() { await 60 "the installer is still running" [ ! -e "/proc/$1" ]; }

# Clicks with the real mouse at a place in WINDOW.
click() { xdotool mousemove --window "$WINDOW" "$1" "$2" click 1; }

press() { xdotool key --clearmodifiers "$@"; }

enter() { xdotool type --delay 5 -- "$1"; }
