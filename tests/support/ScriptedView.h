#pragma once
// A sender whose progress dialog a test scripts: whether it comes up, and when STOP is pressed.

#include <vector>

#include "trace/Progress.h"

namespace kvx::test {

class ScriptedView final : public IViewSender {
  public:
    int stopAtPoll = 0;  // STOP is pressed before this poll; 0: never
    bool createFails = false;
    bool hasDialog = true;

    std::vector<CString> captions;
    std::vector<int> shown;  // positions at UpdateProgress
    int polls = 0;
    int destroyed = 0;
    int invalidated = 0;

    std::unique_ptr<IProgress> CreateProgress(const CString& caption) override {
        captions.push_back(caption);
        if (!hasDialog) return nullptr;
        return std::make_unique<Progress>(*this);
    }
    void InvalidateView() override { ++invalidated; }

  private:
    class Progress final : public IProgress {
      public:
        explicit Progress(ScriptedView& view) : view_(view) {}
        void SetProgress(int, int position) override { position_ = position; }
        int Create() override { return view_.createFails ? 0 : 1; }
        void UpdateProgress() override { view_.shown.push_back(position_); }
        int Check_QXTraceStop() override {
            ++view_.polls;
            return view_.stopAtPoll && view_.polls >= view_.stopAtPoll ? 1 : 0;
        }
        int DestroyWindow() override { return ++view_.destroyed; }

      private:
        ScriptedView& view_;
        int position_ = 0;
    };
};

}  // namespace kvx::test
