#pragma once
// Texts between the host interfaces (BSTR, UTF-8) and the toolkit.

#include <QLocale>
#include <QString>
#include <string>

#include "platform/base/Automation.h"

namespace kvx::desktop {

inline QString FromBstr(const char16_t* text) {
    return text ? QString::fromUtf16(text) : QString();
}

// A new text; the receiver frees it.
inline BSTR NewBstr(const QString& text) {
    return SysAllocString(
        {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())});
}

inline QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A count as the Workbench shows it to people, in the language of its texts: "1,234".
inline QString CountText(std::uint64_t count) {
    return QLocale(QLocale::English).toString(static_cast<qulonglong>(count));
}

}  // namespace kvx::desktop
