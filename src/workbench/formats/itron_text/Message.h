#pragma once
// The messages of an ITRON kernel text log.

#include <string>
#include <string_view>

#include "workbench/service/Record.h"

namespace kvx::formats::itron_text {

// Reads the message of a line, which is what stands behind the time, into kind, state, subject,
// target and name of record; name points into message. A message that begins like one of the
// kernel's and cannot be read is Unreadable; what the application wrote is a Comment.
// anyParameters: those of calls may have any form.
void ParseMessage(std::string_view message, service::Record& record, bool anyParameters = false);

// Parameters or returned values of a call's message as "name=value, name=value".
std::string ParseDetail(std::string_view message, bool anyParameters = false);

// False: the message may be the beginning of a longer one of the kernel's, which end in a full
// stop.
bool IsComplete(std::string_view message);

// For LineRules: the return of a call stays behind the call.
bool ReturnStaysBehindCall(std::string_view line, std::string_view before);

}  // namespace kvx::formats::itron_text
