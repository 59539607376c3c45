#pragma once
// Shows the progress of decoding on a terminal, where the windows show a dialog.

#include "trace/Progress.h"
#include "workbench/cli/Streams.h"

namespace kvx::cli {

class TerminalView final : public IViewSender {
  public:
    explicit TerminalView(const Streams& streams) : streams_(streams) {}

    std::unique_ptr<IProgress> CreateProgress(const CString& caption) override {
        if (!streams_.terminal) return nullptr;
        return std::make_unique<Line>(streams_.error, caption);
    }
    void InvalidateView() override {}

  private:
    // One line, rewritten in place; nobody stops it but the whole program.
    class Line final : public IProgress {
      public:
        Line(std::ostream& out, const CString& caption) : out_(out), caption_(caption) {}
        void SetProgress(int range, int position) override {
            percentage_ = range ? position * 100 / range : 0;
        }
        int Create() override { return 1; }
        void UpdateProgress() override {
            out_ << '\r' << caption_ << ' ' << percentage_ << " %" << std::flush;
        }
        int Check_QXTraceStop() override { return 0; }
        int DestroyWindow() override {
            out_ << "\r\033[K" << std::flush;
            return 1;
        }

      private:
        std::ostream& out_;
        CString caption_;
        int percentage_ = 0;
    };

    const Streams& streams_;
};

}  // namespace kvx::cli
