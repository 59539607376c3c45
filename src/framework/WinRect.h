#pragma once
// One entry of a window layout table: how a child window, or a nested row or column of them, gets
// its share of the space. Tables are written down like brackets: an entry opens a group, its end
// entry closes it, other groups may stand between the two, and flags of 0 end the whole.

#include "platform/base/Types.h"

// Group kind, bits 4 to 7 of the flags.
inline constexpr std::uint16_t RCGROUP = 0x00F0;
inline constexpr std::uint16_t RCROWGROUP = 0x0010;
inline constexpr std::uint16_t RCCOLGROUP = 0x0020;
inline constexpr std::uint16_t RCENDGROUP = 0x00F0;

// Type, bits 0 to 3 of the flags.
inline constexpr std::uint16_t RCTYPE = 0x000F;
inline constexpr std::uint16_t RCPLAIN = 0;
inline constexpr std::uint16_t RCFIXED = 1;    // param: pixels; negative: may shrink to 0
inline constexpr std::uint16_t RCPERCENT = 2;  // param: per cent of the group
inline constexpr std::uint16_t RCREST = 3;
inline constexpr std::uint16_t RCTOFIT =
    4;  // param: the width in its lower, the height in its upper half

class KVX_EXPORT WINRECT {
  public:
    WINRECT(std::uint16_t flags, UINT id, std::int32_t param)
        : flags_(flags), id_(id), param_(param) {}

    WINRECT* Next() const { return next_; }
    WINRECT* Prev() const { return prev_; }
    // The group entry that opens this entry's level. Must not be called on the root.
    WINRECT* Parent();
    // The first child of a group; null for other entries and for an empty group.
    WINRECT* Children() { return IsGroup() && !this[1].IsEndGroup() ? this + 1 : nullptr; }

    std::uint16_t GetFlags() const { return flags_; }
    std::uint16_t SetFlags(std::uint16_t flags) { return flags_ = flags; }
    UINT GetID() const { return id_; }
    UINT SetID(UINT id) { return id_ = id; }
    std::int32_t GetParam() const { return param_; }
    std::int32_t SetParam(std::int32_t param) { return param_ = param; }
    RECT& GetRect() { return rect_; }
    const RECT& GetRect() const { return rect_; }
    void SetRect(const RECT& rect) { rect_ = rect; }

    std::uint16_t Type() const { return flags_ & RCTYPE; }
    std::uint16_t GroupType() const { return flags_ & RCGROUP; }
    bool IsGroup() const { return GroupType() != 0 && GroupType() != RCENDGROUP; }
    bool IsEndGroup() const { return flags_ == 0 || flags_ == RCENDGROUP; }
    bool IsEnd() const { return flags_ == 0; }
    bool IsWindow() const { return id_ != 0; }
    bool IsRowGroup() const { return GroupType() == RCROWGROUP; }

    void SetWidth(std::int32_t width) { rect_.right = rect_.left + width; }
    void SetHeight(std::int32_t height) { rect_.bottom = rect_.top + height; }
    std::int32_t GetHeightOrWidth(bool height) const {
        return height ? rect_.Height() : rect_.Width();
    }
    void SetHeightOrWidth(std::int32_t value, bool height) {
        height ? SetHeight(value) : SetWidth(value);
    }

    bool HasToFitSize() const { return param_ != 0; }
    SIZE GetToFitSize() const;
    void SetToFitSize(SIZE size);
    // The margins of a group; otherwise both 0 and false.
    bool GetMargins(int& x, int& y) const;

    // Links the entries of one level and, recursively, of its groups. Answers the entry that closes
    // the level when a parent is given, else null.
    static WINRECT* InitMap(WINRECT* first, WINRECT* parent);

  private:
    WINRECT* next_ = nullptr;
    WINRECT* prev_ = nullptr;
    RECT rect_;
    std::uint16_t flags_;
    UINT id_;
    std::int32_t param_;
};
