// SPDX-License-Identifier: MIT
// Where the keys of a JSON text stand: what the parser reads keeps no places.
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace pack {

/// Both from 1; columns count characters.
struct Place {
  std::size_t line = 1;
  std::size_t column = 1;
  auto operator<=>(const Place&) const = default;
};

/// Of the byte at `offset`.
Place PlaceAt(std::string_view text, std::size_t offset);

/// "FILE:LINE:COLUMN: sentence", as editors know it.
std::string Located(const std::string& file, const Place& place, const std::string& sentence);

class JsonPlaces {
 public:
  /// `text` is valid JSON; comments are passed over.
  explicit JsonPlaces(const std::string& text);

  /// Of the member or list entry at a path such as "choices[0].name"; of what would hold it where there is
  /// none.
  Place Of(std::string path) const;
  /// The paths that stand twice in one object.
  const std::vector<std::string>& Twins() const { return fTwins; }

 private:
  void Skip();
  void Value(const std::string& path);
  void Members(const std::string& path);
  void Entries(const std::string& path);
  std::string_view String();

  const std::string& fText;
  std::size_t fAt = 0;
  std::map<std::string, Place> fPlaces;
  std::vector<std::string> fTwins;
};

}  // namespace pack
