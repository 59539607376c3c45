#pragma once
// Logical fonts. A font is a value: the back-end realises it when text is measured or drawn.

#include "platform/base/Object.h"
#include "platform/base/Types.h"

inline constexpr int FW_NORMAL = 400;
inline constexpr int FW_BOLD = 700;

struct LOGFONT {
    // Pixels: positive the height of the cell, negative (after the sign) that of the characters
    // without internal leading, 0 the default.
    int lfHeight = 0;
    int lfWidth = 0;  // average character width in pixels; 0: as the face has it
    int lfWeight = FW_NORMAL;
    bool lfItalic = false;
    bool lfUnderline = false;
    CString lfFaceName;
    friend bool operator==(const LOGFONT&, const LOGFONT&) = default;
};

// Pixels.
struct TEXTMETRIC {
    int tmHeight = 0;
    int tmAscent = 0;
    int tmDescent = 0;
    int tmInternalLeading = 0;
    int tmExternalLeading = 0;
    int tmAveCharWidth = 0;
    int tmMaxCharWidth = 0;
};

class CFont : public CObject {
  public:
    CFont() = default;
    bool CreateFontIndirect(const LOGFONT& font);
    // tenths: size in tenths of a point, at 96 pixels an inch.
    bool CreatePointFont(int tenths, const CString& face);
    void DeleteObject();
    // False when nothing has been created.
    bool GetLogFont(LOGFONT* font) const;
    bool IsCreated() const { return created_; }
    const LOGFONT& Description() const { return font_; }

  private:
    LOGFONT font_;
    bool created_ = false;
};

// The font of dialogs and status bars that name none.
const LOGFONT& DefaultGuiFont();
