#pragma once
// Texts under keys that outlive the session: colours, column widths, window lists.

#include "platform/base/Types.h"

class IWorkspaceStore {
  public:
    virtual ~IWorkspaceStore() = default;
    virtual void WriteText(const CString& key, const CString& text) = 0;
    // The fallback when nothing is stored under the key.
    virtual CString ReadText(const CString& key, const CString& fallback) = 0;

    // A number is stored as decimal text; a text that is not one number reads as the fallback.
    void WriteNumber(const CString& key, std::int32_t number);
    std::int32_t ReadNumber(const CString& key, std::int32_t fallback);
};
