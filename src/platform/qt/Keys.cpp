#include "platform/qt/Keys.h"

#include "platform/base/Keys.h"

#include <array>

#include "platform/base/Messages.h"

namespace kvx::qt {

namespace {

struct KeyPair {
    int key;
    UINT code;
};

constexpr std::array kKeys = {
    KeyPair{Qt::Key_Backspace, VK_BACK},  KeyPair{Qt::Key_Tab, VK_TAB},
    KeyPair{Qt::Key_Backtab, VK_TAB},     KeyPair{Qt::Key_Return, VK_RETURN},
    KeyPair{Qt::Key_Enter, VK_RETURN},    KeyPair{Qt::Key_Shift, VK_SHIFT},
    KeyPair{Qt::Key_Control, VK_CONTROL}, KeyPair{Qt::Key_Alt, VK_MENU},
    KeyPair{Qt::Key_Escape, VK_ESCAPE},   KeyPair{Qt::Key_PageUp, VK_PRIOR},
    KeyPair{Qt::Key_PageDown, VK_NEXT},   KeyPair{Qt::Key_End, VK_END},
    KeyPair{Qt::Key_Home, VK_HOME},       KeyPair{Qt::Key_Left, VK_LEFT},
    KeyPair{Qt::Key_Up, VK_UP},           KeyPair{Qt::Key_Right, VK_RIGHT},
    KeyPair{Qt::Key_Down, VK_DOWN},       KeyPair{Qt::Key_Insert, VK_INSERT},
    KeyPair{Qt::Key_Delete, VK_DELETE},   KeyPair{Qt::Key_Plus, VK_ADD},
    KeyPair{Qt::Key_Minus, VK_SUBTRACT},
};

}  // namespace

UINT VirtualKeyOf(const QKeyEvent& event) {
    const int key = event.key();
    for (const KeyPair& pair : kKeys)
        if (pair.key == key) return pair.code;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return VK_F1 + static_cast<UINT>(key - Qt::Key_F1);
    const bool same = key == Qt::Key_Space || (key >= Qt::Key_0 && key <= Qt::Key_9) ||
                      (key >= Qt::Key_A && key <= Qt::Key_Z);
    return same ? static_cast<UINT>(key) : 0;
}

UINT MouseFlagsOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    UINT flags = 0;
    if (buttons & Qt::LeftButton) flags |= MK_LBUTTON;
    if (buttons & Qt::RightButton) flags |= MK_RBUTTON;
    if (buttons & Qt::MiddleButton) flags |= MK_MBUTTON;
    if (modifiers & Qt::ShiftModifier) flags |= MK_SHIFT;
    if (modifiers & Qt::ControlModifier) flags |= MK_CONTROL;
    if (modifiers & Qt::AltModifier) flags |= MK_ALT;
    return flags;
}

}  // namespace kvx::qt
