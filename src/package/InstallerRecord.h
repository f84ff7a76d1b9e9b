// SPDX-License-Identifier: MIT
// What the publisher configured: the values of the two record files, Data and TextData. Where each one stands
// there is told by package/RecordFormat.h.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "package/Labels.h"

/// Texts are UTF-8. A field that a record doesn't have is empty, 0 or false.
struct InstallerRecord {
  std::string fTimeStamp;           // build stamp; nothing reads it
  bool fApplicationFolder = false;  // install into the Applications folder, ask for none
  std::string fExecuteAfterName;
  std::string fLogoPixelStr;  // hexadecimal RGB, with runs shortened
  std::int64_t fLogoWidth = 0;
  std::int64_t fLogoHeight = 0;
  std::string fPicturePixelStr;
  std::int64_t fPictureWidth = 0;
  std::int64_t fPictureHeight = 0;
  bool fPromptToReplace = false;  // ask before an existing target is deleted
  std::string fExecuteBeforeName;
  std::string fBackgroundPixelStr;
  std::int64_t fBackgroundWidth = 0;
  std::int64_t fBackgroundHeight = 0;
  std::int64_t fEncryptionLen = 0;  // held; scrambling covers whole files
  bool fCenterMessage = false;

  std::string fAgreement;  // note
  std::string fMessage;
  std::string fURLActual;
  std::string fURLDisplayed;
  std::string fInfo;                 // note
  std::vector<std::string> fLabels;  // split on "|"
  std::string fTargetFolder;         // a bare name, until the engine makes it a path
  std::string fCopyright;
  std::string fWindowTitle;
  bool fInstallationPatch = false;
  std::string fInstallChoices;
  std::string fInstallOptions;
  std::string fMinOS;
  std::string fMinRAM;
  std::string fCompletionURL;
  std::string fPreInstallNotes;   // note
  std::string fPostInstallNotes;  // note
  std::string fPostCopy;          // action script
  std::int64_t fCleanup = 0;

  bool operator==(const InstallerRecord&) const = default;

  /// The publisher's text for that label; empty where there is none.
  std::string LabelText(LabelId id) const {
    const auto index = static_cast<std::size_t>(id);
    return index < fLabels.size() ? fLabels[index] : "";
  }
};

/// `data` is the unscrambled content of Data, in Mac Roman; `textData` that of TextData, in UTF-8.
/// There is no malformed record: what isn't there is empty, and what is too much is passed over.
InstallerRecord ParseRecord(std::string_view data, std::string_view textData);

/// From the files Data and TextData of the running bundle's Contents/Resources; none without a Data file
/// that has content.
std::optional<InstallerRecord> ReadRecord();
