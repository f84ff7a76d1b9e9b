// SPDX-License-Identifier: MIT
// Starts a program and prints the milliseconds until its first window is on the screen, the peak of its
// resident memory in KiB, and the milliseconds from then, or from the click, to its end.
// Usage: bench-process start|run PROGRAM
// "start" kills the program once the window is there; "run" presses Return and waits for the end.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int kSmallestWindow = 100;

/// Waits for a window of some size to be mapped; its identifier.
xcb_window_t AwaitWindow(xcb_connection_t* display) {
  while (xcb_generic_event_t* event = xcb_wait_for_event(display)) {
    if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY) continue;
    const xcb_window_t window = reinterpret_cast<xcb_map_notify_event_t*>(event)->window;
    const auto* size = xcb_get_geometry_reply(display, xcb_get_geometry(display, window), nullptr);
    if (size != nullptr && size->width > kSmallestWindow) return window;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  xcb_connection_t* display = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(display) != 0) return 1;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(display, root, XCB_CW_EVENT_MASK, &events);
  xcb_flush(display);

  const auto start = std::chrono::steady_clock::now();
  const pid_t program = fork();
  if (program == 0) {
    execl(argv[2], argv[2], nullptr);
    _exit(127);
  }
  const xcb_window_t window = AwaitWindow(display);
  auto clicked = std::chrono::steady_clock::now();
  const std::chrono::duration<double, std::milli> shown = clicked - start;
  if (std::string(argv[1]) == "run") {
    const std::string hands =
        "sleep 0.3; xdotool windowfocus --sync " + std::to_string(window) + " keydown Return";
    if (std::system(hands.c_str()) != 0) return 1;
    clicked = std::chrono::steady_clock::now();
    static_cast<void>(std::system("xdotool keyup Return"));  // the program may have gone
  } else {
    kill(program, SIGTERM);
  }
  int status = 0;
  rusage usage{};
  wait4(program, &status, 0, &usage);
  const std::chrono::duration<double, std::milli> ended = std::chrono::steady_clock::now() - clicked;
  std::printf("%.1f %ld %.1f\n", shown.count(), usage.ru_maxrss, ended.count());
  return 0;
}
