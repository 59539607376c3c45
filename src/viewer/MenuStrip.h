#pragma once
// The menu bar: the titles of the popups side by side.

#include "platform/windows/Wnd.h"
#include "viewer/MenuTree.h"

namespace kvx::viewer {

class MenuStrip : public CWnd {
  public:
    static constexpr int kHeight = 22;

    explicit MenuStrip(const MenuTree& menus) : menus_(menus) {}

    // The user opened a popup, whose lower left corner is to stand there.
    std::function<void(const MenuEntry& popup, POINT screen)> onOpen;

    // The popup whose letter is underlined, or, without a letter, the first one. False: none.
    bool Open(UINT letter = 0);

  protected:
    const MessageMap& GetMessageMap() const override;

  private:
    void OnPaint();
    void OnLButtonDown(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    LRESULT OnMouseLeave(WPARAM, LPARAM);
    void ShowHot(int which);
    void OpenAt(std::size_t which);
    // Left edges of the titles, and the end of the last.
    std::vector<int> Edges();
    int At(int x);

    const MenuTree& menus_;
    int hot_ = -1;  // under the pointer, or open
};

}  // namespace kvx::viewer
