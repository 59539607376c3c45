#include "workbench/desktop/ToolkitMessages.h"

#include <QString>
#include <algorithm>
#include <array>
#include <iostream>

namespace kvx::desktop {
namespace {

constexpr std::array kIdle = {"This plugin does not support", "QStandardPaths: XDG_RUNTIME_DIR"};

void Show(QtMsgType, const QMessageLogContext&, const QString& message) {
    const auto starts = [&](const char* begin) { return message.startsWith(begin); };
    if (std::ranges::none_of(kIdle, starts)) std::cerr << message.toStdString() << "\n";
}

}  // namespace

void FilterToolkitMessages() {
    qInstallMessageHandler(Show);
}

}  // namespace kvx::desktop
