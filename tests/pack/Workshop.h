// SPDX-License-Identifier: MIT
// A fresh folder with a small payload and a make-believe runtime, in which packages are made.
#pragma once

#include <gtest/gtest.h>
#include <png.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "pack/Bundle.h"
#include "pack/Description.h"
#include "pack/Files.h"
#include "pack/Refusal.h"

namespace pack {

namespace fs = std::filesystem;
using nlohmann::json;

class Workshop : public ::testing::Test {
 protected:
  Workshop() {
    std::string name = fs::temp_directory_path() / "pack_test.XXXXXX";
    root = ::mkdtemp(name.data());
    fs::create_directories(root / "out");
    Write("runtime/TessarineStub", "the runtime");
    Write("runtime/ditto", "the expander");
    fs::permissions(root / "runtime/TessarineStub", fs::perms::owner_exec, fs::perm_options::add);
    Write("payload/Read Me.txt", "Hello.\n");
  }
  ~Workshop() override { RemoveTree(root); }

  void Write(const std::string& name, const std::string& bytes) const {
    fs::create_directories((root / name).parent_path());
    WriteFile(root / name, bytes);
  }

  std::string Read(const fs::path& name) const {
    std::ifstream in(root / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  void WritePng(const std::string& name, unsigned width, unsigned height, std::vector<png_byte> rgba) const {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGBA;
    rgba.resize(PNG_IMAGE_SIZE(image));
    ASSERT_NE(0, png_image_write_to_file(&image, (root / name).c_str(), 0, rgba.data(), 0, nullptr));
  }

  // The least that a description says, with `more` merged in; a null in `more` takes a key away.
  json Describe(const json& more = json::object()) const {
    json description = {{"targetFolder", "Lamp"}, {"payload", {{"folder", "payload"}}}, {"timeStamp", "T"}};
    description.merge_patch(more);
    return description;
  }

  // Makes out/Setup.app. The sentence of the refusal, empty if there was none.
  std::string Pack(const json& description) const {
    Write("description.json", description.dump());
    try {
      MakeBundle(ReadDescription(root / "description.json"), root / "out/Setup.app", root / "runtime");
    } catch (const Refusal& refusal) {
      return refusal.what();
    }
    return "";
  }

  // A file of the package.
  std::string Resource(const std::string& name) const {
    return Read(fs::path("out/Setup.app/Contents/Resources") / name);
  }

  std::vector<std::string> Names(const fs::path& folder) const {
    std::vector<std::string> names;
    for (const auto& item : fs::directory_iterator(root / folder)) names.push_back(item.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }

  static std::string Unscrambled(std::string bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(bytes[i] - (i % 2 ? 1 : 0));
    return bytes;
  }

  // Field `number`, counted from 1, of a record.
  static std::string Field(std::string record, const std::string& separator, int number) {
    while (--number > 0) record.erase(0, record.find(separator) + separator.size());
    return record.substr(0, record.find(separator));
  }

  fs::path root;
};

}  // namespace pack
