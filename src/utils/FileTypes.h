#pragma once
// Which window shows files of which type: the debugger's file-type table, a profile file with one
// section an extension (keys "WindowName" and "IsText").

#include "platform/base/Types.h"

namespace kvx {

// Name of the window registered for the file's extension, or empty. A file registered as text that
// holds a zero byte has none. The path of the table is found once and then kept, unless the table
// does not exist.
CString WindowNameOfFile(const CString& path);

}  // namespace kvx
