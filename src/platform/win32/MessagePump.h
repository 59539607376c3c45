#pragma once
// Loops that dispatch the system's messages: the program's, modal ones, and the one that serves a
// single window while the rest of the program waits.

#include "platform/win32/System.h"

namespace kvx::win32 {

// Until the program is asked to quit; the code that it is asked with.
int RunMessages();
// Until the condition, which is looked at after every message, no longer holds or the program is
// asked to quit.
template <class Condition>
void RunMessagesWhile(Condition holds);

// One message, waited for; false when the program is asked to quit, which stays asked.
bool DispatchNext();

// Dispatches what waits for the window, its children and the windows it owns, without waiting for
// more. What waits for others goes on waiting. Null: dispatches everything that waits.
void DispatchWaitingFor(win::HWND window);

template <class Condition>
void RunMessagesWhile(Condition holds) {
    while (holds() && DispatchNext()) {
    }
}

}  // namespace kvx::win32
