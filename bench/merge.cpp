// SPDX-License-Identifier: MIT
// Times the merge of a staging folder with many items, and as many bare rename(2) calls, new and over items
// that exist. Prints the seconds of each: merge and renames into an empty folder, merge and renames over
// files. Usage: bench-merge FOLDER
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "BareMachine.h"
#include "choices/MergeStaging.h"
#include "util/GlobalsKv.h"

namespace {

namespace fs = std::filesystem;

constexpr int kItems = 10'000;

void Fill(const fs::path& folder) {
  fs::create_directories(folder);
  for (int i = 0; i < kItems; ++i) std::ofstream(folder / ("item " + std::to_string(i))) << i;
}

template <class Work>
double Seconds(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double TimeMerge(const fs::path& root) {
  Fill(root / "Demo_Option");
  const ItemPlace place{root / "Demo_Option", root / "Demo"};
  return Seconds([&] { MergeStaging(place, [](const std::string& path) { std::puts(path.c_str()); }); });
}

double TimeRenames(const fs::path& root) {
  Fill(root / "Demo_Option");
  std::vector<std::pair<std::string, std::string>> names;
  for (const auto& item : fs::directory_iterator(root / "Demo_Option"))
    names.emplace_back(item.path(), root / "Demo" / item.path().filename());
  return Seconds([&] {
    for (const auto& [from, to] : names)
      if (::rename(from.c_str(), to.c_str()) != 0) std::perror("rename");
  });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  GlobalsKv::KvAppInit();
  const BareMachine machine;
  const fs::path root = fs::path(argv[1]) / "merge";
  for (const bool over : {false, true}) {
    for (double (*timed)(const fs::path&) : {TimeMerge, TimeRenames}) {
      fs::remove_all(root);
      over ? Fill(root / "Demo") : static_cast<void>(fs::create_directories(root / "Demo"));
      std::printf("%.4f ", timed(root));
    }
  }
  std::printf("\n");
  fs::remove_all(root);
  return 0;
}
