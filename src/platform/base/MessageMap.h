#pragma once
// Message maps: short constant tables from message or command id to a member function.
//
//     class CFooView : public CView {
//       protected:
//         const MessageMap& GetMessageMap() const override;
//         void OnSize(UINT type, int cx, int cy);
//         void OnExpand();
//         void OnUpdateExpand(CCmdUI& ui);
//         LRESULT OnWinMgr(WPARAM id, LPARAM notify);
//     };
//
//     const MessageMap& CFooView::GetMessageMap() const {
//         static constexpr MessageMapEntry kEntries[] = {
//             ON_WM_SIZE<&CFooView::OnSize>(),
//             ON_COMMAND<47104, &CFooView::OnExpand>(),
//             ON_UPDATE_COMMAND_UI<47104, &CFooView::OnUpdateExpand>(),
//             ON_MESSAGE<kWinMgrMessage, &CFooView::OnWinMgr>(),
//         };
//         static const MessageMap kMap{&CView::GetMessageMap(), kEntries};
//         return kMap;
//     }
//
// A handler of the wrong signature does not compile. The first entry that matches wins; the base's
// map comes after. Inside a handler Default() gives the default processing of the same message.

#include <span>
#include <utility>

#include "platform/base/Messages.h"
#include "platform/windows/CmdUI.h"

class CWnd;
class CDC;
using HDROP = struct DropHandle*;

struct MessageMapEntry {
    using Handler = LRESULT (*)(CWnd&, WPARAM, LPARAM);
    using Command = void (*)(CWnd&, UINT id);
    using Update = void (*)(CWnd&, CCmdUI&);

    UINT message = 0;  // WM_COMMAND: the entry is for the ids below
    UINT first = 0;
    UINT last = 0;
    UINT code = 0;  // notification code of a control
    Handler handler = nullptr;
    Command command = nullptr;
    Update update = nullptr;
};

struct MessageMap {
    const MessageMap* base = nullptr;
    std::span<const MessageMapEntry> entries;

    const MessageMapEntry* FindMessage(UINT message) const;
    const MessageMapEntry* FindCommand(UINT id, UINT code) const;
    const MessageMapEntry* FindUpdate(UINT id) const;
};

namespace kvx::message_map {

template <class M>
struct MemberOf;
template <class C, class R, class... A>
struct MemberOf<R (C::*)(A...)> {
    using Class = C;
};

// Calls the member on the window, with whatever arguments the caller has unpacked.
template <auto H, class... A>
decltype(auto) Call(CWnd& window, A&&... arguments) {
    using C = typename MemberOf<decltype(H)>::Class;
    return (static_cast<C&>(window).*H)(std::forward<A>(arguments)...);
}

template <auto H>
constexpr MessageMapEntry Void(UINT message) {
    return {message, 0, 0, 0, [](CWnd& w, WPARAM, LPARAM) -> LRESULT {
                Call<H>(w);
                return 0;
            }};
}
template <auto H>
constexpr MessageMapEntry Mouse(UINT message) {
    return {message, 0, 0, 0, [](CWnd& w, WPARAM flags, LPARAM point) -> LRESULT {
                Call<H>(w, static_cast<UINT>(flags), ParamPoint(point));
                return 0;
            }};
}
template <auto H>
constexpr MessageMapEntry Scroll(UINT message) {
    return {message, 0, 0, 0, [](CWnd& w, WPARAM request, LPARAM) -> LRESULT {
                const auto param = static_cast<LPARAM>(request);
                Call<H>(w, static_cast<UINT>(ParamX(param)), static_cast<int>(ParamY(param)));
                return 0;
            }};
}
template <auto H>
constexpr MessageMapEntry Key(UINT message) {
    return {message, 0, 0, 0, [](CWnd& w, WPARAM key, LPARAM flags) -> LRESULT {
                Call<H>(w, static_cast<UINT>(key), 1u, static_cast<UINT>(flags));
                return 0;
            }};
}

}  // namespace kvx::message_map

// LRESULT (WPARAM, LPARAM), for any message, registered ones too.
template <UINT M, auto H>
constexpr MessageMapEntry ON_MESSAGE() {
    return {M, 0, 0, 0, [](CWnd& w, WPARAM wParam, LPARAM lParam) -> LRESULT {
                return kvx::message_map::Call<H>(w, wParam, lParam);
            }};
}

// int (const CREATESTRUCT*): -1 fails the creation.
template <auto H>
constexpr MessageMapEntry ON_WM_CREATE() {
    return {WM_CREATE, 0, 0, 0, [](CWnd& w, WPARAM, LPARAM cs) -> LRESULT {
                return kvx::message_map::Call<H>(w, reinterpret_cast<const CREATESTRUCT*>(cs));
            }};
}
// void ()
template <auto H>
constexpr MessageMapEntry ON_WM_DESTROY() {
    return kvx::message_map::Void<H>(WM_DESTROY);
}
template <auto H>
constexpr MessageMapEntry ON_WM_PAINT() {
    return kvx::message_map::Void<H>(WM_PAINT);
}
template <auto H>
constexpr MessageMapEntry ON_WM_CLOSE() {
    return kvx::message_map::Void<H>(WM_CLOSE);
}
template <auto H>
constexpr MessageMapEntry ON_WM_CANCELMODE() {
    return kvx::message_map::Void<H>(WM_CANCELMODE);
}
template <auto H>
constexpr MessageMapEntry ON_WM_CAPTURECHANGED() {
    return kvx::message_map::Void<H>(WM_CAPTURECHANGED);
}
template <auto H>
constexpr MessageMapEntry ON_WM_SYSCOLORCHANGE() {
    return kvx::message_map::Void<H>(WM_SYSCOLORCHANGE);
}
// void (UINT type, int cx, int cy)
template <auto H>
constexpr MessageMapEntry ON_WM_SIZE() {
    return {WM_SIZE, 0, 0, 0, [](CWnd& w, WPARAM type, LPARAM size) -> LRESULT {
                kvx::message_map::Call<H>(w, static_cast<UINT>(type),
                                          static_cast<int>(ParamX(size)),
                                          static_cast<int>(ParamY(size)));
                return 0;
            }};
}
// bool (CDC*): true when the background is erased.
template <auto H>
constexpr MessageMapEntry ON_WM_ERASEBKGND() {
    return {WM_ERASEBKGND, 0, 0, 0, [](CWnd& w, WPARAM dc, LPARAM) -> LRESULT {
                return kvx::message_map::Call<H>(w, reinterpret_cast<CDC*>(dc)) ? 1 : 0;
            }};
}
// void (UINT code, int position)
template <auto H>
constexpr MessageMapEntry ON_WM_HSCROLL() {
    return kvx::message_map::Scroll<H>(WM_HSCROLL);
}
template <auto H>
constexpr MessageMapEntry ON_WM_VSCROLL() {
    return kvx::message_map::Scroll<H>(WM_VSCROLL);
}
// void (UINT key, UINT repeat, UINT flags)
template <auto H>
constexpr MessageMapEntry ON_WM_KEYDOWN() {
    return kvx::message_map::Key<H>(WM_KEYDOWN);
}
template <auto H>
constexpr MessageMapEntry ON_WM_KEYUP() {
    return kvx::message_map::Key<H>(WM_KEYUP);
}
template <auto H>
constexpr MessageMapEntry ON_WM_CHAR() {
    return kvx::message_map::Key<H>(WM_CHAR);
}
// void (UINT flags, CPoint point), client coordinates
template <auto H>
constexpr MessageMapEntry ON_WM_MOUSEMOVE() {
    return kvx::message_map::Mouse<H>(WM_MOUSEMOVE);
}
template <auto H>
constexpr MessageMapEntry ON_WM_LBUTTONDOWN() {
    return kvx::message_map::Mouse<H>(WM_LBUTTONDOWN);
}
template <auto H>
constexpr MessageMapEntry ON_WM_LBUTTONUP() {
    return kvx::message_map::Mouse<H>(WM_LBUTTONUP);
}
template <auto H>
constexpr MessageMapEntry ON_WM_LBUTTONDBLCLK() {
    return kvx::message_map::Mouse<H>(WM_LBUTTONDBLCLK);
}
template <auto H>
constexpr MessageMapEntry ON_WM_RBUTTONDOWN() {
    return kvx::message_map::Mouse<H>(WM_RBUTTONDOWN);
}
template <auto H>
constexpr MessageMapEntry ON_WM_RBUTTONUP() {
    return kvx::message_map::Mouse<H>(WM_RBUTTONUP);
}
// bool (UINT flags, short delta, CPoint screen): true when handled
template <auto H>
constexpr MessageMapEntry ON_WM_MOUSEWHEEL() {
    return {WM_MOUSEWHEEL, 0, 0, 0, [](CWnd& w, WPARAM wheel, LPARAM point) -> LRESULT {
                const auto param = static_cast<LPARAM>(wheel);
                return kvx::message_map::Call<H>(w, static_cast<UINT>(ParamX(param)),
                                                 static_cast<short>(ParamY(param)),
                                                 ParamPoint(point))
                           ? 1
                           : 0;
            }};
}
// bool (CWnd* window, UINT hitTest, UINT message): true when the cursor is set
template <auto H>
constexpr MessageMapEntry ON_WM_SETCURSOR() {
    return {WM_SETCURSOR, 0, 0, 0, [](CWnd& w, WPARAM, LPARAM) -> LRESULT {
                return kvx::message_map::Call<H>(w, &w, static_cast<UINT>(HTCLIENT),
                                                 static_cast<UINT>(WM_MOUSEMOVE))
                           ? 1
                           : 0;
            }};
}
// UINT (): DLGC_ flags
template <auto H>
constexpr MessageMapEntry ON_WM_GETDLGCODE() {
    return {WM_GETDLGCODE, 0, 0, 0, [](CWnd& w, WPARAM, LPARAM) -> LRESULT {
                return static_cast<LRESULT>(kvx::message_map::Call<H>(w));
            }};
}
// void (MINMAXINFO*)
template <auto H>
constexpr MessageMapEntry ON_WM_GETMINMAXINFO() {
    return {WM_GETMINMAXINFO, 0, 0, 0, [](CWnd& w, WPARAM, LPARAM info) -> LRESULT {
                kvx::message_map::Call<H>(w, reinterpret_cast<MINMAXINFO*>(info));
                return 0;
            }};
}
// void (int control, MEASUREITEMSTRUCT*)
template <auto H>
constexpr MessageMapEntry ON_WM_MEASUREITEM() {
    return {WM_MEASUREITEM, 0, 0, 0, [](CWnd& w, WPARAM control, LPARAM item) -> LRESULT {
                kvx::message_map::Call<H>(w, static_cast<int>(control),
                                          reinterpret_cast<MEASUREITEMSTRUCT*>(item));
                return 1;
            }};
}
// void (HDROP)
template <auto H>
constexpr MessageMapEntry ON_WM_DROPFILES() {
    return {WM_DROPFILES, 0, 0, 0, [](CWnd& w, WPARAM drop, LPARAM) -> LRESULT {
                kvx::message_map::Call<H>(w, reinterpret_cast<HDROP>(drop));
                return 0;
            }};
}
// void (CWnd* window, CPoint screen)
template <auto H>
constexpr MessageMapEntry ON_WM_CONTEXTMENU() {
    return {WM_CONTEXTMENU, 0, 0, 0, [](CWnd& w, WPARAM, LPARAM point) -> LRESULT {
                kvx::message_map::Call<H>(w, &w, ParamPoint(point));
                return 0;
            }};
}

// void (): a command of a menu, toolbar or key, or a click on a button of that id.
template <UINT Id, auto H>
constexpr MessageMapEntry ON_COMMAND() {
    return {WM_COMMAND, Id, Id, 0, nullptr, [](CWnd& w, UINT) { kvx::message_map::Call<H>(w); }};
}
template <UINT Id, auto H>
constexpr MessageMapEntry ON_BN_CLICKED() {
    return ON_COMMAND<Id, H>();
}
// void (UINT id)
template <UINT First, UINT Last, auto H>
constexpr MessageMapEntry ON_COMMAND_RANGE() {
    return {WM_COMMAND, First,   Last,
            0,          nullptr, [](CWnd& w, UINT id) { kvx::message_map::Call<H>(w, id); }};
}
// void (): a notification of a control, such as EN_CHANGE.
template <UINT Code, UINT Id, auto H>
constexpr MessageMapEntry ON_CONTROL() {
    return {WM_COMMAND, Id, Id, Code, nullptr, [](CWnd& w, UINT) { kvx::message_map::Call<H>(w); }};
}
// void (CCmdUI&)
template <UINT Id, auto H>
constexpr MessageMapEntry ON_UPDATE_COMMAND_UI() {
    return {WM_COMMAND, Id, Id, 0, nullptr, nullptr, [](CWnd& w, CCmdUI& ui) {
                kvx::message_map::Call<H>(w, ui);
            }};
}
template <UINT First, UINT Last, auto H>
constexpr MessageMapEntry ON_UPDATE_COMMAND_UI_RANGE() {
    return {WM_COMMAND, First, Last, 0, nullptr, nullptr, [](CWnd& w, CCmdUI& ui) {
                kvx::message_map::Call<H>(w, ui);
            }};
}
