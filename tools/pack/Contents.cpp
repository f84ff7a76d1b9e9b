// SPDX-License-Identifier: MIT
#include "pack/Contents.h"

#include <fcntl.h>

#include <algorithm>
#include <thread>

#include "archive/planning/Plan.h"
#include "base/Descriptor.h"
#include "pack/Refusal.h"
#include "pack/archive/Hollow.h"
#include "pack/archive/Tree.h"

namespace pack {
namespace {

namespace fs = std::filesystem;

archive::Plan PlanOf(const std::string& field, const archive::Source& source, const fs::path& from) {
  archive::Result<archive::Plan> plan =
      archive::ReadPlan(source, std::max(std::thread::hardware_concurrency(), 1U));
  if (!plan.Ok())
    throw Refusal(field,
                  "holds what no installer takes: " + plan.Failure().Sentence() + ": " + from.string());
  return std::move(*plan);
}

archive::Plan PlanOfFile(const std::string& field, const fs::path& file) {
  const Descriptor opened(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!opened) throw Refusal(field, "names a file that can't be read: " + file.string());
  return PlanOf(field, archive::FileSource(opened.Get(), fs::file_size(file)), file);
}

Contents::Kind KindOf(const archive::Plan& plan, archive::NodeId node) {
  const archive::Node& item = plan.tree[node];
  if (item.kind == archive::Kind::Folder) return Contents::Kind::kFolder;
  if (item.kind == archive::Kind::Link) return Contents::Kind::kLink;
  return (plan.EntryOf(node).mode & 0111) != 0 ? Contents::Kind::kProgram : Contents::Kind::kFile;
}

Contents ContentsOf(const archive::Plan& plan, const std::string& top) {
  Contents contents;
  for (archive::NodeId node = archive::kRoot + 1; node < plan.tree.Nodes().size(); ++node) {
    const std::string path = plan.tree.Path(node);
    const bool above = !top.empty() && plan.tree[node].parent == archive::kRoot;
    contents.items[top.empty() ? path : above ? "" : path.substr(top.size() + 1)] = KindOf(plan, node);
  }
  return contents;
}

Contents ContentsOf(const std::vector<TreeItem>& items, const std::string& top) {
  Contents contents;
  for (const TreeItem& item : items) {
    std::string path = item.name.substr(top.empty() ? 0 : top.size() + 1);
    if (path.ends_with('/')) path.pop_back();
    const Contents::Kind file = (item.mode & 0111) != 0 ? Contents::Kind::kProgram : Contents::Kind::kFile;
    contents.items[path] = item.kind == Kind::kFolder ? Contents::Kind::kFolder
                           : item.kind == Kind::kLink ? Contents::Kind::kLink
                                                      : file;
  }
  return contents;
}

// All of a zip lies in the folder `top`, which the installer knows by its name.
void CheckTop(const std::string& field, const archive::Plan& plan, const std::string& top,
              const fs::path& zip) {
  const std::vector<archive::Node>& nodes = plan.tree.Nodes();
  if (nodes.size() < 2) throw Refusal(field, "names a zip that holds nothing: " + zip.string());
  for (archive::NodeId node = archive::kRoot + 1; node < nodes.size(); ++node) {
    const bool fits = nodes[node].parent != archive::kRoot ||
                      (nodes[node].name == top && nodes[node].kind == archive::Kind::Folder);
    if (!top.empty() && !fits)
      throw Refusal(field, "must hold nothing but a folder \"" + top + "\", and holds \"" +
                               std::string(nodes[node].name) + "\": " + zip.string());
  }
}

}  // namespace

std::optional<Contents::Kind> Contents::Find(const std::string& path) const {
  const auto found = items.find(path);
  if (found != items.end()) return found->second;
  for (std::size_t at = path.find('/'); at != std::string::npos; at = path.find('/', at + 1)) {
    const auto above = items.find(path.substr(0, at));
    if (above != items.end() && above->second == Kind::kLink) return Kind::kLink;
  }
  return std::nullopt;
}

std::vector<std::string> Contents::Paths() const {
  std::vector<std::string> paths;
  for (const auto& [path, kind] : items) paths.push_back(path);
  return paths;
}

std::optional<Contents> ReadContents(const std::string& field, const Source& source, const std::string& top,
                                     Problems& problems) {
  std::optional<Contents> contents;
  if (!source.zip.empty()) {
    problems.Try([&] {
      const archive::Plan plan = PlanOfFile(field + ".zip", source.zip);
      CheckTop(field + ".zip", plan, top, source.zip);
      contents = ContentsOf(plan, top);
    });
  } else if (!source.folder.empty()) {
    const std::string key = field + ".folder";
    const std::vector<TreeItem> items = ListTree(key, source.folder, top, problems);
    std::error_code unread;
    if (fs::is_empty(source.folder, unread) && !unread)
      problems.Add(key, "names a folder that holds nothing: " + source.folder.string());
    problems.Try([&] { PlanOf(key, archive::MemorySource(HollowZip(items)), source.folder); });
    contents = ContentsOf(items, top);
  }
  return contents;
}

bool HoldsProgram(const Contents& contents, const std::string& path) {
  const std::optional<Contents::Kind> kind = contents.Find(path);
  if (kind != Contents::Kind::kFolder)
    return kind == Contents::Kind::kProgram || kind == Contents::Kind::kLink;
  const std::string programs = path + "/Contents/MacOS/";
  const auto inside = [&](const auto& item) {
    return item.first.starts_with(programs) && HoldsProgram(contents, item.first);
  };
  return path.ends_with(".app") && std::any_of(contents.items.begin(), contents.items.end(), inside);
}

bool HoldsBundle(const Contents& contents) {
  std::string first;
  for (const auto& [path, kind] : contents.items) {
    const std::string top = path.substr(0, path.find('/'));
    if (!first.empty() && top != first) return contents.Find("Contents").has_value();
    first = top;
  }
  return first == "Contents" || contents.Find(first + "/Contents").has_value();
}

void CheckArchive(const std::string& field, const fs::path& archive) {
  static_cast<void>(PlanOfFile(field, archive));
}

}  // namespace pack
