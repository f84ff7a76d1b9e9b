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
  stop_servers "$work"
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

# Serves a folder on a loopback port, one that is free unless it is named: serve_folder FOLDER [PORT]
# Prints the port; the requests stand in FOLDER.log. stop_servers ends it.
serve_folder() {
  local root=$1 port=${2:-}
  [ -n "$port" ] ||
    port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
  mkdir -p "$root.server"
  cat > "$root.server/nginx.conf" <<END
$([ "$(id -u)" -ne 0 ] || echo 'user root;')
pid $root.server/pid;
error_log $root.server/error.log;
events {}
http {
  log_format served '"\$request" \$status \$body_bytes_sent "\$http_user_agent"';
  access_log $root.log served;
  client_body_temp_path $root.server/body;
  proxy_temp_path $root.server/proxy;
  fastcgi_temp_path $root.server/fastcgi;
  uwsgi_temp_path $root.server/uwsgi;
  scgi_temp_path $root.server/scgi;
  server {
    listen 127.0.0.1:$port;
    root $root;
  }
}
END
  "$(command -v nginx || echo /usr/sbin/nginx)" -e "$root.server/error.log" -c "$root.server/nginx.conf" >&2
  echo "$port"
}

# Ends the servers of all folders in this one.
stop_servers() {
  local pid
  for pid in "$1"/*.server/pid; do
    if [ -e "$pid" ]; then kill "$(cat "$pid")" 2>/dev/null || true; fi
  done
}
