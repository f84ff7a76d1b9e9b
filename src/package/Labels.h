// SPDX-License-Identifier: MIT
// The installer's texts that a publisher may replace: their numbers in the record and their names.
#pragma once

#include <cstddef>
#include <span>

/// The numbers that are left out have no use.
enum class LabelId : std::size_t {
  CannotWrite = 0,
  Quit = 1,
  Install = 2,
  Cancel = 3,
  Ok = 4,
  Agree = 5,
  Info = 6,
  AgreementTitle = 7,
  InfoTitle = 8,
  ConfirmTitle = 10,
  TargetExists = 11,
  DeleteTarget = 12,
  Failed = 13,
  FolderTitle = 14,
  FolderSelect = 15,
  NextDisc = 16,
  PatchFailed = 18,
  InProgress = 19,
  PleaseWait = 21,
  InstallingOptions = 22,
  ChoiceTitle = 23,
  OptionsTitle = 24,
  PreInstallNotesTitle = 25,
  PostInstallNotesTitle = 26,
};

inline constexpr std::size_t kMostLabels = 27;

struct NamedLabel {
  LabelId id;
  const char* name;  // as a description gives it
};

/// All of them, in the order of their numbers.
std::span<const NamedLabel> NamedLabels();
