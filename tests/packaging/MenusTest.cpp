// The menus of the Workbench and what its help pages say of them.

#include <gtest/gtest.h>

#include <QFile>
#include <QMenuBar>
#include <QRegularExpression>
#include <algorithm>

#include "workbench/desktop/Workbench.h"

namespace {

using kvx::desktop::Settings;
using kvx::desktop::Workbench;

QString BinFolder() {
    return QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR"));
}

// "View > Appearance" and all that is below it. What has no text is a separator.
QStringList Paths(const QList<QAction*>& actions, const QString& above = {}) {
    QStringList paths;
    for (const QAction* action : actions) {
        if (action->text().isEmpty()) continue;
        const QString path = above + QString(action->text()).remove('&');
        paths += path;
        if (action->menu()) paths += Paths(action->menu()->actions(), path + " > ");
    }
    return paths;
}

// The commands of the main window that the pages have a row for: they begin with its menu.
QStringList Described(const QStringList& menus) {
    QStringList described;
    static const QRegularExpression row("<tr><td>([^<]+ &gt; [^<]+)</td>");
    for (const char* name : {"index", "workspaces"}) {
        QFile page(BinFolder() + "/../share/kvxostrace/help/" + name + ".html");
        EXPECT_TRUE(page.open(QIODevice::ReadOnly)) << name;
        auto found = row.globalMatch(QString::fromUtf8(page.readAll()));
        while (found.hasNext()) described += found.next().captured(1).replace("&gt;", ">");
    }
    EXPECT_TRUE(std::ranges::all_of(
        described, [&](const QString& path) { return menus.contains(path.section(" > ", 0, 0)); }));
    return described;
}

TEST(Menus, TheHelpDescribesEveryCommandAndNoOther) {
    Settings settings;
    Workbench workbench(settings);
    ASSERT_EQ(workbench.Start(BinFolder()), "");
    const QStringList paths = Paths(workbench.Window().menuBar()->actions());
    const QStringList described = Described(paths);
    EXPECT_GT(described.size(), 15);
    for (const QString& path : described) {
        EXPECT_TRUE(paths.contains(path)) << "there is no " << path.toStdString();
    }
    for (const QString& path : paths) {
        const bool isPopup = std::ranges::any_of(
            paths, [&](const QString& other) { return other.startsWith(path + " > "); });
        const bool isTold = std::ranges::any_of(described, [&](const QString& told) {
            return told == path || path.startsWith(told + " > ");
        });
        EXPECT_TRUE(isTold || isPopup || !path.contains(" > "))
            << "the help says nothing of " << path.toStdString();
    }
}

}  // namespace
