#pragma once
// Profile files: sections in brackets with "key=value" lines. Sections and keys compare without
// regard to case. A file that cannot be read holds nothing.

#include <cstddef>
#include <span>

#include "platform/base/Types.h"

KVX_EXPORT CString AfxGetProfileString(const CString& file, const CString& section,
                                       const CString& key, const CString& fallback);
KVX_EXPORT int AfxGetProfileInt(const CString& file, const CString& section, const CString& key,
                                int fallback);
// Bytes stored as hexadecimal digits; false (and out untouched) unless exactly out.size() are
// there.
KVX_EXPORT bool AfxGetProfileStruct(const CString& file, const CString& section, const CString& key,
                                    std::span<std::byte> out);

// Each keeps every other line of the file. False, and nothing is written, when the file cannot be
// read or written, or when section, key or value would not read back as they are.
KVX_EXPORT bool AfxWriteProfileString(const CString& file, const CString& section,
                                      const CString& key, const CString& value);
KVX_EXPORT bool AfxWriteProfileInt(const CString& file, const CString& section, const CString& key,
                                   int value);
KVX_EXPORT bool AfxWriteProfileStruct(const CString& file, const CString& section,
                                      const CString& key, std::span<const std::byte> value);
