#pragma once
// A window of the fake component: a control in a docking window, with menu, toolbar and keys.

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "host/DockingHost.h"

namespace kvx::test {

class FakeWindow final : public IQCommandTarget {
  public:
    using Log = std::function<void(const std::string&)>;

    FakeWindow(IQHost* host, HWND docking, Log log);
    ~FakeWindow();

    HWND Docking() const { return docking_; }
    // Answers a close request; set by the component.
    std::function<HRESULT()> onClose;

    HRESULT KVX_CALL OnCommand(std::uint32_t command) override;
    HRESULT KVX_CALL OnUpdateCommand(std::uint32_t command, CommandState* state) override;
    HRESULT KVX_CALL OnCloseRequest() override;
    HRESULT KVX_CALL GetHelpKey(BSTR* key) override;

  private:
    void AddMenu();
    void AddToolbar();
    void AddKeys();

    IQHost* host_;
    IQDockingHost* docks_;
    HWND docking_;
    Log log_;
    std::uint32_t identifier_ = 0;
    std::unique_ptr<QWidget> control_;
    bool marked_ = false;
};

}  // namespace kvx::test
