#pragma once
// The help pages of the Workbench, which open in the user's browser.

#include <QString>

namespace kvx::desktop {

class HelpBook {
  public:
    explicit HelpBook(const QString& folder = Folder()) : folder_(folder) {}

    // Where the pages stand: share/kvxostrace/help beside the folder of the program.
    static QString Folder();

    // The page of a help key such as "OSTrace.chm>F1HelpWindow": the book before ".chm" names it.
    // An empty key, or one whose book has no page, gives the index. Empty when there is no index.
    QString PagePath(const QString& helpKey) const;

    // False when the page is missing or nothing opens it.
    bool Open(const QString& helpKey) const;

  private:
    QString folder_;
};

}  // namespace kvx::desktop
