#pragma once
// A first look at the metadata of a CTF trace: whether it is any, and why the library may refuse
// it, which it does not always say.

#include <string>
#include <string_view>

#include "workbench/service/Result.h"

namespace kvx::formats::ctf {

// Text or packets, as CTF 1.8 allows.
bool LooksLikeMetadata(std::string_view bytes);

// The text of metadata that is text, or of the packets that hold it. An error says at which byte a
// packet is damaged, without naming the file.
Result<std::string> MetadataText(std::string_view bytes);

// The text with comments and strings blanked out; line ends stay.
std::string WithoutCommentsAndStrings(std::string_view text);

// What is wrong with the text, with the line: an unsupported version, brackets that do not match.
// Empty: nothing that this look finds.
std::string FindMetadataFault(std::string_view text);

}  // namespace kvx::formats::ctf
