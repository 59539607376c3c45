#pragma once
// Failures that the user must see: a modal box with "ERROR: …". What is to be shown stands in the
// error record of the module's host; while that host has none nothing is shown.

#include "platform/base/Types.h"

class IQHost;

// Each connected component object opens the record of its host and closes it in the end.
void OpenErrorRecord(IQHost* host);
// True: other objects still have the record open.
bool CloseErrorRecord(IQHost* host);

// The string of the resource library, with the argument in place of its "%s".
void ShowErrorMessage(UINT stringId);
void ShowErrorMessage(UINT stringId, const CString& argument);
// What is pending in the record, else the last error of the debugger library.
void ShowPendingError();
