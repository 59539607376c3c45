#include "fakecomponent/FakeWindow.h"

#include <QPaintEvent>
#include <QPainter>
#include <array>

#include "host/CommandIds.h"
#include "host/Identifiers.h"
#include "host/OSTraceService.h"

namespace kvx::test {
namespace {

class Chart final : public QWidget {
  public:
    explicit Chart(QWidget* parent) : QWidget(parent) {
        setFocusPolicy(Qt::StrongFocus);
        show();
    }

  protected:
    // A frame at the very edge: a control that does not fill its place shows.
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), palette().base());
        painter.setPen(palette().color(QPalette::Text));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        painter.drawText(rect(), Qt::AlignCenter,
                         QStringLiteral("%1 x %2").arg(width()).arg(height()));
    }
};

using Pixels = std::array<std::uint32_t, 256>;

// A black stroke and a blue square.
Pixels MakePixels(int column) {
    Pixels pixels{};
    for (std::size_t y = 2; y < 14; ++y) {
        pixels[y * 16 + static_cast<std::size_t>(column)] = 0xFF000000;
        for (std::size_t x = 9; x < 13; ++x) pixels[y * 16 + x] = 0xFF0000C0;
    }
    return pixels;
}

}  // namespace

FakeWindow::FakeWindow(IQHost* host, HWND docking, Log log)
    : host_(host),
      docks_(host::Service<IQDockingHost>(host, host::kDockingHost)),
      docking_(docking),
      log_(std::move(log)),
      control_(std::make_unique<Chart>(reinterpret_cast<QWidget*>(docking))) {
    docks_->AllocateIdentifier(&identifier_);
    docks_->RegisterWindow(docking, reinterpret_cast<HWND>(control_.get()), identifier_,
                           host::kComponent, this);
    AddMenu();
    AddToolbar();
    AddKeys();
}

FakeWindow::~FakeWindow() {
    docks_->RemoveRegistrations(identifier_);
    docks_->ReleaseIdentifier(identifier_);
}

void FakeWindow::AddMenu() {
    const MenuNode range[] = {{u"&Full", nullptr, ids::kRangeFullCommand, nullptr, 0}};
    const MenuNode items[] = {
        {u"&Start Marker", u"Display the start marker\nStart Marker", ids::kStartMarker, nullptr,
         0},
        {nullptr, nullptr, 0, nullptr, 0},
        {u"Trace &Range", nullptr, 0, range, 1},
        {u"&Search...", u"Search for history of system call\nSearch", ids::kSearch, nullptr, 0},
        {u"Toolbar display", nullptr, ids::kToolbarDisplay, nullptr, 0},
        {u"Customize toolbar...", nullptr, ids::kCustomizeToolbar, nullptr, 0},
        {u"Allow Docking", nullptr, ids::kAllowDocking, nullptr, 0},
        {u"Hide", nullptr, ids::kHide, nullptr, 0},
    };
    const MenuNode popup = {u"OSTrace", nullptr, 0, items, std::size(items)};
    const MenuNode root = {nullptr, nullptr, 0, &popup, 1};
    docks_->AddMenu(identifier_, docking_, &root, this);
}

void FakeWindow::AddToolbar() {
    const Pixels start = MakePixels(4);
    const Pixels search = MakePixels(6);
    const ToolbarButton buttons[] = {
        {ids::kStartMarker, u"Display the start marker\nStart Marker", start.data()},
        {0, nullptr, nullptr},
        {ids::kSearch, u"Search for history of system call\nSearch", search.data()},
    };
    docks_->AddToolbar(identifier_, docking_, nullptr, nullptr, buttons, std::size(buttons), this);
}

void FakeWindow::AddKeys() {
    constexpr Accelerator kKeys[] = {{'F', 1, 0, 0, ids::kSearch},
                                     {'M', 0, 0, 0, ids::kStartMarker}};
    docks_->AddAccelerators(identifier_, docking_, kKeys, std::size(kKeys), this);
}

HRESULT FakeWindow::OnCommand(std::uint32_t command) {
    log_("command " + std::to_string(command));
    std::int32_t shown = 0;
    switch (command) {
        case ids::kStartMarker:
            marked_ = !marked_;
            return S_OK;
        case ids::kHide:
            return docks_->SetWindowState(docking_, kDockHide);
        case ids::kAllowDocking:
            return docks_->SetWindowState(docking_, kDockToggleAllowed);
        case ids::kToolbarDisplay:
            docks_->IsToolbarShown(docking_, &shown);
            return docks_->ShowToolbar(docking_, shown ? 0 : 1);
        case ids::kCustomizeToolbar:
            return docks_->CustomizeToolbar(docking_);
        case ids::kSearch: {
            auto* trace = host::Service<IQOSTraceService>(host_, host::kOSTraceService);
            std::uint32_t found = 0;
            VARIANT_BOOL more = VARIANT_FALSE;
            VARIANT_BOOL hit = VARIANT_FALSE;
            const HRESULT status = trace->SearchFirst(0, &found, &more, &hit);
            log_("search " + std::to_string(status >= 0));
            return status;
        }
        default:
            return E_NOTIMPL;
    }
}

HRESULT FakeWindow::OnUpdateCommand(std::uint32_t command, CommandState* state) {
    std::int32_t shown = 0;
    std::int32_t docking = 0;
    switch (command) {
        case ids::kStartMarker:
            *state = {1, marked_ ? 1 : 0};
            return S_OK;
        case ids::kToolbarDisplay:
            docks_->IsToolbarShown(docking_, &shown);
            *state = {1, shown};
            return S_OK;
        case ids::kCustomizeToolbar:
            docks_->IsToolbarShown(docking_, &shown);
            *state = {shown, 0};
            return S_OK;
        case ids::kAllowDocking:
            docks_->GetWindowState(docking_, &docking);
            *state = {1, (docking & kDockFloating) && !(docking & kDockMayDock) ? 0 : 1};
            return S_OK;
        case ids::kRangeFullCommand:
            return E_NOTIMPL;
        default:
            return S_OK;
    }
}

HRESULT FakeWindow::OnCloseRequest() {
    return onClose();
}

HRESULT FakeWindow::GetHelpKey(BSTR* key) {
    *key = ToBstr("OSTrace.chm>F1HelpWindow");
    return S_OK;
}

}  // namespace kvx::test
