#include "workbench/desktop/window/HelpBook.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <algorithm>

namespace kvx::desktop {
namespace {

constexpr char kIndex[] = "index";
constexpr qint64 kAtOnce = 10'000;  // milliseconds

QElapsedTimer Started() {
    QElapsedTimer timer;
    timer.start();
    return timer;
}

// "ostrace"; empty when the key names no book.
QString BookOf(const QString& helpKey) {
    const QString book = helpKey.section(".chm", 0, 0, QString::SectionCaseInsensitiveSeps);
    const bool isName = std::ranges::all_of(book, [](QChar c) { return c.isLetterOrNumber(); });
    return isName ? book.toLower() : QString();
}

}  // namespace

QString HelpBook::Folder() {
    const QDir program(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(program.absoluteFilePath("../share/kvxostrace/help"));
}

QString HelpBook::PagePath(const QString& helpKey) const {
    for (const QString& name : {BookOf(helpKey), QString(kIndex)}) {
        const QString path = folder_ + "/" + name + ".html";
        if (!name.isEmpty() && QFileInfo(path).isFile()) return path;
    }
    return {};
}

bool HelpBook::Open(const QString& helpKey) {
    const QString path = PagePath(helpKey);
    if (path.isEmpty()) return false;
    // The process outlives a book, and so may its browser.
    auto* opener = new QProcess(qApp);
    opener->setStandardOutputFile(QProcess::nullDevice());
    opener->setStandardErrorFile(QProcess::nullDevice());
    const QElapsedTimer since = Started();
    const auto ended = [this, alive = std::weak_ptr(alive_), opener, path, since](bool failed) {
        opener->deleteLater();
        const bool atOnce = since.elapsed() < kAtOnce;
        if (failed && atOnce && !alive.expired()) ShowInWindow(path);
    };
    QObject::connect(opener, &QProcess::finished, [ended](int code, QProcess::ExitStatus status) {
        ended(status != QProcess::NormalExit || code != 0);
    });
    QObject::connect(opener, &QProcess::errorOccurred, [ended](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) ended(true);
    });
    opener->start(opener_, {path});
    return true;
}

void HelpBook::ShowInWindow(const QString& path) {
    if (!window_) window_ = new HelpWindow(parent_);
    window_->ShowPage(path);
}

}  // namespace kvx::desktop
