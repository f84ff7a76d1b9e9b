// SPDX-License-Identifier: MIT
#include "platform/Normalization.h"

#include <QString>

std::string ComposedForm(const std::string& text) {
  return QString::fromStdString(text).normalized(QString::NormalizationForm_C).toStdString();
}
