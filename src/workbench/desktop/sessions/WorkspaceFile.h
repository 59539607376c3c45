#pragma once
// The workspace file (.kvxw): UTF-8 text, one JSON object a line, as docs/FORMATS.md describes it.
// Each line stands for itself, so that a damaged line costs no other.

#include <QByteArray>
#include <QStringList>
#include <optional>

#include "host/OSTraceRange.h"
#include "workbench/desktop/TraceFiles.h"
#include "workbench/desktop/services/TextsStore.h"
#include "workbench/service/LineOrder.h"
#include "workbench/service/Result.h"

namespace kvx::desktop {

// The trace that is open: files or a folder, or the built-in demonstration.
struct WorkspaceTrace {
    TraceFiles files;  // absolute; empty: the demonstration
    std::uint32_t processor = 0;
    friend bool operator==(const WorkspaceTrace&, const WorkspaceTrace&) = default;
};

struct Workspace {
    std::optional<WorkspaceTrace> trace;
    service::LineArrangement lines;
    std::optional<host::OSTracePosition> position;  // of the OS Trace window in the trace
    QByteArray layout;  // of the docking windows, in the toolkit's own form; empty: not known
    WorkspaceTexts texts;
};

struct WorkspaceRead {
    Workspace workspace;
    QStringList damage;  // one sentence each
};

// The error says why it cannot be read or is no workspace.
Result<WorkspaceRead> ReadWorkspace(const QString& path);

// Puts the file in place of an older one only when all of it is written. A text that says what
// failed, or an empty one.
QString WriteWorkspace(const QString& path, const Workspace& workspace);

// By the file's name.
bool IsWorkspaceName(const QString& path);

}  // namespace kvx::desktop
