#include "utils/PlaceholderNames.h"

#include <strings.h>

#include <array>

namespace kvx {
namespace {

struct Name {
    std::string_view word;
    std::string_view shortForm;
};

// In the order of the enumeration. A short form that occurs twice means the first of its words.
constexpr std::array<Name, 36> kNames = {{
    {"ERROR", "ERROR"},
    {"FULLFILE", "FF"},
    {"FILENAME", "FN"},
    {"FILELEAF", "FL"},
    {"FILEDIR", "FD"},
    {"EXTENSION", "EX"},
    {"OWBDIR", "OD"},
    {"TEMPDIR", "TD"},
    {"WORKSPDIR", "WD"},
    {"WORKSPNAME", "WN"},
    {"PROJDIR", "PD"},
    {"PROJECTNAME", "PN"},
    {"CONFIGNAME", "CN"},
    {"CONFIGDIR", "CD"},
    {"TCINSTALL", "TI"},
    {"EXEDIR", "ED"},
    {"EXENAME", "EN"},
    {"WINDIR", "WI"},
    {"WINSYSDIR", "WS"},
    {"LINE", "LN"},
    {"TOOLDIR", "TD"},
    {"OWB_HWND", "OH"},
    {"OWB_ID", "OI"},
    {"TIME", "TM"},
    {"DATE_TEXT", "DT"},
    {"DATE_DMY", "DD"},
    {"DATE_MDY", "DM"},
    {"DATE_YMD", "DY"},
    {"USER", "UR"},
    {"CURSOR", "CU"},
    {"PAGENO", "PN"},
    {"LEFT", "LE"},
    {"CENTRE", "CE"},
    {"RIGHT", "RI"},
    {"USERINPUT***", "UI***"},
    {"DEVICEDETAILS", "DEERROR"},
}};
static_assert(kNames.size() == static_cast<std::size_t>(Placeholder::kDeviceDetails) + 1);

constexpr std::string_view kOpenEnd = "***";

bool Matches(std::string_view entry, std::string_view name) {
    if (entry == name) return true;
    if (entry.size() <= kOpenEnd.size() || !entry.ends_with(kOpenEnd)) return false;
    const std::string_view beginning = entry.substr(0, entry.size() - kOpenEnd.size());
    return name.size() >= beginning.size() &&
           strncasecmp(name.data(), beginning.data(), beginning.size()) == 0;
}

std::optional<Placeholder> FindIn(std::string_view Name::*table, std::string_view name) {
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (Matches(kNames[i].*table, name)) return static_cast<Placeholder>(i);
    }
    return std::nullopt;
}

}  // namespace

std::optional<Placeholder> FindPlaceholderName(std::string_view name) {
    const auto byWord = FindIn(&Name::word, name);
    return byWord ? byWord : FindIn(&Name::shortForm, name);
}

CString PlaceholderText(Placeholder which) {
    return "$(" + CString(kNames[static_cast<std::size_t>(which)].word) + ")";
}

}  // namespace kvx
