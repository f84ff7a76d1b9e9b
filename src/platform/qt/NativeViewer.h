// SPDX-License-Identifier: MIT
// A page that comes from memory and fetches nothing.
#pragma once

#include <QTextBrowser>

class NativeViewer : public QTextBrowser {
  Q_OBJECT

 public:
  NativeViewer();
  void ShowPage(const QString& html);

 protected:
  /// Nothing but "data:" addresses is answered: no file and no server is asked.
  QVariant loadResource(int type, const QUrl& name) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// To a place of the page, or by the browser to an address, as the page writes it.
  void Follow();

  QString fLink;  // the one that was pressed last
};
