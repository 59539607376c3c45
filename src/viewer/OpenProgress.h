#pragma once
// How far a recording is read, in a dialog with a STOP button once that takes noticeable time.

#include <memory>

#include "trace/dialogs/StopDlg.h"
#include "workbench/formats/OpenRecording.h"

namespace kvx::viewer {

class OpenProgress final : public formats::IOpenProgress {
  public:
    explicit OpenProgress(CWnd& parent);
    ~OpenProgress() override;
    bool Progress(std::uint64_t done, std::uint64_t total) override;

  private:
    CWnd& parent_;
    const DWORD begin_;
    std::unique_ptr<CStopDlgCore> dialog_;
};

}  // namespace kvx::viewer
