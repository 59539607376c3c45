#include "platform/drawing/Font.h"

bool CFont::CreateFontIndirect(const LOGFONT& font) {
    font_ = font;
    created_ = true;
    return true;
}

bool CFont::CreatePointFont(int tenths, const CString& face) {
    LOGFONT font;
    font.lfHeight = -((tenths * 96 + 360) / 720);
    font.lfFaceName = face;
    return CreateFontIndirect(font);
}

void CFont::DeleteObject() {
    font_ = {};
    created_ = false;
}

bool CFont::GetLogFont(LOGFONT* font) const {
    if (!created_) return false;
    *font = font_;
    return true;
}

const LOGFONT& DefaultGuiFont() {
    static const LOGFONT kFont = [] {
        LOGFONT font;
        font.lfHeight = -11;
        font.lfFaceName = "MS Sans Serif";
        return font;
    }();
    return kFont;
}
