#include "workbench/desktop/docking/AcceleratorKeys.h"

#include <array>

namespace kvx::desktop {
namespace {

struct KeyRow {
    std::uint16_t code;
    Qt::Key key;
};

constexpr std::array kKeys = {
    KeyRow{0x08, Qt::Key_Backspace}, KeyRow{0x09, Qt::Key_Tab},       KeyRow{0x0D, Qt::Key_Return},
    KeyRow{0x1B, Qt::Key_Escape},    KeyRow{0x20, Qt::Key_Space},     KeyRow{0x21, Qt::Key_PageUp},
    KeyRow{0x22, Qt::Key_PageDown},  KeyRow{0x23, Qt::Key_End},       KeyRow{0x24, Qt::Key_Home},
    KeyRow{0x25, Qt::Key_Left},      KeyRow{0x26, Qt::Key_Up},        KeyRow{0x27, Qt::Key_Right},
    KeyRow{0x28, Qt::Key_Down},      KeyRow{0x2D, Qt::Key_Insert},    KeyRow{0x2E, Qt::Key_Delete},
    KeyRow{0x6A, Qt::Key_Asterisk},  KeyRow{0x6B, Qt::Key_Plus},      KeyRow{0x6D, Qt::Key_Minus},
    KeyRow{0x6F, Qt::Key_Slash},     KeyRow{0xBA, Qt::Key_Semicolon}, KeyRow{0xBB, Qt::Key_Plus},
    KeyRow{0xBC, Qt::Key_Comma},     KeyRow{0xBD, Qt::Key_Minus},     KeyRow{0xBE, Qt::Key_Period},
    KeyRow{0xBF, Qt::Key_Slash},
};

constexpr std::uint16_t kF1 = 0x70;
constexpr std::uint16_t kF24 = 0x87;

// 0: no such key.
int KeyOf(std::uint16_t code) {
    for (const KeyRow& row : kKeys) {
        if (row.code == code) return row.key;
    }
    if (code >= kF1 && code <= kF24) return Qt::Key_F1 + (code - kF1);
    const bool isCapitalOrDigit = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z');
    const bool isPunctuation = code >= ':' && code <= '@';
    return isCapitalOrDigit || isPunctuation ? code : 0;
}

}  // namespace

QKeySequence KeySequenceOf(const Accelerator& accelerator) {
    const int key = KeyOf(accelerator.key);
    if (key == 0) return {};
    Qt::KeyboardModifiers modifiers;
    if (accelerator.control) modifiers |= Qt::ControlModifier;
    if (accelerator.shift) modifiers |= Qt::ShiftModifier;
    if (accelerator.alt) modifiers |= Qt::AltModifier;
    return QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(key)));
}

}  // namespace kvx::desktop
