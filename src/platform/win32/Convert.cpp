#include "platform/win32/Convert.h"

#include <map>

#include "platform/os/windows/Wide.h"

namespace kvx::win32 {

namespace {

const wchar_t* NameOf(StandardCursor cursor) {
    const auto name = [](int id) {
        return reinterpret_cast<const wchar_t*>(static_cast<std::uintptr_t>(id));
    };
    switch (cursor) {
        case StandardCursor::IBeam:
            return name(32513);
        case StandardCursor::Wait:
            return name(32514);
        case StandardCursor::Cross:
            return name(32515);
        case StandardCursor::SizeWE:
            return name(32644);
        case StandardCursor::SizeNS:
            return name(32645);
        case StandardCursor::SizeAll:
            return name(32646);
        case StandardCursor::No:
            return name(32648);
        case StandardCursor::Hand:
            return name(32649);
        case StandardCursor::Arrow:
            break;
    }
    return name(32512);
}

// Colours and their transparency; the mask of one bit a pixel is not looked at then.
win::HCURSOR MakeCursor(const CursorResource& image) {
    const std::vector<unsigned char> nothing(static_cast<std::size_t>((image.width + 15) / 16) * 2 *
                                             image.height);
    win::ICONINFO info = {};
    info.xHotspot = image.hotX;
    info.yHotspot = image.hotY;
    info.hbmMask = win::CreateBitmap(image.width, image.height, 1, 1, nothing.data());
    info.hbmColor = win::CreateBitmap(image.width, image.height, 1, 32, image.pixels);
    const win::HCURSOR cursor = win::CreateIconIndirect(&info);
    win::DeleteObject(info.hbmMask);
    win::DeleteObject(info.hbmColor);
    return cursor;
}

}  // namespace

std::wstring ToLines(const CString& text) {
    std::wstring lines;
    for (const wchar_t c : os::Wide(text)) {
        if (c == L'\n' && !lines.ends_with(L'\r')) lines += L'\r';
        lines += c;
    }
    return lines;
}

CString FromLines(std::wstring_view text) {
    std::wstring plain(text);
    std::erase(plain, L'\r');
    return os::Narrow(plain);
}

win::HCURSOR ToSystem(HCURSOR cursor) {
    static std::map<HCURSOR, win::HCURSOR> made;
    if (!cursor) return nullptr;
    if (!cursor->image) return win::LoadCursorW(nullptr, NameOf(cursor->standard));
    auto& known = made[cursor];
    if (!known) known = MakeCursor(*cursor->image);
    return known;
}

std::vector<CString> FilesOf(win::HDROP drop) {
    std::vector<CString> files;
    const UINT count = win::DragQueryFileW(drop, 0xFFFFFFFFu, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(win::DragQueryFileW(drop, i, nullptr, 0), L'\0');
        win::DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size() + 1));
        files.push_back(os::Narrow(path));
    }
    return files;
}

}  // namespace kvx::win32
