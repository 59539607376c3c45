#pragma once
// An OS Analyze window in a test: on the real back-end, offscreen, over a scripted trace.

#include <map>

#include "analyze/AnalyzeTrace.h"
#include "analyze/AnalyzeView.h"
#include "host/NoRefCount.h"
#include "host/Services.h"
#include "platform/controls/StatusBarCtrl.h"
#include "platform/drawing/ClientDC.h"
#include "sink/OSAnalyzeInstanceCtrl.h"
#include "support/ComponentWindow.h"
#include "support/RecordingGraphics.h"

namespace kvx::test {

class MemoryStore final : public host::NoRefCount<IQWorkspaceStoreService> {
  public:
    std::map<std::string, std::string> texts;
    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    HRESULT KVX_CALL WriteText(const WorkspaceKey*, BSTR key, BSTR text) override {
        texts[ToUtf8(key)] = ToUtf8(text);
        return S_OK;
    }
    HRESULT KVX_CALL ReadText(const WorkspaceKey*, BSTR key, BSTR* text) override {
        const auto found = texts.find(ToUtf8(key));
        if (found == texts.end()) return E_FAIL;
        *text = ToBstr(found->second);
        return S_OK;
    }
};

class AnalyzeWindow : public ComponentWindow {
  protected:
    // Widths in characters of the tables' columns, as they are at first.
    static constexpr int kRunTimeWidths[] = {5, 8, 5, 12, 7, 22, 22, 22, 22, 8, 18};
    static constexpr int kRdyRunWidths[] = {5, 12, 8, 22, 22, 22};
    static constexpr int kSysCallWidths[] = {7, 13, 35, 35, 22};
    static constexpr char kSettings[] = "OSAnalyzeViewView";
    static constexpr char kDefaults[] =
        "0,5,8,5,12,7,22,22,22,22,8,18,5,12,8,22,22,22,7,13,35,35,22";

    AnalyzeWindow() {
        host.services[host::kWorkspaceStore] = static_cast<IQWorkspaceStoreService*>(&store);
    }

    // The trace is open and decoded, and its whole length is marked.
    void OpenTrace(ScriptedTrace trace) {
        service.Load(std::move(trace));
        ASSERT_EQ(data.engine.Open(nullptr), 1);
        service.DecodeAll();
        data.contexts.Load();
        data.markers.SetMarker(nullptr, kMarkerStart, 0);
        data.markers.SetMarker(nullptr, kMarkerEnd, service.Decoded() - 1);
        data.markers.Rebuild(nullptr, true);
    }
    // The window, so many pixels large; it is wide enough for the Run Time table at 2000.
    void OpenWindow(int width = 2000, int height = 200) {
        instance = std::make_unique<CKvxOSAnalyzeInstanceCtrl>(&host, nullptr, data);
        ASSERT_TRUE(instance->Create(WS_CHILD | WS_VISIBLE, RECT{}, &Main(), 1));
        instance->SetFont("Courier New", 11);
        view = instance->Frame().AnalyzeView();
        host.onBroadcast = [this](const EventRecord& record) {
            const bool own = instance && instance->IsSender(record.datum);
            if (instance && !own) instance->UpdateView(kHintDisplayChanged);
        };
        Measure();
        Resize(width, height);
    }
    void Resize(int width, int height) {
        instance->MoveWindow(0, 0, width, height);
        view->UpdateWindow();
    }
    // So that so many rows are shown as a whole.
    void ShowRows(int rows, int width = 2000) {
        Resize(width, 200);
        const int around = 200 - view->GetClientRect().Height();
        Resize(width, around + rowHeight * (rows + 1));
        // A bar that came with the new size takes its height too.
        Resize(width,
               2 * (around + rowHeight * (rows + 1)) - around - view->GetClientRect().Height());
    }
    void Close() override {
        if (!instance) return;
        instance->DestroyWindow();
        instance.reset();
        view = nullptr;
    }

    // The middle of a column's cell in a row of the window; row -1 is that of the titles.
    template <std::size_t N>
    CPoint Cell(const int (&widths)[N], std::size_t column, int row) const {
        int characters = 0;
        for (std::size_t i = 0; i < column; ++i) characters += widths[i];
        return {characters * charWidth + widths[column] * charWidth / 2,
                (row + 1) * rowHeight + rowHeight / 2};
    }
    template <std::size_t N>
    int RightEdge(const int (&widths)[N], std::size_t column) const {
        int characters = 0;
        for (std::size_t i = 0; i <= column; ++i) characters += widths[i];
        return characters * charWidth;
    }
    template <std::size_t N>
    void ClickCell(const int (&widths)[N], std::size_t column, int row) {
        Click(*view, Cell(widths, column, row));
    }

    std::string Drawing() const {
        RecordingGraphics graphics;
        CDC dc(&graphics);
        view->OnDraw(&dc);
        return graphics.Text();
    }
    // Texts below the titles whose left cell edge is at x, from the top; "" for empty cells does
    // not appear.
    std::vector<std::string> TextsAt(int left) const {
        std::vector<std::string> texts;
        std::istringstream lines(Drawing());
        for (std::string line; std::getline(lines, line);) {
            const auto clip = line.find(FormatText(" #000000 clip %d ", left));
            if (line.rfind("text ", 0) != 0 || clip == std::string::npos) continue;
            const auto quote = line.find('"');
            if (line.find(FormatText(" clip %d 0 ", left)) != std::string::npos) continue;
            texts.emplace_back(TrimLeft(line.substr(quote + 1, clip - quote - 2)));
        }
        return texts;
    }
    template <std::size_t N>
    std::vector<std::string> Texts(const int (&widths)[N], std::size_t column) const {
        return TextsAt(RightEdge(widths, column) - widths[column] * charWidth);
    }
    static std::string Front(const std::vector<std::string>& texts) {
        return texts.empty() ? "(none)" : texts.front();
    }
    static std::string Back(const std::vector<std::string>& texts) {
        return texts.empty() ? "(none)" : texts.back();
    }
    std::vector<std::string> Names() const { return Texts(kRunTimeWidths, 3); }

    int FirstRow() const { return view->GetScrollPos(SB_VERT); }
    bool IsBarShown(DWORD style) const { return (view->GetStyle() & style) != 0; }
    bool IsEnabled(UINT command) const {
        CCmdUI ui(command);
        EXPECT_TRUE(instance->OnUpdateCommand(command, ui)) << command;
        return ui.IsEnabled();
    }
    bool IsChecked(UINT command) const {
        CCmdUI ui(command);
        EXPECT_TRUE(instance->OnUpdateCommand(command, ui)) << command;
        return ui.Check() == 1;
    }
    void Command(UINT command) { ASSERT_TRUE(instance->OnCommand(command)) << command; }
    void Key(UINT key) { view->SendMessage(WM_KEYDOWN, key); }
    double Indicator() const { return data.markers.GetMarkerTime(kMarkerIndicator); }
    CStatusBarCtrl* StatusBar() const {
        return static_cast<CStatusBarCtrl*>(instance->Frame().GetDlgItem(kStatusBarPane));
    }

    MemoryStore store;
    std::unique_ptr<CKvxOSAnalyzeInstanceCtrl> instance;
    COSAnalyzeView* view = nullptr;
    int charWidth = 0;
    int rowHeight = 0;

  private:
    void Measure() {
        CClientDC dc(view);
        dc.SelectObject(instance->Frame().GetDisplayFont());
        TEXTMETRIC metrics;
        dc.GetTextMetrics(&metrics);
        charWidth = metrics.tmAveCharWidth;
        rowHeight = metrics.tmHeight + metrics.tmExternalLeading;
    }
};

}  // namespace kvx::test
