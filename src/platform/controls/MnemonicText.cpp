#include "platform/controls/MnemonicText.h"

namespace kvx {

CString WithoutMnemonics(const CString& text) {
    CString shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size()) ++i;
        shown += text[i];
    }
    return shown;
}

}  // namespace kvx
