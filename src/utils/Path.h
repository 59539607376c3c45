#pragma once
// Paths of files and modules. Paths are UTF-8 with the platform's separator.

#include "platform/base/Types.h"

class CMenu;

namespace kvx {

// Directory of a path, without a trailing separator; "." for a bare name.
CString DirectoryOf(const CString& path);
CString FileNameOf(const CString& path);
// What follows the last "."; without one it is the path itself.
CString ExtensionOf(const CString& path);
CString JoinPath(const CString& directory, const CString& name);

}  // namespace kvx

KVX_EXPORT bool AfxIsFileExist(const CString& path);
// Directory of the module that the component's code is in; empty on failure.
KVX_EXPORT CString AfxGetModuleDirectory();
// The first popup of the menu whose text equals exactly, or null.
KVX_EXPORT CMenu* AfxFindSubMenu(CMenu* menu, const CString& text);
// The text cut to so many characters; a cut text ends in "...".
KVX_EXPORT CString AfxMakeShortString(const CString& text, std::size_t characters);
