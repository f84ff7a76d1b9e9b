// SPDX-License-Identifier: MIT
#include "help/OmbrelController.h"

#include "platform/AppleEvent.h"
#include "platform/Dialogs.h"
#include "platform/Keyboard.h"
#include "util/Clock.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

using ViewConst::ExtractFileExt;
using ViewConst::ExtractFilePath;
using ViewConst::GetPathSeparator;

std::string OmbrelRuntimeFolderPath;

namespace {

constexpr const char* kSignature = "ombl";
constexpr const char* kHelpClass = "Help";
constexpr int kOpenTimeout = 10'000;  // ms
constexpr double kStartSeconds = 2;

std::string FromApplication(const std::string& path) {
  return path.starts_with('/') ? path : ViewConst::GetApplicationPath() + path;
}

std::string InRuntimeFolder(const std::string& path) {
  std::string folder = OmbrelRuntimeFolderPath;
  if (!folder.empty() && !folder.ends_with(GetPathSeparator())) folder += GetPathSeparator();
  return folder + path;
}

std::string NotFound(const std::string& path, const char* atPath, const char* nearby) {
  return path.find(GetPathSeparator()) == std::string::npos ? nearby : atPath + path;
}

}  // namespace

void OmbrelController::Init(const std::string& viewerPath, const std::string& helpFilePath,
                            const std::string& topic) {
  const bool isBundle = !CheckFile(viewerPath) && ExtractFileExt(viewerPath).empty();
  fOmbrelPath = InRuntimeFolder(isBundle ? viewerPath + ".app" : viewerPath);
  fHelpFilePath = InRuntimeFolder(helpFilePath);
  SetTopic(topic);
}

bool OmbrelController::CheckFile(const std::string& path) {
  return !path.empty() && ViewConst::FileExists(FromApplication(path));
}

void OmbrelController::ShowHelpFileAndTopic(const std::string& file, const std::string& topic) {
  fHelpFilePath = ExtractFilePath(file).empty() ? InRuntimeFolder(file) : file;
  SetTopic(topic);
  ShowTopic();
}

std::string OmbrelController::Missing() {
  if (!CheckFile(fOmbrelPath))
    return NotFound(fOmbrelPath, "Ombrel was not found at: ",
                    "Ombrel was not found in the folder containing this application.");
  if (!CheckFile(fHelpFilePath))
    return NotFound(fHelpFilePath, "Help file not found at: ",
                    "Help file was not found in the folder containing this application.");
  return "";
}

void OmbrelController::ShowTopic() {
  fShowing = true;
  const std::string missing = Missing();
  if (missing.empty()) {
    fOmbrelPath = FromApplication(fOmbrelPath);
    Launch(fOmbrelPath);
    OpenDocument();
  } else {
    MessageBox(missing);
  }
  fShowing = false;
}

void OmbrelController::Launch(const std::string& path) {
  const std::optional<FolderItem> viewer = GlobalsKv::MyGetFolderItem(path);
  if (!viewer) return;
  // One that doesn't start may be running already; if not, nobody takes the event.
  static_cast<void>(viewer->Launch(true));
  ViewConst::Sleep(kStartSeconds);
}

void OmbrelController::OpenDocument() {
  const std::string topic = fTopicID.empty() ? "" : "/" + fTopicID;
  const AppleEvent event{kSignature, kHelpClass, "TPID", ViewConst::CocoaToCarbonPath(fHelpFilePath) + topic};
  static_cast<void>(event.Send(kOpenTimeout));  // help that fails to come disturbs nobody's work
}

void OmbrelController::OmbrelCommand(const std::string& command) {
  const AppleEvent event{kSignature, kHelpClass, "CMDS", command};
  static_cast<void>(event.Send(0));  // as above
}

void OmbrelController::Quit() {
  OmbrelCommand("OmbrelWindow:Quit");
}

void OmbrelController::Idle() {
  // The application idles also while a topic is being shown, with the key still down.
  if (!fShowing && Keyboard::AsyncKeyDown(Keyboard::kF1)) ShowTopic();
}

bool OmbrelController::MenuHelp(const std::string& topic) {
  if (!Keyboard::AsyncKeyDown(Keyboard::kF1)) return true;
  SetTopic(topic);
  ShowTopic();
  return false;
}
