#pragma once
// The help pages in a window of the program's own, where there is no browser to show them.

#include <QDialog>
#include <QTextBrowser>

namespace kvx::desktop {

class HelpWindow final : public QDialog {
  public:
    explicit HelpWindow(QWidget* parent);
    // A page of the help; links lead to the others.
    void ShowPage(const QString& path);

  private:
    QTextBrowser* page_;
};

}  // namespace kvx::desktop
