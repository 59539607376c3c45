#include "traceview/TraceWindow.h"

#include <QApplication>
#include <QPushButton>

namespace kvx::test {

void TraceWindow::StopAfter(int blocks) {
    service.onCall = [blocks, seen = 0](const std::string& operation) mutable {
        if (operation.rfind("Analyze", 0) != 0 || ++seen != blocks) return;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* const stop = window->findChild<QPushButton*>();
            if (!window->isVisible() || !stop || stop->text() != "STOP") continue;
            QMetaObject::invokeMethod(stop, "click", Qt::QueuedConnection);
        }
    };
}

}  // namespace kvx::test
