// SPDX-License-Identifier: MIT
// The toolkit would highlight in its list what is being typed, and take all that is highlighted there. On its
// way it comes to highlight the folder that is shown as well, out of sight, and answers with that one: an
// installation in it would be replaced. Here the line decides, and the list only writes into it.
#include "platform/qt/FolderDialog.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QShortcut>

#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/qt/QuitKey.h"

namespace {

/// By menu, keys and mouse the toolkit's list deletes, renames and moves what is in it. Here a folder is only
/// chosen; a new one can be made, and is named then.
void LeaveFoldersAlone(QAbstractItemView& view) {
  qDeleteAll(view.findChildren<QShortcut*>());  // for the delete key
  view.setEditTriggers(QAbstractItemView::NoEditTriggers);
  view.setDragDropMode(QAbstractItemView::NoDragDrop);
  view.setContextMenuPolicy(Qt::ActionsContextMenu);
  view.addAction(view.window()->findChild<QAction*>("qt_show_hidden_action"));
}

}  // namespace

FolderDialog::FolderDialog(QWidget* parent, const QString& title) : QFileDialog(parent, title) {
  setObjectName("SelectFolderDialog");
  setOption(DontUseNativeDialog);
  setFileMode(Directory);
  setOption(ShowDirsOnly);
  fLine = findChild<QLineEdit*>("fileNameEdit");
  disconnect(fLine, &QLineEdit::textChanged, this, nullptr);
  QItemSelectionModel* highlight = findChild<QListView*>("listView")->selectionModel();
  connect(highlight, &QItemSelectionModel::selectionChanged, this, &FolderDialog::FollowHighlight);
  connect(fLine, &QLineEdit::textEdited, highlight, [this, highlight] {
    fFromList = false;
    highlight->clearSelection();
  });
  // The name of a folder highlighted elsewhere says nothing here.
  connect(findChild<QFileSystemModel*>(), &QFileSystemModel::rootPathChanged, this, [this] {
    if (fFromList) fLine->clear();
  });
  for (auto* view : {findChild<QAbstractItemView*>("listView"), findChild<QAbstractItemView*>("treeView")})
    LeaveFoldersAlone(*view);
  // A path that leads nowhere is told once it is accepted; the button is never off.
  findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open)->installEventFilter(this);
}

bool FolderDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::EnabledChange) qobject_cast<QPushButton*>(watched)->setEnabled(true);
  return QFileDialog::eventFilter(watched, event);
}

void FolderDialog::FollowHighlight() {
  const QModelIndexList rows = findChild<QListView*>("listView")->selectionModel()->selectedRows();
  if (rows.isEmpty()) return;
  fFromList = true;
  fLine->setText(rows.first().data(QFileSystemModel::FileNameRole).toString());
}

/// Empty for a path that climbs out of a folder that isn't there.
QString FolderDialog::Meant(const QString& typed) const {
  if (typed.isEmpty()) return directory().absolutePath();
  QString path = directory().absoluteFilePath(typed);
  if ((typed == "~" || typed.startsWith("~/")) && !QFileInfo::exists(path))
    path = QString::fromStdString(Machine::Current().HomeFolder()) + typed.mid(1);
  // What ".." leads to behind a link only the file system knows.
  return path.split('/').contains("..") ? QFileInfo(path).canonicalFilePath() : QDir::cleanPath(path);
}

void FolderDialog::keyPressEvent(QKeyEvent* event) {
  if (!QuitsBy(*event)) QFileDialog::keyPressEvent(event);
}

void FolderDialog::accept() {
  const QString path = Meant(fLine->text());
  if (QFileInfo(path).isDir()) {
    fChosen = path;
    done(Accepted);
    return;
  }
  MessageBox("There is no folder \"" + (path.isEmpty() ? fLine->text() : path).toStdString() + "\".");
  fLine->setFocus();
  fLine->selectAll();
}
