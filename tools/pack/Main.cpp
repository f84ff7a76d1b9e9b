// SPDX-License-Identifier: MIT
// The command line of the packager.
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "pack/Bundle.h"
#include "pack/Description.h"
#include "pack/Refusal.h"

namespace {

namespace fs = std::filesystem;

constexpr char kUsage[] =
    "Usage: tessarine-pack [--runtime FOLDER] DESCRIPTION.json OUT.app\n"
    "       tessarine-pack --check DESCRIPTION.json\n"
    "Makes the installer OUT.app from a description. FOLDER holds TessarineStub and its helpers;\n"
    "it is the folder of tessarine-pack itself unless said otherwise. --check only looks whether that would "
    "do.\n";

struct Arguments {
  fs::path description;
  fs::path out;
  fs::path runtime;
};

// False for a command line that asks for nothing sensible.
bool ReadArguments(const std::vector<std::string>& words, Arguments& to) {
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--runtime" && i + 1 < words.size()) {
      to.runtime = words[++i];
    } else if (words[i].starts_with('-')) {
      return false;
    } else {
      paths.push_back(words[i]);
    }
  }
  if (paths.size() != 2) return false;
  while (paths[1].ends_with('/')) paths[1].pop_back();
  to.description = paths[0];
  to.out = paths[1];
  return to.out.extension() == ".app";
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() == 1 && (words[0] == "--help" || words[0] == "--version")) {
    std::cout << (words[0] == "--help" ? kUsage : "tessarine-pack " TESSARINE_VERSION "\n");
    return 0;
  }
  try {
    if (words.size() == 2 && words[0] == "--check") {
      static_cast<void>(pack::ReadDescription(words[1]));
      return 0;
    }
    Arguments arguments{{}, {}, fs::read_symlink("/proc/self/exe").parent_path()};
    if (!ReadArguments(words, arguments)) {
      std::cerr << kUsage;
      return 2;
    }
    pack::MakeBundle(pack::ReadDescription(arguments.description), arguments.out, arguments.runtime);
  } catch (const pack::Mistakes& mistakes) {
    std::cerr << mistakes.what() << "\n";
    return 1;
  } catch (const std::exception& problem) {
    std::cerr << "tessarine-pack: " << problem.what() << "\n";
    return 1;
  }
  return 0;
}
