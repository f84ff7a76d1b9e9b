// SPDX-License-Identifier: MIT
// The folder dialog: what its line holds is what the user gets. Nothing is deleted, renamed or moved by it.
#pragma once

#include <QFileDialog>

class QLineEdit;

class FolderDialog : public QFileDialog {
  Q_OBJECT

 public:
  FolderDialog(QWidget* parent, const QString& title);
  /// An absolute path, which only the root's ends with a separator; empty until the dialog has been accepted.
  QString Chosen() const { return fChosen; }

 protected:
  /// An empty line stands for the folder that is shown. What leads to no folder is told, and the dialog
  /// stays.
  void accept() override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FollowHighlight();
  QString Meant(const QString& typed) const;

  QLineEdit* fLine;
  bool fFromList = false;  // the line holds the name of the highlighted folder
  QString fChosen;
};
