// SPDX-License-Identifier: MIT
#include "platform/posix/PosixMachine.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>

#include "base/Descriptor.h"
#include "platform/desktop/Launch.h"
#include "platform/desktop/SpecialFolders.h"
#include "platform/posix/HelperExpansion.h"
#include "platform/posix/Process.h"
#include "platform/posix/SystemFacts.h"

namespace {

constexpr const char* kStandardInput = "/dev/stdin";

Descriptor OpenArchive(const FolderItem& archive) {
  return Descriptor(::open(archive.NativePath().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

/// In bytes, of a file that this process and its children write.
std::uint64_t LargestFileAllowed() {
  rlimit limit{};
  return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 ? limit.rlim_cur : RLIM_INFINITY;
}

}  // namespace

std::int64_t PosixMachine::Ticks() {
  using SixtiethSeconds = std::chrono::duration<std::int64_t, std::ratio<1, 60>>;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<SixtiethSeconds>(now).count();
}

std::string PosixMachine::ExecutableFile() {
  return OwnExecutable();
}

std::string PosixMachine::HomeFolder() {
  return UserHomeFolder();
}

std::string PosixMachine::DesktopFolder() {
  return UserDesktopFolder();
}

std::string PosixMachine::TemporaryFolder() {
  if (fTemporaryFolder.empty()) fTemporaryFolder = PrivateTemporaryFolder(ExecutableFile());
  return fTemporaryFolder;
}

std::string PosixMachine::SystemParentFolder() {
  const std::string parent = ApplicationsParent();
  const std::string folder = FolderItem(parent).Child("Applications").NativePath();
  // A home that can't take it shows itself when the install writes there.
  if (::mkdir(folder.c_str(), 0777) == 0) fMadeApplications = folder;
  return parent;
}

PosixMachine::~PosixMachine() {
  if (!fMadeApplications.empty()) ::rmdir(fMadeApplications.c_str());
  if (!fToolLink.empty()) ::unlink(fToolLink.c_str());
}

bool PosixMachine::InstalledMemory(std::int64_t& megabytes) {
  const std::uint64_t bytes = InstalledBytes();
  if (bytes > 0) megabytes = static_cast<std::int64_t>(bytes / 1'000'000);
  return bytes > 0;
}

bool PosixMachine::SystemVersion(std::int64_t& major, std::int64_t& minor) {
  long long first = 0;
  long long second = 0;
  if (!ReadSystemVersion(first, second)) return false;
  major = first;
  minor = second;
  return true;
}

int PosixMachine::Execute(const std::string& command) {
  std::string tools = HelperFolder();
  if (tools.find(':') != std::string::npos) {
    // A search path can't hold that name, so a link of another one leads there.
    if (fToolLink.empty() && !TemporaryFolder().empty()) {
      fToolLink = TemporaryFolder() + "/Programs-" + std::to_string(::getpid());
      static_cast<void>(::unlink(fToolLink.c_str()));
      static_cast<void>(::symlink(tools.c_str(), fToolLink.c_str()));
    }
    tools = fToolLink;
  }
  return RunShellLine(command, tools, [this] { return GoOn(); });
}

int PosixMachine::ExecuteWithInput(const std::string& program, const std::vector<std::string>& arguments,
                                   const Secret& input) {
  return RunWithInput(program, arguments, input.View(), [this] { return GoOn(); });
}

bool PosixMachine::GoOn() {
  constexpr int kStep = 5;  // milliseconds
  DoEvents(kStep);
  return !Ending();
}

void PosixMachine::ForbidCoreDumps() {
  const rlimit none{0, 0};
  // Either is enough, and both are this process's own to set.
  static_cast<void>(::setrlimit(RLIMIT_CORE, &none));
  HideMemoryFromDumps();
}

bool PosixMachine::IsRunBelow(const FolderItem& folder) {
  return ProcessRunsBelow(folder.ResolvedPath());
}

bool PosixMachine::IsOpenBelow(const FolderItem& folder) {
  return ProcessHasOpenBelow(folder.ResolvedPath()) || IsRunBelow(folder);
}

bool PosixMachine::IsDisc(const FolderItem& folder) {
  return LiesOnDisc(folder.NativePath());
}

bool PosixMachine::Launch(const FolderItem& item) {
  const LaunchPlan plan = PlanLaunch(item);
  switch (plan.kind) {
    case LaunchKind::kNothing:
      return false;
    case LaunchKind::kProgram:
      return Remember(StartDetached(plan.program, {}));
    case LaunchKind::kArchive:
      return Remember(
          StartDetached(Helper(), {"-xk", "--new", "--", item.NativePath(), item.Parent().NativePath()}));
    case LaunchKind::kDocument:
      fOpenedDocument = true;
      return OpenDocument(item);
  }
  return false;
}

bool PosixMachine::Remember(int process) {
  if (process > 0) fLaunched.push_back(process);
  return process > 0;
}

bool PosixMachine::LaunchedRuns() {
  std::erase_if(fLaunched, [](int process) { return !DetachedRuns(process); });
  return fOpenedDocument || !fLaunched.empty();
}

void PosixMachine::ForgetLaunched() {
  fLaunched.clear();
  fOpenedDocument = false;
}

std::shared_ptr<Expansion> PosixMachine::ExpansionOf(const FolderItem& archive) {
  const auto found = fExpansions.find(archive.NativePath());
  return found == fExpansions.end() ? nullptr : found->second;
}

void PosixMachine::ExpandPackage(const FolderItem& archive, const FolderItem& folder) {
  // By descriptors: neither names that others could take since, nor a name at all is needed.
  const Descriptor bytes = OpenArchive(archive);
  const Descriptor parent(::open(folder.Parent().NativePath().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  fExpansions[archive.NativePath()] = std::make_shared<HelperExpansion>(
      Helper(), HelperWords({"--new", "--ours", "--scrambled"}, kStandardInput, folder.Name()), bytes.Get(),
      parent.Get());
}

ArchiveLook PosixMachine::LookAtArchive(const FolderItem& archive, bool everyByte) {
  const Descriptor bytes = OpenArchive(archive);
  if (!bytes) return {false, std::string("The package can't be read: ") + std::strerror(errno) + "."};
  HelperExpansion look(Helper(),
                       HelperWords({everyByte ? "--check" : "--plan", "--scrambled"}, kStandardInput, "/"),
                       bytes.Get());
  while (look.Running())
    if (!GoOn()) look.Stop();
  if (look.Succeeded() && look.Largest() > LargestFileAllowed())
    return {false, "The archive holds a file that is larger than this user may write."};
  return {look.Succeeded(), look.Reason(), look.Total(), look.Items()};
}

std::string PosixMachine::Helper() {
  return HelperFolder() + "/ditto";
}

std::vector<std::string> PosixMachine::HelperWords(const std::vector<std::string>& options,
                                                   const std::string& archive, const std::string& folder) {
  std::vector<std::string> words{"-xk", "--progress", "--with-parent=" + std::to_string(::getpid())};
  words.insert(words.end(), options.begin(), options.end());
  words.insert(words.end(), {"--", archive, folder});
  return words;
}

std::string PosixMachine::HelperFolder() {
  return FolderItem(ExecutableFile()).Parent().NativePath();
}
