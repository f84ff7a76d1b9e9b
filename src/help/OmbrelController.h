// SPDX-License-Identifier: MIT
// An external help viewer, Ombrel: starts it, and tells it by events which document and topic to show.
#pragma once

#include <string>

/// The folder of the help runtime's files, with closing "/"; empty until it is set.
extern std::string OmbrelRuntimeFolderPath;

/// Paths that don't begin with "/" count from the folder of the running bundle.
class OmbrelController {
 public:
  virtual ~OmbrelController() = default;

  /// Starts the viewer and gives it two seconds (machine's clock) to come up.
  virtual void Launch(const std::string& path);
  /// Shows the document at the topic, or in a plain message what is missing for it.
  virtual void ShowTopic();
  /// A viewer's path without extension gets ".app" if nothing is there. Both paths are put into
  /// OmbrelRuntimeFolderPath, if that is set.
  virtual void Init(const std::string& viewerPath, const std::string& helpFilePath, const std::string& topic);
  virtual void SetTopic(const std::string& topic) { fTopicID = topic; }
  /// For the application's idle time: shows the topic while the help key, F1, is down.
  virtual void Idle();
  virtual std::string GetTopic() { return fTopicID; }
  /// To be asked in front of a menu command. False when the help key was down: then the topic is shown and
  /// the command is not to be carried out.
  [[nodiscard]] virtual bool MenuHelp(const std::string& topic);
  virtual bool CheckFile(const std::string& path);
  /// Waits up to 10 seconds for the viewer's answer. A viewer that can't be reached is not reported.
  virtual void OpenDocument();
  /// A file without folder part is one of the runtime folder, as in Init.
  virtual void ShowHelpFileAndTopic(const std::string& file, const std::string& topic);
  /// Sends the viewer a command, waiting for no answer. Not reported either.
  virtual void OmbrelCommand(const std::string& command);
  /// Ends the viewer.
  virtual void Quit();

  std::string fOmbrelPath;
  std::string fHelpFilePath;
  std::string fTopicID;

 private:
  /// What to tell the user instead of showing the topic; empty when all is there.
  std::string Missing();

  bool fShowing = false;
};
