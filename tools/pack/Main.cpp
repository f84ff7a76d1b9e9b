// SPDX-License-Identifier: MIT
// The command line of the packager.
#include <unistd.h>

#include <csignal>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "pack/Bundle.h"
#include "pack/Description.h"
#include "pack/Interrupt.h"
#include "pack/Progress.h"
#include "pack/Refusal.h"

namespace {

namespace fs = std::filesystem;

constexpr char kUsage[] =
    "Usage: tessarine-pack [--runtime FOLDER] DESCRIPTION.json OUT.app\n"
    "       tessarine-pack --check DESCRIPTION.json\n";
constexpr char kHelp[] =
    "Makes the installer OUT.app from a description.\n"
    "\n"
    "  --runtime FOLDER  where TessarineStub and its helpers are, if not beside tessarine-pack\n"
    "  --check           says what is wrong with a description, and makes nothing\n"
    "  -h, --help        this text\n"
    "  --version         the version\n"
    "\n"
    "A description needs no more than this:\n"
    "\n"
    "  {\n"
    "    \"windowTitle\": \"Install My Product\",\n"
    "    \"targetFolder\": \"My Product\",\n"
    "    \"payload\": {\"folder\": \"build/my-product\"}\n"
    "  }\n"
    "\n"
    "All keys are explained in tools/pack/README.md of the sources.\n";

struct Arguments {
  fs::path description;
  fs::path out;
  fs::path runtime;
};

/// What is wrong with the command line; empty if nothing is.
std::string ReadArguments(const std::vector<std::string>& words, Arguments& to) {
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--runtime") {
      if (++i == words.size()) return "--runtime names no folder";
      to.runtime = words[i];
    } else if (words[i].starts_with('-')) {
      return "there is no option " + words[i];
    } else {
      paths.push_back(words[i]);
    }
  }
  if (paths.empty()) return "no description is named";
  if (paths.size() == 1) return "the installer to be made is not named";
  if (paths.size() > 2) return "what is " + paths[2] + "? A name with blanks needs quotes";
  while (paths[1].ends_with('/')) paths[1].pop_back();
  to.description = paths[0];
  to.out = paths[1];
  return to.out.extension() == ".app" ? "" : "an installer's name ends in .app: " + paths[1];
}

/// What was made, how large it is and how many files it installs.
std::string Summary(const fs::path& made) {
  std::uintmax_t bytes = 0;
  for (const fs::directory_entry& item : fs::recursive_directory_iterator(made))
    if (item.is_regular_file() && !item.is_symlink()) bytes += item.file_size();
  const std::uint64_t files = pack::Progress::Current().Files();
  return made.string() + ": " + pack::Grouped((bytes + 999'999) / 1'000'000) + " MB" +
         (files == 0 ? "" : ", " + pack::Grouped(files) + (files == 1 ? " file" : " files") + " packed");
}

/// Does it, and tells of what goes wrong; the exit status.
int Guarded(const std::function<void()>& work) {
  pack::NoteSignals();
  if (::isatty(STDERR_FILENO) == 1) pack::Progress::Current().ShowOn(STDERR_FILENO);
  try {
    work();
  } catch (const pack::Mistakes& mistakes) {
    std::cerr << mistakes.what() << "\n";
    return 1;
  } catch (const pack::Interrupted& by) {
    pack::Progress::Current().Clear();
    std::cerr << "tessarine-pack: stopped; nothing was made.\n";
    std::signal(by.signal, SIG_DFL);
    return std::raise(by.signal);
  } catch (const std::exception& problem) {
    pack::Progress::Current().Clear();
    std::cerr << "tessarine-pack: " << problem.what() << "\n";
    return 1;
  }
  pack::Progress::Current().Clear();
  return std::cout.flush() ? 0 : 1;
}

int Pack(const Arguments& arguments) {
  return Guarded([&] {
    pack::MakeBundle(pack::ReadDescription(arguments.description), arguments.out, arguments.runtime);
    pack::Progress::Current().Clear();
    std::cout << Summary(arguments.out) << "\n";
  });
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() == 1 && (words[0] == "--help" || words[0] == "-h")) {
    std::cout << kUsage << kHelp;
    return 0;
  }
  if (words.size() == 1 && words[0] == "--version") {
    std::cout << "tessarine-pack " TESSARINE_VERSION "\n";
    return 0;
  }
  if (words.size() == 2 && words[0] == "--check")
    return Guarded([&] { static_cast<void>(pack::ReadDescription(words[1])); });
  Arguments arguments{{}, {}, fs::read_symlink("/proc/self/exe").parent_path()};
  const std::string wrong = ReadArguments(words, arguments);
  if (wrong.empty()) return Pack(arguments);
  std::cerr << "tessarine-pack: " << wrong << ".\n" << kUsage << "\"tessarine-pack --help\" tells more.\n";
  return 2;
}
