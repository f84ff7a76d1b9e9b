// SPDX-License-Identifier: MIT
// Holds a text on the CLIPBOARD selection of the X display after the program that put it there has gone,
// until somebody else takes the selection. The text is its standard input, in UTF-8; it writes one line
// to its standard output once it holds the selection.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>
#include <utility>

#include "base/StandardStreams.h"
#include "platform/desktop/X11Keeper.h"

namespace {

/// False when there is less to be had than there should be: half a text is none.
bool ReadAll(std::string& text) {
  std::array<char, 65536> buffer{};
  while (true) {
    const ssize_t got = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (got == 0) return true;
    if (got < 0 && errno != EINTR) return false;
    if (got > 0) text.append(buffer.data(), static_cast<std::size_t>(got));
  }
}

/// Goes on as a copy in memory, outside of any folder: a disc that the installer came on can be ejected.
void LeaveTheDisc(char** arguments) {
  constexpr std::string_view kName = "clipboard";
  if (arguments[0] == kName) return;
  struct stat facts {};
  const int own = ::open("/proc/self/exe", O_RDONLY | O_CLOEXEC);
  const int copy = ::memfd_create(kName.data(), MFD_CLOEXEC);
  if (::chdir("/") != 0 || own < 0 || copy < 0 || ::fstat(own, &facts) != 0) return;
  for (off_t done = 0; done < facts.st_size;)
    if (::sendfile(copy, own, &done, static_cast<std::size_t>(facts.st_size - done)) <= 0) return;
  const std::array<char*, 2> words{const_cast<char*>(kName.data()), nullptr};
  ::fexecve(copy, words.data(), environ);  // where that is forbidden the program goes on as it is
}

void TellThatItsHeld() {
  // Whoever started this may have gone already.
  static_cast<void>(::write(STDOUT_FILENO, "held\n", 5) == 5);
  ::close(STDOUT_FILENO);
}

}  // namespace

int main(int /*count*/, char** arguments) {
  OpenStandardStreams();
  // Whoever started this may be gone before it answers.
  std::signal(SIGPIPE, SIG_IGN);
  LeaveTheDisc(arguments);
  std::string text;
  if (!ReadAll(text) || text.empty()) return 1;
  ::close(STDIN_FILENO);  // which may hold the text in memory, too
  return KeepX11Clipboard(std::move(text), TellThatItsHeld) ? 0 : 1;
}
