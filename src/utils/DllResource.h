#pragma once
// Loads the resource library and checks that it is one, of the right version.

#include <memory>

#include "platform/base/Resources.h"
#include "platform/base/Types.h"

class CDllResource {
  public:
    // Null when the library is refused; message then says why. On success the library is the
    // module's current resource module until the object is deleted; then that of an older object
    // is, if one is left.
    static std::unique_ptr<CDllResource> Load(const CString& path, CString& message);
    ~CDllResource();
    CDllResource(const CDllResource&) = delete;
    CDllResource& operator=(const CDllResource&) = delete;

  private:
    explicit CDllResource(HMODULE module) : module_(module) {}
    // Empty when the library is acceptable.
    CString Probe(const CString& path) const;

    HMODULE module_;
};
