// SPDX-License-Identifier: MIT
#include "package/InstallerRecord.h"

#include "base/Encoding.h"
#include "package/Notes.h"
#include "package/RecordFormat.h"
#include "util/Strings.h"

namespace {

using ViewConst::IntegerVal;
using ViewConst::NthField;
using ViewConst::SplitFields;

/// Sets members from their fields.
class Taker {
 public:
  Taker(const RecordFormat& format, InstallerRecord& record) : fFormat(format), fRecord(record) {}

  void Take(std::string_view bytes) {
    const std::vector<std::string_view> fields = SplitFields(bytes, fFormat.separator, fFormat.fields);
    for (const RecordField& row : fFormat.table) {
      const std::string_view field = row.place <= fields.size() ? fields[row.place - 1] : "";
      std::visit([this, field](const auto& member) { this->TakeField(field, member); }, row.member);
    }
  }

 private:
  std::string Text(std::string_view field) const {
    return fFormat.macRoman ? MacRomanToUtf8(field) : std::string(field);
  }
  void TakeField(std::string_view field, std::string InstallerRecord::*text) { fRecord.*text = Text(field); }
  void TakeField(std::string_view field, bool InstallerRecord::*flag) { fRecord.*flag = field == "1"; }
  void TakeField(std::string_view field, std::int64_t InstallerRecord::*number) {
    fRecord.*number = IntegerVal(field);
  }
  void TakeField(std::string_view field, const NoteMember& note) { fRecord.*note.text = DecodeNote(field); }

  void TakeField(std::string_view field, std::vector<std::string> InstallerRecord::*list) {
    if (field.empty()) return;
    for (const std::string_view label : SplitFields(field, kLabelSeparator, kMostLabels))
      (fRecord.*list).emplace_back(label);
  }

  void TakeField(std::string_view field, const PictureMember& picture) {
    if (field.empty()) return;
    fRecord.*picture.height = IntegerVal(NthField(field, ",", 3));
    fRecord.*picture.width = IntegerVal(NthField(field, ",", 2));
    fRecord.*picture.pixels = MacRomanToUtf8(field.substr(0, field.find(',')));
  }

  const RecordFormat& fFormat;
  InstallerRecord& fRecord;
};

}  // namespace

InstallerRecord ParseRecord(std::string_view data, std::string_view textData) {
  InstallerRecord record;
  Taker(kDataFormat, record).Take(data);
  Taker(kTextDataFormat, record).Take(textData);
  return record;
}
