// Workspace files. What is read is written and read again: it must be the same.

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"
#include "workbench/desktop/sessions/WorkspaceFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kvx::desktop;
    static const kvx::fuzz::Scratch scratch;
    scratch.Write("x.kvxw", kvx::fuzz::AsText(data, size));
    const auto path = QString::fromStdString(scratch.Path("x.kvxw"));
    const auto read = ReadWorkspace(path);
    if (!read) {
        kvx::fuzz::Require(!read.GetError().message.empty(), "an error without a message");
        return 0;
    }
    kvx::fuzz::Require(WriteWorkspace(path, read->workspace).isEmpty(), "not written");
    const auto again = ReadWorkspace(path);
    kvx::fuzz::Require(again && again->damage.isEmpty(), "what was written is damaged");
    kvx::fuzz::Require(again->workspace.trace == read->workspace.trace &&
                           again->workspace.layout == read->workspace.layout,
                       "what was written is another workspace");
    return 0;
}
