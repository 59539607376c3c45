#pragma once
// Failures that the user must see: a modal box with "ERROR: …".

#include "platform/Types.h"

// The string of the resource library, with the argument in place of its "%s". Nothing is shown
// while no host is connected.
void ShowErrorMessage(UINT stringId);
void ShowErrorMessage(UINT stringId, const CString& argument);
// The last error of the debugger library.
void ShowDebuggerError();
