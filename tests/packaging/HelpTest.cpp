// The help book: its pages are found, know every command and every key, and open.

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "host/CommandIds.h"
#include "platform/base/Module.h"
#include "platform/base/Resources.h"
#include "traceview/model/KeyLines.h"
#include "workbench/desktop/window/ApplicationIcon.h"
#include "workbench/desktop/window/HelpBook.h"

namespace {

using kvx::desktop::HelpBook;

QString BuiltHelp() {
    return QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR")) + "/../share/kvxostrace/help";
}

QString Read(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

// "Trace Range > Full" for every command below the items.
QStringList Commands(std::span<const MenuItemResource> items, const QString& above = {}) {
    QStringList found;
    for (const MenuItemResource& item : items) {
        if (!item.text) continue;
        const QString text = above + QString(item.text).remove('&').section('\t', 0, 0);
        if (item.childCount > 0) {
            found += Commands({item.children, item.childCount}, text + " > ");
        } else {
            found += text;
        }
    }
    return found;
}

// The texts of the resource library, while it lives.
class Resources {
  public:
    Resources() {
        const std::string bin = qgetenv("KVX_BIN_DIR").toStdString();
        AfxSetResourceHandle(LoadLibrary(bin + "/libKvxOSTraceExtRes.so"));
    }
    ~Resources() { AfxSetResourceHandle(nullptr); }
};

struct WindowPage {
    UINT menu;
    const char* helpKey;
    qsizetype leastCommands;
};

TEST(Help, ThePageOfAWindowHasARowForEveryCommandOfItsMenu) {
    const Resources resources;
    const HelpBook book(nullptr, BuiltHelp());
    for (const WindowPage& window :
         {WindowPage{kvx::ids::kMenuOSTrace, "OSTrace.chm>F1HelpWindow", 20},
          WindowPage{kvx::ids::kMenuOSAnalyze, "OSAnalyze.chm>F1HelpWindow", 9}}) {
        // The menu's one item is the popup that carries the window's name.
        const auto menu = FindMenu(window.menu);
        ASSERT_EQ(menu.size(), 1u);
        const QStringList commands = Commands({menu[0].children, menu[0].childCount});
        EXPECT_GE(commands.size(), window.leastCommands);
        const QString page = Read(book.PagePath(window.helpKey));
        for (const QString& command : commands) {
            EXPECT_TRUE(page.contains("<tr><td>" + command.toHtmlEscaped() + "</td><td>"))
                << window.helpKey << " does not describe " << command.toStdString();
        }
    }
}

TEST(Help, TheKeySheetHasEveryKey) {
    const Resources resources;
    const QString page = Read(BuiltHelp() + "/keys.html");
    std::vector<kvx::KeyLine> lines = kvx::TraceKeyLines();
    for (const auto& line : kvx::AcceleratorLines(kvx::ids::kMenuOSAnalyze)) lines.push_back(line);
    EXPECT_GT(lines.size(), 30u);
    for (const kvx::KeyLine& line : lines) {
        const QString row = "<kbd>" + QString::fromStdString(line.keyText).toHtmlEscaped() +
                            "</kbd></td><td>" +
                            QString::fromStdString(line.meaning).toHtmlEscaped();
        EXPECT_TRUE(page.contains(row)) << row.toStdString();
    }
}

TEST(Help, AKeyNamesItsPageAndEveryOtherTheIndex) {
    const QTemporaryDir folder;
    for (const char* name : {"index", "ostrace", "keys"}) {
        QFile page(folder.filePath(QString(name) + ".html"));
        ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    }
    const HelpBook book(nullptr, folder.path());
    EXPECT_EQ(book.PagePath("OSTrace.chm>F1HelpWindow"), folder.filePath("ostrace.html"));
    EXPECT_EQ(book.PagePath("Keys.chm"), folder.filePath("keys.html"));
    for (const char* key : {"", "OSAnalyze.chm>F1HelpWindow", "nonsense", ".chm>F1HelpWindow",
                            "../keys.chm", "/etc/passwd.chm>x"}) {
        EXPECT_EQ(book.PagePath(key), folder.filePath("index.html")) << key;
    }
    EXPECT_EQ(HelpBook(nullptr, folder.filePath("absent")).PagePath("OSTrace.chm>F1HelpWindow"),
              "");
    EXPECT_FALSE(HelpBook(nullptr, folder.filePath("absent")).Open(""));
}

// A program that stands in for the user's browser: it notes the page and ends with the status.
QString Opener(const QTemporaryDir& folder, int status) {
    QFile script(folder.filePath("opener"));
    EXPECT_TRUE(script.open(QIODevice::WriteOnly));
    script.write(QStringLiteral("#!/bin/sh\necho \"$1\" > %1\nexit %2\n")
                     .arg(folder.filePath("opened"))
                     .arg(status)
                     .toUtf8());
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return script.fileName();
}

TEST(Help, APageOpensInTheBrowser) {
    const QTemporaryDir folder;
    HelpBook book(nullptr, BuiltHelp(), Opener(folder, 0));
    EXPECT_TRUE(book.Open("OSAnalyze.chm>F1HelpWindow"));
    const auto opened = [&] { return QFileInfo(folder.filePath("opened")).size() > 0; };
    ASSERT_TRUE(QTest::qWaitFor(opened, 20000));
    EXPECT_TRUE(Read(folder.filePath("opened")).trimmed().endsWith("/osanalyze.html"));
    QTest::qWait(200);
    EXPECT_EQ(book.Window(), nullptr);
}

TEST(Help, WithoutABrowserThePageOpensInAWindow) {
    const QTemporaryDir folder;
    for (const QString& opener : {Opener(folder, 3), folder.filePath("absent")}) {
        HelpBook book(nullptr, BuiltHelp(), opener);
        EXPECT_TRUE(book.Open("OSAnalyze.chm>F1HelpWindow"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return book.Window() != nullptr; }, 20000));
        auto* page = book.Window()->findChild<QTextBrowser*>();
        EXPECT_TRUE(book.Window()->isVisible());
        EXPECT_TRUE(page->toPlainText().contains("OS Analyze"));
        // Its links lead on, and back.
        page->setSource(QUrl("keys.html"));
        EXPECT_TRUE(page->toPlainText().contains("Ctrl+F"));
        page->backward();
        EXPECT_TRUE(page->source().path().endsWith("osanalyze.html"));
        delete book.Window();
    }
}

TEST(Icon, IsDrawnInEverySizeThatADesktopAsksFor) {
    for (const int size : {16, 24, 48, 256}) {
        const QImage picture = kvx::desktop::ApplicationIcon().pixmap(size).toImage();
        ASSERT_EQ(picture.size(), QSize(size, size)) << "is the package libqt6svg6 installed?";
        EXPECT_EQ(qAlpha(picture.pixel(0, 0)) < 128, true) << "round corners";
        EXPECT_GT(qGreen(picture.pixel(size * 4 / 16, size * 4 / 16)), 180) << "a green bar";
    }
}

}  // namespace
