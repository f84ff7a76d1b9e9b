// SPDX-License-Identifier: MIT
#include "package/Scrambling.h"

#include <vector>

#include "platform/BinaryStream.h"
#include "platform/Machine.h"
#include "util/GlobalsKv.h"

namespace {

/// Even, so that each piece begins with an unchanged byte as the file does.
constexpr std::size_t kPiece = 256U << 10;

void Shift(char* bytes, std::size_t count, unsigned char by) {
  for (std::size_t i = 1; i < count; i += 2)
    bytes[i] = static_cast<char>(static_cast<unsigned char>(bytes[i]) + by);
}

constexpr unsigned char kRaise = 1;
constexpr unsigned char kLower = 255;  // minus one, modulo 256

bool ShiftFile(BinaryStream& source, BinaryStream& target, unsigned char by) {
  std::vector<char> piece(kPiece);
  const std::uint64_t length = source.Length();
  std::uint64_t done = 0;
  while (const std::size_t got = source.Read(piece.data(), piece.size())) {
    Shift(piece.data(), got, by);
    if (!target.Write(piece.data(), got)) return false;
    done += got;
    Machine::Current().Yield();
  }
  return done == length;
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
  if (!item) return;
  std::optional<BinaryStream> source = BinaryStream::Open(*item);
  if (!source) return;
  // The new file grows beside the old one: nothing is lost when the disk fills up on the way.
  const FolderItem fresh(item->NativePath() + ".part");
  std::optional<BinaryStream> target = BinaryStream::Create(fresh);
  if (!target) return;
  const bool written = ShiftFile(*source, *target, encrypt ? kRaise : kLower) && target->Close();
  if (!written || !fresh.MoveFileTo(*item)) static_cast<void>(fresh.Delete());
}
