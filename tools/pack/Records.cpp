// SPDX-License-Identifier: MIT
// The fields of both records in their order, joined by separators that no value may hold.
#include "pack/Records.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/Encoding.h"
#include "choices/ItemList.h"
#include "pack/Refusal.h"
#include "pack/Text.h"

namespace pack {
namespace {

struct Field {
  std::string name;
  std::string value;
};

std::vector<std::string> SplitAt(const std::string& text, std::string_view separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end = text.find(separator); end != std::string::npos; end = text.find(separator, start)) {
    parts.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

// A separator can also arise where a value meets the real one, as in a value that ends in "|#". So the
// finished record is split again and compared.
std::string JoinFields(const std::vector<Field>& fields, const std::string& separator) {
  std::string record;
  for (const Field& field : fields) {
    if (field.value.find(separator) != std::string::npos)
      throw Refusal(field.name, "can't hold \"" + separator + "\", which separates the record's fields");
    if (&field != &fields.front()) record += separator;
    record += field.value;
  }
  const std::vector<std::string> parts = SplitAt(record, separator);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i >= parts.size() || parts[i] != fields[i].value)
      throw Refusal(fields[i].name, "makes up a separator \"" + separator + "\" where its value ends");
  }
  return record;
}

// Joins with "|" what may not hold one.
std::string JoinList(const std::string& name, const std::vector<std::string>& values) {
  std::string list;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i].find('|') != std::string::npos)
      throw Refusal(name + "[" + std::to_string(i) + "]", "can't hold \"|\"");
    if (i > 0) list += '|';
    list += values[i];
  }
  return list;
}

std::string ItemList(const std::string& name, const std::vector<Item>& items) {
  std::vector<std::string> rows;
  for (const Item& item : items) {
    const std::string field = name + "[" + std::to_string(rows.size()) + "].";
    rows.push_back(item.name + "," + item.source + "," + item.target + "," + item.tip);
    // As the installer will read it.
    const ListItem read = ParseItems(rows.back()).front();
    for (const auto& [key, meant, found] :
         {std::tuple{"name", &item.name, &read.name}, std::tuple{"url", &item.source, &read.source},
          std::tuple{"target", &item.target, &read.target}, std::tuple{"tip", &item.tip, &read.tip}})
      if (*meant != *found) throw Refusal(field + key, "can't hold a comma or \"|\"");
  }
  return JoinList(name, rows);
}

std::string MacRomanText(const std::string& name, const std::string& text) {
  if (auto bytes = Utf8ToMacRoman(text)) return *bytes;
  throw Refusal(name, "holds a character that Mac Roman lacks");
}

std::string Boolean(bool value) {
  return value ? "1" : "0";
}

std::string DataRecord(const Description& from) {
  return JoinFields({{"timeStamp", MacRomanText("timeStamp", from.timeStamp)},
                     {"applicationFolder", Boolean(from.applicationFolder)},
                     {"executeAfter", MacRomanText("executeAfter", from.after.name)},
                     {"logo", PictureField(from.logo)},
                     {"reserved", ""},
                     {"picture", PictureField(from.picture)},
                     {"promptToReplace", Boolean(from.promptToReplace)},
                     {"executeBefore", MacRomanText("executeBefore", from.before.name)},
                     {"background", PictureField(from.background)},
                     {"encryptionLength", std::to_string(from.encryptionLength)},
                     {"centerMessage", Boolean(from.centerMessage)},
                     {"reserved", ""}},
                    "$|~");
}

std::string TextRecord(const Description& from) {
  const Field reserved{"reserved", ""};
  std::vector<Field> fields = {{"agreement", NoteField("agreement", from.agreement)},
                               {"message", from.message},
                               {"url", from.urlAddress},
                               {"url.text", from.urlText},
                               {"info", NoteField("info", from.info)},
                               {"labels", JoinList("labels", from.labels)},
                               {"targetFolder", from.targetFolder},
                               {"copyright", from.copyright},
                               {"windowTitle", from.windowTitle},
                               reserved,
                               reserved,
                               reserved,
                               {"patch", Boolean(from.patch)}};
  fields.insert(fields.end(), 8, reserved);
  const std::vector<Field> rest = {{"choices", ItemList("choices", from.choices)},
                                   {"options", ItemList("options", from.options)},
                                   {"minOS", from.minOs},
                                   {"minRAM", from.minRam},
                                   {"completionURL", from.completionUrl},
                                   {"preInstallNotes", NoteField("preInstallNotes", from.preInstallNotes)},
                                   {"postInstallNotes", NoteField("postInstallNotes", from.postInstallNotes)},
                                   {"actions", JoinList("actions", from.actions)},
                                   {"cleanup", std::to_string(from.cleanup)}};
  fields.insert(fields.end(), rest.begin(), rest.end());
  return JoinFields(fields, "|#|");
}

}  // namespace

Records WriteRecords(const Description& description) {
  return {Scramble(DataRecord(description)), TextRecord(description)};
}

}  // namespace pack
