#pragma once
// Dialogs from templates of the current resources.

#include <memory>
#include <vector>

#include "platform/base/Resources.h"
#include "platform/windows/Wnd.h"

class CDialog;

// Argument of DoDataExchange.
struct CDataExchange {
    CDialog* m_pDlgWnd = nullptr;
    bool m_bSaveAndValidate = false;
};
// Binds the control of that id to the object, once.
void DDX_Control(CDataExchange* exchange, UINT id, CWnd& control);

class CDialog : public CWnd {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    CDialog() = default;
    // For DoModal. parent null: the application's main window.
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    // Shows the dialog, blocks every other window and answers what EndDialog was given; -1 when the
    // dialog could not be made.
    virtual int DoModal();
    // Modeless. Controls exist as objects of their classes (CButton, CEdit, ...) that GetDlgItem
    // answers. False when the template is missing.
    using CWnd::Create;
    bool Create(UINT templateId, CWnd* parent);
    bool Create(const DialogResource& resource, CWnd* parent);

    // True: the first control gets the focus.
    virtual bool OnInitDialog();
    // Ends DoModal; without it only remembers the result.
    void EndDialog(int result);
    bool UpdateData(bool save = true);
    // The button that Enter presses, while no other button has the focus.
    void SetDefID(UINT id);
    UINT GetDefID() const { return defaultId_; }
    void GotoDlgCtrl(CWnd* control) { control->SetFocus(); }
    // Dialog units to pixels, in place.
    void MapDialogRect(RECT* rect) const;

  protected:
    const MessageMap& GetMessageMap() const override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    int BackgroundColour() const override;
    virtual void OnOK();      // data exchange, then EndDialog(IDOK)
    virtual void OnCancel();  // EndDialog(IDCANCEL); a modeless dialog is hidden
    virtual void DoDataExchange(CDataExchange*) {}

  private:
    bool CreateControls(const DialogResource& resource);
    void PlaceFocus();
    void PressDefault();

    UINT templateId_ = 0;
    CWnd* parent_ = nullptr;
    CFont font_;
    SIZE baseUnits_;
    std::vector<std::unique_ptr<CWnd>> controls_;
    UINT defaultId_ = IDOK;
    bool modal_ = false;
    int result_ = -1;
    bool ended_ = false;
};
