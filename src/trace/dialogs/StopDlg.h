#pragma once
// Modeless dialogs with a STOP button for long work on the user-interface thread, polled by the one
// who works. The parent is disabled as long as the dialog lives; messages of other windows wait.

#include "platform/controls/ProgressCtrl.h"
#include "platform/dialogs/Dialog.h"
#include "trace/Progress.h"

// What both dialogs share.
class KVX_EXPORT CStopDlgBase : public CDialog {
  public:
    // Disables the parent (null: none). An empty caption keeps the template's title.
    CStopDlgBase(UINT templateId, CWnd* parent, const char* caption);
    ~CStopDlgBase() override;

    using CDialog::Create;
    // 0: the dialog cannot be made.
    int Create();
    // Enables the parent if it still exists.
    bool DestroyWindow() override;
    // Handles what waits for the dialog; 1 after STOP.
    int Check_QXTraceStop();

    bool OnInitDialog() override;

  protected:
    void OnCancel() override;

  private:
    void EnableParent();

    UINT templateId_;
    HWND parent_;
    int cancelled_ = 0;
    CString caption_;
};

// Progress bar and STOP.
class KVX_EXPORT CStopDlgCore : public CStopDlgBase {
  public:
    CStopDlgCore() : CStopDlgCore(nullptr, "") {}
    CStopDlgCore(CWnd* parent, const char* caption);

    // Remembered; shown by UpdateProgress.
    void SetProgress(int range, int position);
    void UpdateProgress();

    bool OnInitDialog() override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    CProgressCtrl progress_;
    int range_ = 0;
    int position_ = 0;
};

// STOP alone.
class KVX_EXPORT CStopOnlyDlgCore : public CStopDlgBase {
  public:
    CStopOnlyDlgCore() : CStopOnlyDlgCore(nullptr, "") {}
    CStopOnlyDlgCore(CWnd* parent, const char* caption);
};

// The dialog as what the engine polls.
class CProgressDialog : public IProgress {
  public:
    CProgressDialog(CWnd* parent, const CString& caption) : dialog_(parent, caption.c_str()) {}
    void SetProgress(int range, int position) override { dialog_.SetProgress(range, position); }
    int Create() override { return dialog_.Create(); }
    void UpdateProgress() override { dialog_.UpdateProgress(); }
    int Check_QXTraceStop() override { return dialog_.Check_QXTraceStop(); }
    int DestroyWindow() override { return dialog_.DestroyWindow(); }

  private:
    CStopDlgCore dialog_;
};
