#pragma once
// A whole session with a host in whatever state it is: windows open and close, every event comes,
// every command, key and client interface is used, and all of it goes again. The host may lack
// anything; what it must find afterwards is that nothing is left behind.

#include "component/ModuleBoxes.h"
#include "component/TestHost.h"

namespace kvx::test {

// Answers the texts of the message boxes that were shown. Dialogs are closed.
std::vector<std::string> LiveThroughADay(TestHost& host);

}  // namespace kvx::test
