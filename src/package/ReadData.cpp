// SPDX-License-Identifier: MIT
// From the record files in the bundle to the window's fields.
#include "package/Scrambling.h"
#include "platform/BinaryStream.h"
#include "platform/Encoding.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Paths.h"

namespace {

std::string FileBytes(const FolderItem& item) {
  std::optional<BinaryStream> file = BinaryStream::Open(item);
  return file ? file->ReadAll() : "";
}

}  // namespace

std::optional<InstallerRecord> ReadRecord() {
  const std::string executable = Machine::Current().ExecutableFile();
  const FolderItem bundle(ViewConst::BundleOf(executable));
  const FolderItem resources = bundle.Child("Contents").Child("Resources");
  std::string data = FileBytes(resources.Child("Data"));
  if (data.empty()) return std::nullopt;
  std::string textData = FileBytes(resources.Child("TextData"));
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (textData.starts_with(kByteOrderMark)) textData.erase(0, kByteOrderMark.size());
  DecryptStr(data);
  return ParseRecord(data, RepairUtf8(textData));
}

bool TessarineStubWindow::ReadData() {
  std::optional<InstallerRecord> record = ReadRecord();
  if (record) static_cast<InstallerRecord&>(*this) = std::move(*record);
  return record.has_value();
}

std::string TessarineStubWindow::ReadPlainOrHtmlText(const std::string& text) {
  return DecodeNote(text);
}

std::string TessarineStubWindow::CustomLabel(const std::string& defaultText, const std::string& override) {
  return override.empty() ? defaultText : override;
}
