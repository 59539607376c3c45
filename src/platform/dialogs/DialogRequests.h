#pragma once
// What a standard dialog is asked to show.

#include <vector>

#include "platform/base/Types.h"

struct MessageBoxRequest {
    HWND owner = nullptr;
    CString text;
    CString caption;
    UINT type = 0;  // MB_ flags
};

struct FileFilter {
    CString label;
    CString patterns;  // "*.csv;*.txt"
};

struct FileDialogRequest {
    bool open = true;  // else: save
    HWND owner = nullptr;
    CString title;
    CString directory;
    CString name;
    std::vector<FileFilter> filters;
};
