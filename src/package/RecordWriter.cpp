// SPDX-License-Identifier: MIT
#include "package/RecordWriter.h"

#include <optional>

#include "base/Encoding.h"
#include "package/Notes.h"
#include "package/RecordFormat.h"
#include "util/Strings.h"

namespace {

/// The first character of a UTF-8 text that Mac Roman lacks.
std::optional<std::string> LackedCharacter(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    NextCharacter(text, at);
    const std::string_view character = text.substr(start, at - start);
    if (!Utf8ToMacRoman(character)) return std::string(character);
  }
  return std::nullopt;
}

class Writer {
 public:
  Writer(const RecordFormat& format, const InstallerRecord& record, std::vector<RecordFault>& faults)
      : fFormat(format), fRecord(record), fFaults(faults), fFields(format.fields) {}

  std::string Written() {
    const std::size_t before = fFaults.size();
    for (const RecordField& field : fFormat.table) {
      fName = field.name;
      std::string value =
          std::visit([this](const auto& member) { return this->FieldOf(member); }, field.member);
      if (value.find(fFormat.separator) != std::string::npos)
        Refuse("can't hold " + Separator() + ", which separates the values of a package");
      fFields[field.place - 1] = std::move(value);
    }
    std::string record;
    for (const std::string& value : fFields) {
      if (&value != &fFields.front()) record += fFormat.separator;
      record += value;
    }
    if (fFaults.size() == before) CompareWithReading(record);
    return record;
  }

 private:
  std::string FieldOf(std::string InstallerRecord::*text) {
    if (!fFormat.macRoman) return fRecord.*text;
    if (std::optional<std::string> bytes = Utf8ToMacRoman(fRecord.*text)) return *bytes;
    Refuse("can't hold \"" + LackedCharacter(fRecord.*text).value_or("") + "\", which Mac Roman lacks");
    return "";
  }
  std::string FieldOf(bool InstallerRecord::*flag) { return fRecord.*flag ? "1" : "0"; }
  std::string FieldOf(std::int64_t InstallerRecord::*number) { return std::to_string(fRecord.*number); }
  std::string FieldOf(const NoteMember& note) { return EncodeNote(fRecord.*note.text); }

  std::string FieldOf(const PictureMember& picture) {
    if ((fRecord.*picture.pixels).empty()) return "";
    return fRecord.*picture.pixels + "," + std::to_string(fRecord.*picture.width) + "," +
           std::to_string(fRecord.*picture.height);
  }

  std::string FieldOf(std::vector<std::string> InstallerRecord::*list) {
    std::string joined;
    for (std::size_t i = 0; i < (fRecord.*list).size(); ++i) {
      const std::string& text = (fRecord.*list)[i];
      if (text.find(kLabelSeparator) != std::string::npos)
        fFaults.push_back({fName + ("[" + std::to_string(i) + "]"), "can't hold \"|\""});
      if (i > 0) joined += kLabelSeparator;
      joined += text;
    }
    return joined;
  }

  /// A separator can also arise where a value meets the real one, as in a value that ends in "|#".
  void CompareWithReading(const std::string& record) {
    const std::vector<std::string_view> read =
        ViewConst::SplitFields(record, fFormat.separator, fFields.size() + 1);
    for (const RecordField& field : fFormat.table) {
      fName = field.name;
      if (field.place <= read.size() && read[field.place - 1] == fFields[field.place - 1]) continue;
      Refuse("makes up the separator " + Separator() + " where its value ends");
      return;  // what follows is displaced
    }
  }

  std::string Separator() const { return "\"" + std::string(fFormat.separator) + "\""; }
  void Refuse(const std::string& why) { fFaults.push_back({fName, why}); }

  const RecordFormat& fFormat;
  const InstallerRecord& fRecord;
  std::vector<RecordFault>& fFaults;
  std::vector<std::string> fFields;
  std::string fName;
};

}  // namespace

WrittenRecord WriteRecord(const InstallerRecord& record) {
  WrittenRecord written;
  written.data = Writer(kDataFormat, record, written.faults).Written();
  written.textData = Writer(kTextDataFormat, record, written.faults).Written();
  return written;
}
