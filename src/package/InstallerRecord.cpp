// SPDX-License-Identifier: MIT
#include "package/InstallerRecord.h"

#include "base/Encoding.h"
#include "util/Strings.h"

namespace {

using ViewConst::IntegerVal;
using ViewConst::NthField;
using ViewConst::SplitFields;

constexpr std::string_view kNoteMark = "$HTML$";
constexpr std::size_t kMostFields = 30;
constexpr std::size_t kMostLabels = 27;

/// The fields of one record, numbered from 1.
class Fields {
 public:
  Fields(std::string_view record, std::string_view separator)
      : fFields(SplitFields(record, separator, kMostFields)) {}
  std::string_view operator[](std::size_t n) const { return n <= fFields.size() ? fFields[n - 1] : ""; }

 private:
  std::vector<std::string_view> fFields;
};

bool IsOne(std::string_view field) {
  return field == "1";
}

/// "pixels,width,height"; an empty field leaves all three as they are.
void TakePicture(std::string_view field, std::string& pixels, std::int64_t& width, std::int64_t& height) {
  if (field.empty()) return;
  height = IntegerVal(NthField(field, ",", 3));
  width = IntegerVal(NthField(field, ",", 2));
  pixels = MacRomanToUtf8(field.substr(0, field.find(',')));
}

void TakeData(const Fields& fields, InstallerRecord& record) {
  record.fTimeStamp = MacRomanToUtf8(fields[1]);
  record.fApplicationFolder = IsOne(fields[2]);
  record.fExecuteAfterName = MacRomanToUtf8(fields[3]);
  TakePicture(fields[4], record.fLogoPixelStr, record.fLogoWidth, record.fLogoHeight);
  TakePicture(fields[6], record.fPicturePixelStr, record.fPictureWidth, record.fPictureHeight);
  record.fPromptToReplace = IsOne(fields[7]);
  record.fExecuteBeforeName = MacRomanToUtf8(fields[8]);
  TakePicture(fields[9], record.fBackgroundPixelStr, record.fBackgroundWidth, record.fBackgroundHeight);
  record.fEncryptionLen = IntegerVal(fields[10]);
  record.fCenterMessage = IsOne(fields[11]);
}

void TakeTextData(const Fields& fields, InstallerRecord& record) {
  const auto text = [&fields](std::size_t n) { return std::string(fields[n]); };
  record.fAgreement = DecodeNote(fields[1]);
  record.fMessage = text(2);
  record.fURLActual = text(3);
  record.fURLDisplayed = text(4);
  record.fInfo = DecodeNote(fields[5]);
  if (!fields[6].empty())
    for (const std::string_view label : SplitFields(fields[6], "|", kMostLabels))
      record.fLabels.emplace_back(label);
  record.fTargetFolder = text(7);
  record.fCopyright = text(8);
  record.fWindowTitle = text(9);
  record.fInstallationPatch = IsOne(fields[13]);
  record.fInstallChoices = text(22);
  record.fInstallOptions = text(23);
  record.fMinOS = text(24);
  record.fMinRAM = text(25);
  record.fCompletionURL = text(26);
  record.fPreInstallNotes = DecodeNote(fields[27]);
  record.fPostInstallNotes = DecodeNote(fields[28]);
  record.fPostCopy = text(29);
  record.fCleanup = IntegerVal(fields[30]);
}

}  // namespace

std::string DecodeNote(std::string_view field) {
  const bool marked = ViewConst::Pos(kNoteMark, field) > 0;
  if (marked) field.remove_prefix(kNoteMark.size());
  const std::string lines = ViewConst::ReplaceCh1WithCh2(field, '|', '\n');
  return ViewConst::UnicodeFromHex(lines, marked);
}

InstallerRecord ParseRecord(std::string_view data, std::string_view textData) {
  InstallerRecord record;
  TakeData(Fields(data, "$|~"), record);
  TakeTextData(Fields(textData, "|#|"), record);
  return record;
}
