// SPDX-License-Identifier: MIT
// From the record files in the bundle to the window's fields.
#include <new>

#include "base/Encoding.h"
#include "package/Notes.h"
#include "package/Scrambling.h"
#include "platform/BinaryStream.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Paths.h"

namespace {

/// None of a file that is too large to be a record, or unreadable at its end; empty where there is none.
std::optional<std::string> FileBytes(const FolderItem& item) {
  constexpr std::uint64_t kLongestRecord = 256U << 20;
  return BinaryStream::Open(item) ? BinaryStream::Content(item, kLongestRecord) : "";
}

std::optional<InstallerRecord> ReadRecordFrom(const FolderItem& resources) {
  std::optional<std::string> data = FileBytes(resources.Child("Data"));
  std::optional<std::string> textData = FileBytes(resources.Child("TextData"));
  if (!data || data->empty() || !textData) return std::nullopt;
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (textData->starts_with(kByteOrderMark)) textData->erase(0, kByteOrderMark.size());
  DecryptStr(*data);
  return ParseRecord(*data, RepairUtf8(*textData));
}

}  // namespace

std::optional<InstallerRecord> ReadRecord() try {
  const FolderItem bundle(ViewConst::BundleOf(Machine::Current().ExecutableFile()));
  return ReadRecordFrom(bundle.Child("Contents").Child("Resources"));
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

bool TessarineStubWindow::ReadData() {
  std::optional<InstallerRecord> record = ReadRecord();
  if (record) static_cast<InstallerRecord&>(*this) = std::move(*record);
  return record.has_value();
}

std::string TessarineStubWindow::ReadPlainOrHtmlText(const std::string& text) {
  return DecodeNote(text);
}
