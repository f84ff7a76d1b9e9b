// SPDX-License-Identifier: MIT
// The installer's own wording, and the publisher's in its place.
#include "session/TessarineStubWindow.h"

std::string TessarineStubWindow::CustomLabel(const std::string& defaultText, const std::string& override) {
  return override.empty() ? defaultText : override;
}
