#pragma once
// Expands placeholders in a text: "$(" name ")", where the name is built in (as a word or in its
// short form) or one that the host defines.

#include <optional>
#include <string_view>

#include "platform/base/Types.h"
#include "utils/PlaceholderNames.h"

class IQHost;
class IQProjectInformation;
class IQCustomPlaceholders;

class CPlaceholderExpander {
  public:
    // Null: names that need the host have no value. The host must outlive the expander.
    explicit CPlaceholderExpander(IQHost* host);

    // filePath: the current file, for the names that are parts of it; empty when there is none.
    // A placeholder without a value is taken out; one that another expander is to resolve stays,
    // under its full name. "$$(" opens no placeholder, and an inserted value is not expanded again.
    // At most 9,999 placeholders are handled.
    CString Expand(CString text, const CString& filePath = {}) const;

  private:
    CString Resolve(std::string_view name, const CString& filePath) const;
    // Nothing when another expander is to resolve the name.
    std::optional<CString> Value(kvx::Placeholder which, std::string_view name,
                                 const CString& filePath) const;
    std::optional<CString> ProjectValue(kvx::Placeholder which) const;

    IQProjectInformation* project_;
    IQCustomPlaceholders* custom_;
};
