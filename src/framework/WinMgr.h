#pragma once
// Divides a window among its children as a table of WINRECT entries says.
//
// Each group first gives every entry the least it needs, then what it would like, then the rest to
// the rest entry. Only when all places are known do the windows move, all at once. What an entry
// does not say of itself its window is asked for by the registered message "WM_WINMGR".

#include <cstdint>

#include "framework/WinRect.h"
#include "platform/base/Object.h"
#include "platform/base/Types.h"
#include "platform/windows/Wnd.h"

// Sizes of one entry in pixels.
struct SIZEINFO {
    SIZE available;
    SIZE desired;
    SIZE minimum;
    SIZE maximum;
};

// Codes of WINMGRNOTIFY.
inline constexpr UINT kWinMgrGetSizeInfo = 1;
inline constexpr UINT kWinMgrSizeBarMoved = 2;

// What the registered message carries: wParam is the id of the entry, lParam the address of this.
// Whoever fills it in answers something other than 0.
struct WINMGRNOTIFY {
    HWND hwndFrom = nullptr;
    UINT id = 0;
    UINT code = 0;
    SIZEINFO sizeInfo;  // code 1: in and out
    POINT moved;        // code 2: how far a sizer bar moved
};

inline constexpr UINT kWinMgrMessage = RegisterWindowMessage("WM_WINMGR");

class KVX_EXPORT CWinMgr : public CObject {
  public:
    // Links the table, which stays the caller's and must outlive the manager.
    explicit CWinMgr(WINRECT* table);
    ~CWinMgr() override = default;

    virtual void GetWindowPositions(CWnd* parent);
    virtual void SetWindowPositions(CWnd* parent);
    virtual void OnGetSizeInfo(SIZEINFO& info, WINRECT* entry, CWnd* window);
    virtual void CalcGroup(WINRECT* group, CWnd* window);
    virtual void AdjustSize(WINRECT* entry, bool row, int& remaining, CWnd* window);
    virtual void PositionRects(WINRECT* group, const RECT& rect, bool row);

    // Compute rectangles; SetWindowPositions moves the windows after.
    void CalcLayout(CWnd* window);
    void CalcLayout(int width, int height, CWnd* window);
    void CalcLayout(const CRect& rect, CWnd* window);

    void InitToFitSizeFromCurrent(CWnd* parent);
    void GetMinMaxInfo(CWnd* window, SIZEINFO& info);
    void GetMinMaxInfo(CWnd* window, MINMAXINFO* info);
    // Moves the border between an entry's neighbours; both must exist.
    void MoveRect(WINRECT* entry, CPoint delta, CWnd* window);
    void MoveRect(UINT id, CPoint delta, CWnd* window);

    // First entry of that id, or null.
    WINRECT* FindRect(UINT id) const;
    // The id must be in the table.
    CRect GetRect(UINT id) const;
    void SetRect(UINT id, const CRect& rect);
    void TRACEDump() const {}

  protected:
    int CountWindows() const;
    bool SendGetSizeInfo(SIZEINFO& info, CWnd* window, UINT id);

  private:
    void AddGroupSizes(SIZEINFO& info, WINRECT* group, CWnd* window);
    void AskWindow(SIZEINFO& info, WINRECT* entry, CWnd* window);

    WINRECT* table_;
};
