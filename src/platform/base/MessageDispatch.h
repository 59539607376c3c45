#pragma once
// What surrounds a window's handlers: the message at work.

#include "platform/base/Types.h"

class CWnd;

namespace kvx {

// The message that is being handled, innermost first.
struct CurrentMessage {
    const CWnd* window = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    const CurrentMessage* outer = nullptr;
};
// Null outside of handlers.
const CurrentMessage* InnermostMessage();

// Makes the message the innermost one for a scope.
class MessageScope {
  public:
    MessageScope(const CWnd& window, UINT message, WPARAM wParam, LPARAM lParam);
    ~MessageScope();
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;

  private:
    CurrentMessage current_;
};

}  // namespace kvx
