// SPDX-License-Identifier: MIT
#include "platform/posix/Settings.h"

#include <fstream>
#include <sstream>

namespace {

std::string Unquoted(std::string value) {
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
    return value.substr(1, value.size() - 2);
  return value;
}

}  // namespace

std::string FileText(const std::string& path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string Setting(const std::string& text, const std::string& name) {
  std::istringstream lines(text);
  std::string value;
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(name + "=")) value = Unquoted(line.substr(name.size() + 1));
  return value;
}
