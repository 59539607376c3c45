#include "viewer/ToolStrip.h"

#include <algorithm>

#include "platform/base/SystemInfo.h"

namespace kvx::viewer {
namespace {

constexpr int kImage = 16;
constexpr int kButton = 24;
constexpr int kSeparator = 8;
constexpr int kMargin = 2;

// Grey and half as strong.
std::array<std::uint32_t, 256> Disabled(const std::array<std::uint32_t, 256>& pixels) {
    std::array<std::uint32_t, 256> grey{};
    std::ranges::transform(pixels, grey.begin(), [](std::uint32_t pixel) {
        const std::uint32_t light =
            ((pixel >> 16 & 0xFF) * 3 + (pixel >> 8 & 0xFF) * 6 + (pixel & 0xFF)) / 10;
        const std::uint32_t level = 96 + light / 2;
        return (pixel >> 24) * 2 / 5 << 24 | level << 16 | level << 8 | level;
    });
    return grey;
}

}  // namespace

const MessageMap& ToolStrip::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&ToolStrip::OnPaint>(),
        ON_WM_LBUTTONDOWN<&ToolStrip::OnLButtonDown>(),
        ON_WM_LBUTTONUP<&ToolStrip::OnLButtonUp>(),
        ON_WM_MOUSEMOVE<&ToolStrip::OnMouseMove>(),
        ON_MESSAGE<WM_MOUSELEAVE, &ToolStrip::OnMouseLeave>(),
        ON_WM_CANCELMODE<&ToolStrip::OnCancelMode>(),
        ON_WM_DESTROY<&ToolStrip::OnDestroy>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

void ToolStrip::AddButtons(const ToolbarButton* buttons, std::uint32_t count,
                           IQCommandTarget* target, std::uint32_t identifier) {
    for (std::uint32_t i = 0; i < count; ++i) {
        Button button;
        button.identifier = identifier;
        if (buttons[i].command != 0) button.command = {target, buttons[i].command};
        const CString prompt = ToUtf8(buttons[i].prompt);
        const std::size_t end = std::min(prompt.find('\n'), prompt.size());
        button.status = prompt.substr(0, end);
        button.tip = end < prompt.size() ? prompt.substr(end + 1) : CString();
        if (buttons[i].pixels) {
            std::copy_n(buttons[i].pixels, button.pixels.size(), button.pixels.begin());
        }
        buttons_.push_back(std::move(button));
    }
    Update();
    Invalidate(false);
}

void ToolStrip::Remove(std::uint32_t identifier) {
    std::erase_if(buttons_, [&](const Button& each) { return each.identifier == identifier; });
    hot_ = pressed_ = -1;
    Invalidate(false);
}

void ToolStrip::Update() {
    for (Button& button : buttons_) {
        if (!button.command.target) continue;
        const CommandState state = StateOf(button.command);
        const bool same =
            state.enabled == button.state.enabled && state.checked == button.state.checked;
        button.state = state;
        if (!same) Invalidate(false);
    }
}

RECT ToolStrip::AreaOf(std::size_t which) const {
    int x = kMargin;
    for (std::size_t i = 0; i < which; ++i) x += buttons_[i].command.target ? kButton : kSeparator;
    return {x, 1, x + (buttons_[which].command.target ? kButton : kSeparator), 1 + kButton};
}

int ToolStrip::At(CPoint point) const {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const RECT area = AreaOf(i);
        if (buttons_[i].command.target && area.PtInRect(point)) return static_cast<int>(i);
    }
    return -1;
}

void ToolStrip::OnPaint() {
    CPaintDC dc(this);
    dc.FillSolidRect(GetClientRect(), GetSysColor(COLOR_3DFACE));
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const RECT area = AreaOf(i);
        if (!buttons_[i].command.target) {
            dc.FillSolidRect((area.left + area.right) / 2, area.top + 3, 1, area.Height() - 6,
                             GetSysColor(COLOR_3DSHADOW));
            continue;
        }
        const bool hot = static_cast<int>(i) == hot_;
        DrawButton(dc, buttons_[i], area, hot && static_cast<int>(i) == pressed_, hot);
    }
}

void ToolStrip::DrawButton(CDC& dc, const Button& button, const RECT& area, bool down, bool hot) {
    const bool enabled = button.state.enabled != 0;
    const bool sunken = down || button.state.checked != 0;
    if (enabled && (sunken || hot)) {
        CBrush edge(GetSysColor(sunken ? COLOR_3DDKSHADOW : COLOR_3DSHADOW));
        if (sunken) dc.FillSolidRect(area, GetSysColor(COLOR_3DHIGHLIGHT));
        dc.FrameRect(area, &edge);
    }
    const int offset = (kButton - kImage) / 2 + (down ? 1 : 0);
    const auto pixels = enabled ? button.pixels : Disabled(button.pixels);
    dc.DrawImage(area.left + offset, area.top + offset, kImage, kImage, pixels.data());
}

void ToolStrip::OnMouseMove(UINT, CPoint point) {
    Update();
    ShowHot(At(point), point);
}

LRESULT ToolStrip::OnMouseLeave(WPARAM, LPARAM) {
    ShowHot(-1, {});
    return 0;
}

void ToolStrip::ShowHot(int which, CPoint point) {
    if (which == hot_) return;
    hot_ = which;
    Invalidate(false);
    tip_.reset();
    const Button* const button = which < 0 ? nullptr : &buttons_[static_cast<std::size_t>(which)];
    onPrompt(button ? button->status : CString());
    if (!button || button->tip.empty() || GetCapture() == this) return;
    auto tip = std::make_unique<CTipWindow>();
    if (!tip->CreateTip(*this)) return;
    tip->Show(*this, GetFont(), {button->tip}, GetSysColor(COLOR_INFOBK), point);
    tip_ = std::move(tip);
}

void ToolStrip::OnLButtonDown(UINT, CPoint point) {
    Update();
    tip_.reset();
    const int which = At(point);
    if (which < 0 || !buttons_[static_cast<std::size_t>(which)].state.enabled) return;
    pressed_ = which;
    SetCapture();
    Invalidate(false);
}

void ToolStrip::OnLButtonUp(UINT, CPoint point) {
    const int which = std::exchange(pressed_, -1);
    if (which < 0) return;
    ReleaseCapture();
    Invalidate(false);
    if (At(point) != which) return;
    const Command command = buttons_[static_cast<std::size_t>(which)].command;
    onCommand(command);
}

void ToolStrip::OnCancelMode() {
    pressed_ = -1;
    Default();
}

void ToolStrip::OnDestroy() {
    tip_.reset();
    Default();
}

}  // namespace kvx::viewer
