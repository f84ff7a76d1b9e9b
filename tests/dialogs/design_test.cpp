// SPDX-License-Identifier: MIT
// Every window as it was designed: each control's place, text and part, what stays with which edge, and
// which button answers to which key.
#include "dialogs/LicenseAgreementWindow.h"
#include "dialogs/Posing.h"
#include "dialogs/TChoiceDlg.h"
#include "dialogs/TGatekeeperTranslocationDlg.h"
#include "dialogs/THtmlNoteDlg.h"
#include "dialogs/TOptionsDlg.h"
#include "dialogs/YesNoDialog.h"
#include "platform/qt/FittedText.h"
#include "platform/qt/NativeWindow.h"
#include "session/TessarineStubWindow.h"
#include "support/ModalScript.h"
#include "support/TestMachine.h"
#include "util/GlobalsKv.h"

using Lines = std::vector<std::string>;

static std::string Numbers(const QRect& r) {
  return QString("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).toStdString();
}

static std::string DescribeControl(const QWidget& control) {
  std::string line = control.objectName().toStdString() + ": " + Numbers(control.geometry());
  const auto* label = qobject_cast<const QLabel*>(&control);
  const auto* button = qobject_cast<const QPushButton*>(&control);
  const auto* area = qobject_cast<const QPlainTextEdit*>(&control);
  if (label != nullptr && control.inherits("NativeLabel"))
    line += label->alignment().testFlag(Qt::AlignTop) ? " lines" : " line";
  if (label != nullptr && label->alignment().testFlag(Qt::AlignHCenter)) line += " centred";
  if (label != nullptr && label->font().underline()) line += " underlined";
  if (label != nullptr && label->font().pointSize() == 9) line += " small";
  if (button != nullptr && button->isDefault()) line += " default";
  if (area != nullptr && area->isReadOnly()) line += " read-only";
  if (control.isHidden()) line += " hidden";
  QString text = control.property("text").toString() + control.property("placeholderText").toString();
  if (control.inherits("QProgressBar")) text.clear();
  return line + (text.isEmpty() ? "" : " \"" + text.left(24).toStdString() + "\"");
}

/// The frame, a line for each control, and, where the user can resize it, how each follows.
static Lines Describe(QWidget& window) {
  EXPECT_FALSE(window.windowFlags() & (Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint |
                                       Qt::WindowFullscreenButtonHint | Qt::WindowSystemMenuHint));
  const QSize size = window.size(), least = window.minimumSize();
  const bool fixed = least == window.maximumSize();
  Lines lines = {window.windowTitle().toStdString() + " " + Numbers(window.rect()) +
                 (fixed ? "" : " from " + Numbers(QRect(QPoint(), least)))};
  for (const QWidget* control :
       window.findChildren<QWidget*>(QRegularExpression("."), Qt::FindDirectChildrenOnly)) {
    lines.push_back(DescribeControl(*control));
    const QRect before = control->geometry();
    window.resize(size + QSize(100, 50));
    const QRect then = control->geometry();
    if (then == before.adjusted(0, 0, 100, 50)) lines.back() += ", grows";
    if (then == before.translated(100, 50)) lines.back() += ", moves";
    window.resize(size);
  }
  return lines;
}
static Lines Describe(Window& window) {
  window.Show();
  QCoreApplication::sendPostedEvents();
  const Lines lines = Describe(window.Native());
  window.Hide();
  return lines;
}

/// What Return and what Escape press, "-" for nothing, when the dialog has just come up.
template <class Dialog>
static std::string AnswersOf() {
  std::string answers;
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    Dialog dialog;
    QTimer::singleShot(0, [&] {
      QWidget& native = dialog.Native();
      EXPECT_TRUE(QTest::qWaitForWindowExposed(&native));
      native.repaint();
      // A question that deletes takes no answer before the user can have read it.
      dynamic_cast<TestMachine&>(Machine::Current()).fMilliseconds += 1000;
      QTest::keyClick(native.focusWidget() == nullptr ? &native : native.focusWidget(), key);
      if (native.isVisible()) answers += "-";
      dialog.Hide();
    });
    dialog.ShowModal();
    answers += dialog.fBtnName + " ";
  }
  return answers;
}

static Lines ItemLines(const std::string& title, const std::string& control, bool buttonsFirst) {
  const Lines buttons = {"QuitBtn: 148 343 80 20 \"Quit\"",
                         "ContinueBtn: 240 343 80 20 default \"Continue\""};
  Lines lines = {title + " 0 0 340 383"};
  if (buttonsFirst) lines.insert(lines.end(), buttons.begin(), buttons.end());
  for (int i = 0; i < 10; ++i)
    lines.push_back(control + std::to_string(i) + ": 20 " + std::to_string(14 + 32 * i) +
                    " 300 20 \"Untitled\"");
  if (!buttonsFirst) lines.insert(lines.end(), buttons.begin(), buttons.end());
  return lines;
}

class Designs : public MachineTest {
 protected:
  Designs() {
    GlobalsKv::KvAppInit();
    QFont font = QApplication::font();
    font.setPointSize(10);  // small letters are told from it
    QApplication::setFont(font);
  }
};

TEST_F(Designs, EveryWindowStandsAsDrawn) {
  TessarineStubWindow window;
  EXPECT_EQ(Describe(window), (Lines{"Install 0 0 396 238", "QuitBtn: 204 198 80 20 \"Quit\"",
                                     "InstallBtn: 296 198 80 20 default \"Install\"",
                                     "MessageLabel: 96 14 204 77 lines", "ProgressBar1: 37 198 155 20 hidden",
                                     "URLLabel: 20 104 356 20 line centred underlined hidden \"URL\"",
                                     "PictureCanvas: 20 12 64 64 hidden", "LogoCanvas: 312 12 64 64 hidden",
                                     "CopyrightLabel: 20 226 356 12 line small hidden",
                                     "InfoBtn: 20 198 80 20 hidden \"Info\""}));
  YesNoDialog question;
  EXPECT_EQ(Describe(question), (Lines{"Confirmation 0 0 452 155", "OKBtn: 352 115 80 20 default \"OK\"",
                                       "CancelBtn: 260 115 80 20 \"Cancel\"",
                                       "ConfirmLabel1: 20 14 412 20 line \"Destination folder alrea\"",
                                       "ConfirmLabel2: 20 37 412 20 line \"Delete folder to continu\"",
                                       "ConfirmLabel3: 20 61 412 42 lines \"Target Folder Path\""}));
  LicenseAgreementWindow agreement;
  EXPECT_EQ(Describe(agreement),
            (Lines{"License Agreement 0 0 690 410 from 0 0 690 410",
                   "AgreementEdit: 20 14 650 344 read-only, grows", "QuitBtn: 498 370 80 20 \"Quit\", moves",
                   "OKBtn: 590 370 80 20 default \"I Agree\", moves"}));
  THtmlNoteDlg page;
  EXPECT_EQ(Describe(page), (Lines{"  0 0 762 530 from 0 0 64 64", "MyHTMLViewer: 0 0 762 479, grows",
                                   "ContinueBtn: 642 491 100 34 default \"Continue\", moves",
                                   "QuitBtn: 530 491 100 34 \"Quit\", moves"}));
  TChoiceDlg choice;
  EXPECT_EQ(Describe(choice), ItemLines("Pick One Choice", "ChoiceRadio", false));
  TOptionsDlg options;
  EXPECT_EQ(Describe(options), ItemLines("Select Options", "OptionCheckBox", true));
  TGatekeeperTranslocationDlg moved;
  EXPECT_EQ(
      Describe(moved),
      (Lines{"Gatekeeper Translocation Issue 0 0 600 237",
             "Label1: 20 19 560 127 lines \"Gatekeeper is blocking t\"",
             "Label2: 20 164 100 20 line \"Application Path:\"",
             "Label3: 20 196 100 20 line \"Admin Password:\"",
             "AppPathEdit: 139 163 441 22 \"/Applications/AppFolder/\"", "AdminPasswordEdit: 139 195 147 22",
             "CancelBtn: 408 196 80 20 \"Cancel\"", "OKBtn: 500 196 80 20 default \"OK\""}));
  EXPECT_EQ(AnswersOf<YesNoDialog>(), "OKBtn - ");
  EXPECT_EQ(AnswersOf<LicenseAgreementWindow>(), "OKBtn - ");
  EXPECT_EQ(AnswersOf<THtmlNoteDlg>(), "ContinueBtn QuitBtn ");
  EXPECT_EQ(AnswersOf<TChoiceDlg>(), "OKBtn - ");
  EXPECT_EQ(AnswersOf<TOptionsDlg>(), "OKBtn - ");
  EXPECT_EQ(AnswersOf<TGatekeeperTranslocationDlg>(), "OKBtn CancelBtn ");
}

TEST_F(Designs, AMessageIsSizedByItsLengthAndItsQuestionAnsweredByKeys) {
  const std::tuple<std::string, int, int> rows[] = {
      {std::string(38, 'x') + "\u00E9", 322, 93}, {"two\nlines", 512, 193},
      {std::string(40, 'x'), 512, 193},           {std::string(199, 'x'), 512, 193},
      {std::string(200, 'x'), 572, 243},          {std::string(400, 'x'), 572, 243},
      {std::string(401, 'x'), 572, 343},          {std::string(600, 'x'), 572, 343},
      {std::string(601, 'x'), 572, 443}};
  ModalScript script;
  for (const auto& [text, width, height] : rows) {
    const auto button = [&, top = height - 40](int left) { return Numbers({left, top, 80, 20}); };
    const Lines sized = {"Confirmation " + Numbers({0, 0, width, height}),
                         "MessageText: " + Numbers({20, 14, width - 40, height - 66}) + " read-only",
                         "Btn1: " + button(width - 284) + " hidden \"Btn1\"",
                         "Btn2: " + button(width - 192) + " default \"Yes\"",
                         "Btn3: " + button(width - 100) + " \"No\""};
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
      script.Expect({.window = "MessageText", .key = key, .look = [&](QWidget& window) {
                       EXPECT_EQ(Describe(window), sized);
                       EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText().toStdString(), text);
                     }});
      EXPECT_EQ(GlobalsKv::YesNoDlg(text), key == Qt::Key_Return) << text;
    }
  }
  script.Expect({.window = "Information Message", .key = Qt::Key_Return, .look = [](QWidget& window) {
                   EXPECT_EQ(Describe(window).back(), "Btn3: 472 203 80 20 default \"OK\"");
                   EXPECT_FALSE(window.findChild<QWidget*>("Btn2")->isVisible());
                 }});
  GlobalsKv::KvPoseInfoDialog("<b>read</b>");
  GlobalsKv::DropSharedMessage();
  EXPECT_EQ(script.TakeProblems(), "");
}

TEST(FittedTexts, ShrinkBeforeTheyAreCut) {
  const QFont font = QApplication::font();
  const auto fit = [&font](const QString& text) {
    return FitText(text, font, {QFontMetricsF(font).horizontalAdvance("abcdefghij"), 30}, Wrap::OneLine);
  };
  EXPECT_EQ(fit("abcdefghi").font, font);
  const FittedText smaller = fit("abcdefghijk");
  EXPECT_TRUE(smaller.shown == "abcdefghijk" && !smaller.cut);
  EXPECT_LT(QFontInfo(smaller.font).pixelSize(), QFontInfo(font).pixelSize());
  const QString cut = fit(QString(100, 'm')).shown, path = fit("/" + QString(100, 'm') + "z").shown;
  EXPECT_TRUE(cut.startsWith("m") && cut.endsWith("…"));
  EXPECT_TRUE(path.startsWith("/m") && path.endsWith("mz") && path.contains("…"));
  // Far too long, though the first of it would fit; what is one character to the reader stays one.
  const QString zeros(2500, QChar(0x200B)), face = QString::fromUtf8("\U0001F600\u0301");
  EXPECT_TRUE(fit(zeros).cut && fit(zeros).shown.endsWith("…"));
  for (const QString& faces : {face.repeated(20), "a" + face.repeated(900), "/" + face.repeated(900)})
    EXPECT_EQ(fit(faces).shown.count(face) * face.size(), fit(faces).shown.size() - 1 - (faces[0] < 'b'));
  QTextDocument tip;
  const QString text = "<b>&\r\na  b\r " + QString(2500, 'x') + " c";
  tip.setHtml(PlainToolTip(text));
  EXPECT_EQ(tip.toPlainText().remove(QChar(0x200B)), QString(text).replace("\r\n", "\n").replace('\r', '\n'));
  tip.setTextWidth(700);
  EXPECT_LE(tip.size().width(), 700) << "it may be wrapped";
}
