// SPDX-License-Identifier: MIT
#include "package/Scrambling.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/BinaryStream.h"
#include "platform/Machine.h"
#include "util/GlobalsKv.h"

namespace {

/// Even, so that each piece begins with an unchanged byte as the file does.
constexpr std::size_t kPiece = 256U << 10;

/// Adds `by` to every second byte. Taken as a 16-bit number, low byte first, each pair has its second
/// byte on top, where an overflow falls off: one addition does both bytes.
void Shift(char* bytes, std::size_t count, unsigned char by) {
  static_assert(std::endian::native == std::endian::little);
  const auto add = static_cast<std::uint16_t>(by << 8U);
  for (std::size_t i = 0; i + 1 < count; i += 2) {
    std::uint16_t pair = 0;
    std::memcpy(&pair, bytes + i, sizeof pair);
    pair = static_cast<std::uint16_t>(pair + add);
    std::memcpy(bytes + i, &pair, sizeof pair);
  }
}

constexpr unsigned char kRaise = 1;
constexpr unsigned char kLower = 255;  // minus one, modulo 256

bool ShiftFile(BinaryStream& source, BinaryStream& target, unsigned char by) {
  std::vector<char> piece(kPiece);
  std::uint64_t left = source.Length();
  while (const std::size_t got = source.Read(piece.data(), piece.size())) {
    Shift(piece.data(), got, by);
    if (!target.Write(piece.data(), got)) return false;
    left -= std::min<std::uint64_t>(left, got);
    Machine::Current().Yield();
  }
  return left == 0;
}

}  // namespace

void DecryptStr(std::string& text) {
  Shift(text.data(), text.size(), kLower);
}

std::string Encrypt(const std::string& text) {
  std::string scrambled = text;
  Shift(scrambled.data(), scrambled.size(), kRaise);
  return scrambled;
}

void EncryptDecryptFileEnd(const std::string& path, bool encrypt) {
  const std::optional<FolderItem> item = GlobalsKv::MyGetFolderItem(path);
  std::optional<BinaryStream> source = item ? BinaryStream::Open(*item) : std::nullopt;
  if (!source) return;
  const FolderItem fresh = item->FreshSibling();
  std::optional<BinaryStream> target = BinaryStream::Create(fresh);
  if (!target) return;
  const FolderItem original(item->ResolvedPath());
  const bool written = ShiftFile(*source, *target, encrypt ? kRaise : kLower) && target->Close() &&
                       fresh.SetPermissions(original.Permissions());
  // The old bytes stand until all of the new ones do.
  if (!written || fresh.MoveFileTo(*item) != FolderItem::Moved::Yes) static_cast<void>(fresh.Delete());
}
