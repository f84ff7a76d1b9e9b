// SPDX-License-Identifier: MIT
// A radio button or check box that makes its caption fit the design's place.
#pragma once

#include <QAbstractButton>
#include <QPainter>
#include <QStyleOptionButton>

#include "platform/qt/Verbatim.h"

/// `Button` is QRadioButton or QCheckBox.
template <class Button>
class NativeToggle : public Button {
 public:
  void ShowCaption(const QString& caption) {
    fCaption = caption;
    this->setText(WithoutMnemonic(caption));
    this->setAccessibleName(caption);
    fFitted = false;
    this->update();
  }
  void ShowTag(const QString& tag) {
    fTag = tag;
    this->setAccessibleDescription(tag);
    fFitted = false;
    this->update();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStyleOptionButton option;
    this->initStyleOption(&option);
    Fit(option);
    option.text = WithoutMnemonic(fShown.shown);
    option.fontMetrics = QFontMetrics(fShown.font);
    QPainter painter(this);
    painter.setFont(fShown.font);
    this->style()->drawControl(kElement, &option, &painter, this);
  }

  void resizeEvent(QResizeEvent* event) override {
    Button::resizeEvent(event);
    fFitted = false;
  }

 private:
  static constexpr bool kRadio = requires(Button button) { button.isTristate(); }
  == false;
  static constexpr QStyle::ControlElement kElement = kRadio ? QStyle::CE_RadioButton : QStyle::CE_CheckBox;
  static constexpr QStyle::SubElement kContents =
      kRadio ? QStyle::SE_RadioButtonContents : QStyle::SE_CheckBoxContents;

  void Fit(const QStyleOptionButton& option) {
    if (fFitted) return;
    fFitted = true;
    const QRect room = this->style()->subElementRect(kContents, &option, this);
    fShown = FitText(fCaption, this->font(), QSizeF(room.width(), this->height()), Wrap::OneLine);
    const QString whole = fShown.cut ? fCaption : QString();
    this->setToolTip(PlainToolTip(whole.isEmpty() || fTag.isEmpty() ? whole + fTag : whole + '\n' + fTag));
  }

  QString fCaption;
  QString fTag;
  FittedText fShown;
  bool fFitted = false;
};
