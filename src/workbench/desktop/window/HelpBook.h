#pragma once
// The help pages of the Workbench. They open in the user's browser, or, where none can be started,
// in a window of the program's own.

#include <QPointer>
#include <QString>
#include <memory>

#include "workbench/desktop/window/HelpWindow.h"

namespace kvx::desktop {

class HelpBook {
  public:
    // parent: of the window. opener: a program that opens a file given to it in the browser.
    explicit HelpBook(QWidget* parent = nullptr, const QString& folder = Folder(),
                      const QString& opener = "xdg-open")
        : parent_(parent), folder_(folder), opener_(opener) {}

    // Where the pages stand: share/kvxostrace/help beside the folder of the program.
    static QString Folder();

    // The page of a help key such as "OSTrace.chm>F1HelpWindow": the book before ".chm" names it.
    // An empty key, or one whose book has no page, gives the index. Empty when there is no index.
    QString PagePath(const QString& helpKey) const;

    // False when the page is missing. An opener that fails does so within seconds: the window of
    // our own comes then.
    bool Open(const QString& helpKey);
    // Null while it was not needed.
    HelpWindow* Window() const { return window_; }

  private:
    void ShowInWindow(const QString& path);

    QPointer<QWidget> parent_;
    QString folder_;
    QString opener_;
    QPointer<HelpWindow> window_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace kvx::desktop
