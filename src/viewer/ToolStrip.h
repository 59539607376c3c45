#pragma once
// A row of buttons with images of 16 x 16 pixels.

#include <array>

#include "framework/TipWindow.h"
#include "platform/windows/Wnd.h"
#include "viewer/MenuTree.h"

namespace kvx::viewer {

class ToolStrip : public CWnd {
  public:
    static constexpr int kHeight = 26;

    std::function<void(const Command&)> onCommand;
    // The pointer is on a button with this status text, or on none (empty).
    std::function<void(const CString&)> onPrompt;

    void AddButtons(const ToolbarButton* buttons, std::uint32_t count, IQCommandTarget* target,
                    std::uint32_t identifier);
    void Remove(std::uint32_t identifier);
    bool IsEmpty() const { return buttons_.empty(); }
    // Asks the targets and shows their answers.
    void Update();

  protected:
    const MessageMap& GetMessageMap() const override;

  private:
    struct Button {
        Command command;  // no target: a separator
        std::uint32_t identifier = 0;
        CString status;
        CString tip;
        std::array<std::uint32_t, 256> pixels{};
        CommandState state;
    };

    void OnPaint();
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    LRESULT OnMouseLeave(WPARAM, LPARAM);
    void OnCancelMode();
    void OnDestroy();
    void DrawButton(CDC& dc, const Button& button, const RECT& area, bool down, bool hot);
    void ShowHot(int which, CPoint point);
    RECT AreaOf(std::size_t which) const;
    int At(CPoint point) const;  // -1: none

    std::vector<Button> buttons_;
    std::unique_ptr<CTipWindow> tip_;
    int hot_ = -1;
    int pressed_ = -1;
};

}  // namespace kvx::viewer
