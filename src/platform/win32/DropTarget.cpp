#include "platform/win32/DropTarget.h"

#include "platform/os/windows/Wide.h"
#include "platform/win32/Convert.h"
#include "platform/win32/FileDrop.h"
#include "platform/win32/Geometry.h"
#include "platform/win32/Keys.h"
#include "platform/win32/OwnWindow.h"

namespace kvx::win32 {

namespace {

// What of the data is of that kind, or nothing; ReleaseStgMedium frees it.
win::STGMEDIUM Get(win::IDataObject* data, unsigned short format) {
    win::FORMATETC wanted = {format, nullptr, win::DVASPECT_CONTENT, -1, win::TYMED_HGLOBAL};
    win::STGMEDIUM medium = {};
    if (data->GetData(&wanted, &medium) != S_OK) medium = {};
    return medium;
}

COleDataObject DataOf(win::IDataObject* data) {
    std::vector<CString> files;
    CString text;
    if (win::STGMEDIUM drop = Get(data, CF_HDROP); drop.hGlobal) {
        files = FilesOf(static_cast<win::HDROP>(drop.hGlobal));
        win::ReleaseStgMedium(&drop);
    }
    if (win::STGMEDIUM words = Get(data, CF_UNICODETEXT); words.hGlobal) {
        text = FromLines(static_cast<const wchar_t*>(win::GlobalLock(words.hGlobal)));
        win::GlobalUnlock(words.hGlobal);
        win::ReleaseStgMedium(&words);
    }
    return {text, std::move(files)};
}

// What the window does not want its parents may have; the system asks only the innermost.
class Target final : public win::IDropTarget {
  public:
    explicit Target(win::HWND window) : window_(window) {}

    win::HRESULT STDMETHODCALLTYPE QueryInterface(const win::IID& id, void** out) override {
        const bool known =
            id.Data1 == win::IID_IUnknown.Data1 || id.Data1 == win::IID_IDropTarget.Data1;
        *out = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    win::ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    win::ULONG STDMETHODCALLTYPE Release() override {
        const win::ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    win::HRESULT STDMETHODCALLTYPE DragEnter(win::IDataObject* data, win::DWORD, win::POINTL at,
                                             win::DWORD* effect) override {
        data_ = DataOf(data);
        *effect = Ask(at, true);
        return S_OK;
    }
    win::HRESULT STDMETHODCALLTYPE DragOver(win::DWORD, win::POINTL at,
                                            win::DWORD* effect) override {
        *effect = Ask(at, false);
        return S_OK;
    }
    win::HRESULT STDMETHODCALLTYPE DragLeave() override {
        for (win::HWND window = window_; window; window = Above(window))
            if (const auto own = OwnWindow::Of(window); own && own->Sink())
                own->Sink()->OnDragLeave();
        return S_OK;
    }
    win::HRESULT STDMETHODCALLTYPE Drop(win::IDataObject* data, win::DWORD keys, win::POINTL at,
                                        win::DWORD* effect) override {
        data_ = DataOf(data);
        const bool move = (*effect & DROPEFFECT_MOVE) && (keys & MK_SHIFT);
        *effect = DropOn(at, move ? DROPEFFECT_MOVE : DROPEFFECT_COPY);
        return S_OK;
    }

  private:
    virtual ~Target() = default;

    static win::HWND Above(win::HWND window) {
        const bool top = win::GetAncestor(window, GA_ROOT) == window;
        return top ? nullptr : win::GetAncestor(window, GA_PARENT);
    }
    static POINT Inside(win::HWND window, win::POINTL at) {
        return Screens::ToLogical(win::POINT{at.x, at.y}) - ClientOriginOf(window);
    }
    bool CanDropFiles(win::HWND window) const {
        return !data_.Files().empty() && TakesFiles(window);
    }

    DROPEFFECT Ask(win::POINTL at, bool entered) {
        for (win::HWND window = window_; window; window = Above(window)) {
            const auto own = OwnWindow::Of(window);
            DROPEFFECT effect = !own && CanDropFiles(window) ? DROPEFFECT_COPY : DROPEFFECT_NONE;
            if (own && own->Sink())
                effect = own->Sink()->OnDrag(data_, MouseFlagsNow(), Inside(window, at), entered);
            if (effect != DROPEFFECT_NONE) return effect;
        }
        return DROPEFFECT_NONE;
    }
    DROPEFFECT DropOn(win::POINTL at, DROPEFFECT wanted) {
        for (win::HWND window = window_; window; window = Above(window)) {
            const auto own = OwnWindow::Of(window);
            if (!own && CanDropFiles(window)) {
                DropFilesOn(window, data_.Files());
                return DROPEFFECT_COPY;
            }
            const DROPEFFECT effect = own && own->Sink()
                                          ? own->Sink()->OnDrop(data_, wanted, Inside(window, at))
                                          : DROPEFFECT_NONE;
            if (effect != DROPEFFECT_NONE) return effect;
        }
        return DROPEFFECT_NONE;
    }

    win::HWND window_;
    COleDataObject data_;
    win::ULONG references_ = 1;
};

}  // namespace

DropTarget::DropTarget(win::HWND window) : window_(window) {
    auto* const target = new Target(window);
    win::RegisterDragDrop(window, target);
    target->Release();  // the system holds it
}

DropTarget::~DropTarget() {
    win::RevokeDragDrop(window_);
}

}  // namespace kvx::win32
