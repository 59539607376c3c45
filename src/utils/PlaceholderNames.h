#pragma once
// The built-in names of placeholders.

#include <optional>
#include <string_view>

#include "platform/base/Types.h"

namespace kvx {

enum class Placeholder {
    kError,  // never has a value
    kFullFile,
    kFileName,
    kFileLeaf,
    kFileDir,
    kExtension,
    kHomeDir,
    kTemporaryDir,
    kWorkspaceDir,
    kWorkspaceName,
    kProjectDir,
    kProjectName,
    kConfigName,
    kConfigDir,
    kToolchainInstall,
    kExeDir,
    kExeName,
    kWindowsDir,
    kSystemDir,
    kLine,
    kToolDir,
    kHomeWindow,
    kHomeId,
    kTime,
    kDateText,
    kDateDmy,
    kDateMdy,
    kDateYmd,
    kUser,
    kCursor,
    kPageNumber,
    kLeft,
    kCentre,
    kRight,
    kUserInput,
    kDeviceDetails
};

// By word, then by short form. Names are case-sensitive, except that every name beginning with
// USERINPUT (short UI), in any case, is a prompt for user input.
std::optional<Placeholder> FindPlaceholderName(std::string_view name);

// "$(WORD)".
CString PlaceholderText(Placeholder which);

}  // namespace kvx
