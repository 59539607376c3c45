#include "platform/dialogs/DialogResponder.h"

#include <utility>

namespace {
IDialogResponder* g_responder = nullptr;
}

IDialogResponder* SetDialogResponder(IDialogResponder* responder) {
    return std::exchange(g_responder, responder);
}

IDialogResponder* GetDialogResponder() {
    return g_responder;
}
