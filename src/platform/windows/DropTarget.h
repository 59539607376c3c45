#pragma once
// Drop of data on a view, and of files on any window.

#include <vector>

#include "platform/base/Object.h"
#include "platform/base/Types.h"

class CView;

using DROPEFFECT = DWORD;
inline constexpr DROPEFFECT DROPEFFECT_NONE = 0;
inline constexpr DROPEFFECT DROPEFFECT_COPY = 1;
inline constexpr DROPEFFECT DROPEFFECT_MOVE = 2;
inline constexpr DROPEFFECT DROPEFFECT_LINK = 4;
inline constexpr DROPEFFECT DROPEFFECT_SCROLL = 0x80000000u;

// What is being dragged: a text, files, or neither.
class COleDataObject {
  public:
    COleDataObject() = default;
    COleDataObject(CString text, std::vector<CString> files)
        : text_(std::move(text)), files_(std::move(files)) {}
    const CString& Text() const { return text_; }
    const std::vector<CString>& Files() const { return files_; }

  private:
    CString text_;
    std::vector<CString> files_;
};

// While registered, drags over the view reach its OnDragEnter, OnDragOver, OnDragLeave and OnDrop.
// A drag that it refuses goes on to the windows below it, as dropped files too.
class COleDropTarget : public CObject {
  public:
    COleDropTarget() = default;
    ~COleDropTarget() override { Revoke(); }
    bool Register(CView* view);
    void Revoke();

  private:
    CView* view_ = nullptr;
};

// Dropped files: one plain block that crosses modules, the receiver's until DragFinish.
using HDROP = struct DropHandle*;
HDROP CreateDrop(const std::vector<CString>& files);
UINT DragQueryFileCount(HDROP drop);
// Full path; empty when index is not below the count.
CString DragQueryFile(HDROP drop, UINT index);
void DragFinish(HDROP drop);
