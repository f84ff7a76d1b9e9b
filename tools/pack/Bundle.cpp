// SPDX-License-Identifier: MIT
// Building in a hidden folder beside the bundle, then moving into place.
#include "pack/Bundle.h"

#include <utility>
#include <vector>

#include "pack/Archive.h"
#include "pack/Contents.h"
#include "pack/Files.h"
#include "pack/Refusal.h"
#include "pack/Scramble.h"
#include "package/RecordWriter.h"

namespace pack {
namespace {

namespace fs = std::filesystem;
using Renames = std::vector<std::pair<fs::path, fs::path>>;

constexpr char kRuntime[] = "TessarineStub";
constexpr char kExpander[] = "ditto";
constexpr char kClipboardKeeper[] = "TessarineClipboard";
constexpr char kNetwork[] = "TessarineNetwork.so";
constexpr char kCleanupProgram[] = "PostInstallCleanup";

std::string XmlText(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else {
      out += c;
    }
  }
  return out;
}

std::string InfoPlist(const std::string& executable, const std::string& name) {
  const auto entry = [](const std::string& key, const std::string& value) {
    return "  <key>" + key + "</key>\n  <string>" + XmlText(value) + "</string>\n";
  };
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n" +
         entry("CFBundleExecutable", executable) + entry("CFBundleInfoDictionaryVersion", "6.0") +
         entry("CFBundleName", name) + entry("CFBundlePackageType", "APPL") + "</dict>\n</plist>\n";
}

bool IsInside(const fs::path& path, const fs::path& folder) {
  const fs::path relative = fs::weakly_canonical(path).lexically_relative(fs::weakly_canonical(folder));
  return !relative.empty() && *relative.begin() != "..";
}

// Makes the content of one bundle below `bundle`.
class Builder {
 public:
  Builder(const Description& description, fs::path work, fs::path runtime)
      : fFrom(description), fWork(std::move(work)), fRuntime(std::move(runtime)) {
    fs::create_directories(Resources());
    fs::create_directories(Programs());
    fs::create_directories(Pieces());
  }
  fs::path Bundle() const { return fWork / "bundle"; }
  fs::path Pieces() const { return fWork / "pieces"; }

  void Build(const std::string& bundleName) {
    const WrittenRecord records = WriteRecord(fFrom.record);
    WriteFile(Resources() / "Data", Scramble(records.data));
    WriteFile(Resources() / "TextData", records.textData);
    const std::string name = fFrom.record.fWindowTitle.empty() ? bundleName : fFrom.record.fWindowTitle;
    WriteFile(Bundle() / "Contents" / "Info.plist", InfoPlist(kRuntime, name));
    AddRuntime();
    AddItems("choices", fFrom.choices);
    AddItems("options", fFrom.options);
    AddCleanup();
    AddPayload();
    AddProgram("executeBefore", fFrom.before);
    const bool twice = fFrom.after.name == fFrom.before.name && fFrom.after.file == fFrom.before.file;
    if (!twice) AddProgram("executeAfter", fFrom.after);
  }

 private:
  fs::path Resources() const { return Bundle() / "Contents" / "Resources"; }
  fs::path Programs() const { return Bundle() / "Contents" / "MacOS"; }

  void AddRuntime() {
    for (const char* name : {kRuntime, kExpander, kClipboardKeeper, kNetwork}) {
      if (!fs::exists(fRuntime / name))
        throw Refusal("The runtime's folder", "holds no " + std::string(name) + ": " + fRuntime.string());
      fs::copy_file(fRuntime / name, Programs() / name);
    }
  }

  void AddProgram(const std::string& field, const Program& program) {
    if (program.file.empty()) return;
    const fs::path to = Resources() / program.name;
    if (fs::exists(to)) throw Refusal(field, "has the name of another file of the package: " + program.name);
    RefuseOwnFolder(field, program.file);
    CopyItem(fs::canonical(program.file), to);
  }

  void AddItems(const std::string& list, const std::vector<Item>& items) {
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (!items[i].archive.Given()) continue;
      const std::string field = list + "[" + std::to_string(i) + "]";
      const fs::path to = Resources() / items[i].source;
      fs::rename(MakeArchive(field, items[i].archive, ""), to);
    }
  }

  // The program expands into a folder that is the application bundle, so its archive begins inside it. The
  // one that travels with the runtime is a plain program and gets a bundle around it.
  void AddCleanup() {
    Source source = fFrom.cleanupProgram;
    if (fFrom.record.fCleanup == 0 && !source.Given()) return;
    if (!source.Given()) {
      if (!fs::exists(fRuntime / kCleanupProgram))
        throw Refusal("cleanup.program", "is missing, and the runtime's folder holds no PostInstallCleanup");
      source.folder = fWork / "cleanup";
      fs::create_directories(source.folder / "Contents" / "MacOS");
      fs::copy_file(fRuntime / kCleanupProgram, source.folder / "Contents" / "MacOS" / kCleanupProgram);
      WriteFile(source.folder / "Contents" / "Info.plist", InfoPlist(kCleanupProgram, kCleanupProgram));
      // As old as the program, so that it makes the same bytes each time.
      const fs::file_time_type time = fs::last_write_time(fRuntime / kCleanupProgram);
      for (const fs::path& item : fs::recursive_directory_iterator(source.folder))
        fs::last_write_time(item, time);
    }
    const fs::path archive = MakeArchive("cleanup.program", source, source.zip.empty() ? "" : "Contents");
    ScrambleFile(archive, {{"Data3", fs::file_size(archive)}}, Resources(), Resources());
    fs::remove(archive);
  }

  void AddPayload() {
    const fs::path archive = MakeArchive("payload", fFrom.payload, PayloadFolder(fFrom));
    ScrambleFile(archive, PlanPieces(fs::file_size(archive), fFrom.split), Resources(), Pieces());
    fs::remove(archive);
  }

  // A clear archive that is the caller's to move or remove. All entries lie below `top`.
  fs::path MakeArchive(const std::string& field, const Source& source, const std::string& top) {
    const fs::path archive = fWork / "archive.zip";
    if (source.folder.empty()) {
      fs::copy_file(source.zip, archive);
    } else {
      RefuseOwnFolder(field + ".folder", source.folder);
      ArchiveFolder(field + ".folder", source.folder, top, source.compression, archive);
    }
    // The folder may have changed since it was looked at.
    CheckArchive(field, archive);
    return archive;
  }

  // A folder in which the bundle is being built would go into itself.
  void RefuseOwnFolder(const std::string& field, const fs::path& folder) {
    if (IsInside(fWork, folder))
      throw Refusal(field, "holds the bundle that is to be made: " + folder.string());
  }

  const Description& fFrom;
  fs::path fWork;
  fs::path fRuntime;
};

bool IsPiece(const fs::path& path) {
  const std::string name = path.filename().string();
  if (!name.starts_with("Data#")) return false;
  const std::string rest = name.substr(5);
  return rest == "End" || (!rest.empty() && rest.find_first_not_of("0123456789") == std::string::npos);
}

// Whether there is a bundle to be replaced. Anything else at that place stays.
bool Replaces(const fs::path& out) {
  if (!fs::exists(fs::symlink_status(out))) return false;
  if (fs::is_symlink(out) || !fs::exists(out / "Contents" / "MacOS" / kRuntime))
    throw Refusal(out.string(), "exists and is no installer made by this program");
  return true;
}

// The pieces beside the bundle that would be joined to a new set, or that lose theirs.
std::vector<fs::path> StalePieces(const fs::path& out, bool splitNow) {
  const bool wasSplit = fs::exists(out / "Contents" / "Resources" / "Data#1");
  std::vector<fs::path> stale;
  for (const fs::path& item : fs::directory_iterator(out.parent_path())) {
    if (!IsPiece(item)) continue;
    if (wasSplit) stale.push_back(item);
    if (splitNow && !wasSplit)
      throw Refusal(item.string(), "is a piece of another split set; each set needs a folder of its own");
  }
  return stale;
}

}  // namespace

void MakeBundle(const Description& description, const fs::path& out, const fs::path& runtime) {
  const fs::path place = fs::absolute(out).lexically_normal();
  const bool replaces = Replaces(place);
  const Staging staging(place);
  Builder builder(description, staging.path, runtime);
  builder.Build(place.stem().string());

  Renames renames;
  for (const fs::path& piece : StalePieces(place, !fs::is_empty(builder.Pieces())))
    renames.emplace_back(piece, staging.path / piece.filename());
  if (replaces) renames.emplace_back(place, staging.path / "old");
  renames.emplace_back(builder.Bundle(), place);
  for (const fs::path& piece : fs::directory_iterator(builder.Pieces()))
    renames.emplace_back(piece, place.parent_path() / piece.filename());
  RenameAll(renames);
}

}  // namespace pack
