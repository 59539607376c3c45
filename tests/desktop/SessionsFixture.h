#pragma once
// The Workbench with the component that it ships with, a log to open, and the next run.

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "workbench/desktop/Workbench.h"

namespace kvx::desktop {

class Sessions : public testing::Test {
  protected:
    void SetUp() override {
        QFile log(log_);
        ASSERT_TRUE(log.open(QIODevice::WriteOnly));
        for (int i = 1; i < 200; ++i) {
            log.write(QStringLiteral("[%1] dispatch to task %2.\n[%3] dispatch from task %2.\n")
                          .arg(20 * i)
                          .arg(i % 4 + 1)
                          .arg(20 * i + 10)
                          .toUtf8());
        }
        log.close();
        StartAnew();
    }
    // As the next run would find it.
    void StartAnew() {
        workbench_.reset();
        workbench_ = std::make_unique<Workbench>(settings_);
        ASSERT_EQ(workbench_->Start(QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR"))), "");
        workbench_->Window().resize(1000, 700);
        workbench_->Window().show();
        QApplication::processEvents();
    }
    void Quit() {
        workbench_->Window().close();
        StartAnew();
    }
    DockingWindows& Docks() { return workbench_->Docking().Windows(); }
    DockingWindow* Dock(const QString& title) {
        for (DockingWindow* window : Docks().All()) {
            if (window->windowTitle() == title) return window;
        }
        return nullptr;
    }
    void Open(std::uint32_t command) {
        workbench_->Docking().UpdateCommands();
        workbench_->Docking().GiveCommand(command);
        QApplication::processEvents();
    }
    QAction* Command(const QString& title, std::uint32_t id) {
        workbench_->Docking().UpdateCommands();
        return workbench_->Docking().Toolbar(Dock(title)->Name() + "/toolbar")->Find(id);
    }
    host::IQOSTraceRange* Range() {
        return host::Service<host::IQOSTraceRange>(&workbench_->Host(), host::kOSTraceRange);
    }
    bool IsModified() { return workbench_->Workspace().IsModified(); }
    QStringList Shown() {
        QStringList titles;
        for (DockingWindow* window : Docks().All()) {
            if (!window->isHidden()) titles << window->windowTitle();
        }
        return titles;
    }

    QTemporaryDir folder_;
    QString log_ = folder_.filePath("day.log");
    QString file_ = folder_.filePath("day.kvxw");
    Settings settings_;
    std::unique_ptr<Workbench> workbench_;
};

}  // namespace kvx::desktop
