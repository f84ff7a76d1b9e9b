// SPDX-License-Identifier: MIT
// What the publisher configured: the fields of the two record files, Data and TextData.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Texts are UTF-8. A field that a record doesn't have is empty, 0 or false.
struct InstallerRecord {
  // Data, in the order of its fields; 5 and 12 are reserved.
  std::string fTimeStamp;           // 1: build stamp; nothing reads it
  bool fApplicationFolder = false;  // 2: install into the Applications folder, ask for none
  std::string fExecuteAfterName;    // 3
  std::string fLogoPixelStr;        // 4: hexadecimal RGB, with runs shortened
  std::int64_t fLogoWidth = 0;
  std::int64_t fLogoHeight = 0;
  std::string fPicturePixelStr;  // 6
  std::int64_t fPictureWidth = 0;
  std::int64_t fPictureHeight = 0;
  bool fPromptToReplace = false;    // 7: ask before an existing target is deleted
  std::string fExecuteBeforeName;   // 8
  std::string fBackgroundPixelStr;  // 9
  std::int64_t fBackgroundWidth = 0;
  std::int64_t fBackgroundHeight = 0;
  std::int64_t fEncryptionLen = 0;  // 10: held; scrambling covers whole files
  bool fCenterMessage = false;      // 11

  // TextData; 10 to 12 and 14 to 21 are reserved.
  std::string fAgreement;            // 1: note
  std::string fMessage;              // 2
  std::string fURLActual;            // 3
  std::string fURLDisplayed;         // 4
  std::string fInfo;                 // 5: note
  std::vector<std::string> fLabels;  // 6: split on "|"
  std::string fTargetFolder;         // 7: a bare name, until the engine makes it a path
  std::string fCopyright;            // 8
  std::string fWindowTitle;          // 9
  bool fInstallationPatch = false;   // 13
  std::string fInstallChoices;       // 22
  std::string fInstallOptions;       // 23
  std::string fMinOS;                // 24
  std::string fMinRAM;               // 25
  std::string fCompletionURL;        // 26
  std::string fPreInstallNotes;      // 27: note
  std::string fPostInstallNotes;     // 28: note
  std::string fPostCopy;             // 29: action script
  std::int64_t fCleanup = 0;         // 30

  /// The override with that index, from 0; empty behind the end.
  std::string LabelText(std::size_t index) const { return index < fLabels.size() ? fLabels[index] : ""; }
};

/// `data` is the unscrambled content of Data, in Mac Roman; `textData` that of TextData, in UTF-8.
/// There is no malformed record: what isn't there is empty, and what is too much is passed over.
InstallerRecord ParseRecord(std::string_view data, std::string_view textData);

/// From the files Data and TextData of the running bundle's Contents/Resources; none without a Data file
/// that has content.
std::optional<InstallerRecord> ReadRecord();

/// A note as the record stores it: "|" for line ends, or behind "$HTML$" hexadecimal UTF-16.
std::string DecodeNote(std::string_view field);
