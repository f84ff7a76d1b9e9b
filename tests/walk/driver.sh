# SPDX-License-Identifier: MIT
# A scripted user: a display with a window manager, and hands on mouse and keyboard. To be sourced.
# Places of controls are given in the points of a window's content.

walk_processes=()

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

# Starts a display of its own and a window manager, unless SIZE is "none". Sets DISPLAY.
start_display() {
  local size=${1:-1100x760} pipe
  pipe=$(mktemp -u)
  mkfifo "$pipe"
  Xvfb -screen 0 "${size}x24" -nolisten tcp -displayfd 3 3>"$pipe" >/dev/null 2>&1 &
  walk_processes+=($!)
  DISPLAY=":$(head -n 1 "$pipe")"
  rm -f "$pipe"
  export DISPLAY QT_QPA_PLATFORM=xcb
  openbox --sm-disable >/dev/null 2>&1 &
  walk_processes+=($!)
  local tries
  for tries in $(seq 100); do
    if xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; then return; fi
    sleep 0.05
  done
  die "the window manager never came up (after $tries looks)"
}

stop_display() {
  local process
  for process in $(jobs -p) "${walk_processes[@]}"; do kill "$process" 2>/dev/null || true; done
  wait 2>/dev/null || true
}

die() {
  echo "walk: $*" >&2
  if [ -n "${shots:-}" ]; then import -window root "$shots/failed.png" 2>/dev/null || true; fi
  exit 1
}

# Waits up to 20 seconds for a window with exactly this title in front, other than the window named
# second; sets WINDOW.
await_window() {
  local title=$1 besides=${2:-} tries
  for tries in $(seq 200); do
    WINDOW=$(xdotool search --onlyvisible --name "^${title}\$" 2>/dev/null | tail -n 1 || true)
    if [ -n "$WINDOW" ] && [ "$WINDOW" != "$besides" ] && [ "$(xdotool getactivewindow 2>/dev/null)" = "$WINDOW" ]; then
      sleep 0.2 # painted
      return
    fi
    sleep 0.1
  done
  die "no window \"$title\" in front (after $tries looks)"
}

await_no_window() {
  local title=$1 tries
  for tries in $(seq 200); do
    xdotool search --onlyvisible --name "^${title}\$" >/dev/null 2>&1 || return 0
    sleep 0.1
  done
  die "window \"$title\" stays (after $tries looks)"
}

# Clicks with the real mouse at a place in WINDOW.
click() { xdotool mousemove --window "$WINDOW" "$1" "$2" click 1; }

press() { xdotool key --clearmodifiers "$@"; }

enter() { xdotool type --delay 5 -- "$1"; }

# A picture of the whole screen, or with a second argument of WINDOW alone.
shoot() {
  if [ -z "${shots:-}" ]; then return; fi
  import -window "${2:-root}" "$shots/$1.png"
}

await_end() {
  local process=$1 tries
  for tries in $(seq 600); do
    kill -0 "$process" 2>/dev/null || return 0
    sleep 0.1
  done
  die "the installer is still running (after $tries looks)"
}
