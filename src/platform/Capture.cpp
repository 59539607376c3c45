#include "platform/Capture.h"

#include "platform/Backend.h"
#include "platform/Wnd.h"

bool CaptureWindow(HWND window, const CString& pngPath) {
    return IsWindow(window) && kvx::Backend().Windows().SavePicture(window, pngPath);
}
