#include "utils/Profile.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/base/Text.h"

namespace {

std::string_view Trim(std::string_view text) {
    text = kvx::TrimLeft(text);
    const auto end = text.find_last_not_of(" \t\r\n");
    return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

bool IsSection(std::string_view line) {
    line = Trim(line);
    return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

std::string_view SectionName(std::string_view line) {
    line = Trim(line);
    return Trim(line.substr(1, line.size() - 2));
}

// A profile as its lines; where a section ends and where a key stands.
class ProfileLines {
  public:
    explicit ProfileLines(const CString& file) {
        std::ifstream in(file, std::ios::binary);
        for (CString line; std::getline(in, line);) lines_.push_back(line);
        std::error_code error;
        wereRead_ = in.is_open() ? !in.bad() : !std::filesystem::exists(file, error);
    }

    // False for a file that is there but cannot be read.
    bool WereRead() const { return wereRead_; }

    std::optional<CString> Find(const CString& section, const CString& key) const {
        const auto [begin, end] = Section(section);
        for (std::size_t i = begin; i < end; ++i) {
            if (IsKey(lines_[i], key)) {
                return CString(Trim(std::string_view(lines_[i]).substr(lines_[i].find('=') + 1)));
            }
        }
        return std::nullopt;
    }

    void Set(const CString& section, const CString& key, const CString& value) {
        auto [begin, end] = Section(section);
        const CString line = key + "=" + value;
        if (begin == 0) {
            lines_.push_back("[" + section + "]");
            lines_.push_back(line);
            return;
        }
        for (std::size_t i = begin; i < end; ++i) {
            if (IsKey(lines_[i], key)) {
                lines_[i] = line;
                return;
            }
        }
        while (end > begin && Trim(lines_[end - 1]).empty()) --end;
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(end), line);
    }

    bool Write(const CString& file) const {
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        for (const CString& line : lines_) out << line << '\n';
        out.flush();
        return out.good();
    }

  private:
    static bool IsKey(std::string_view line, std::string_view key) {
        const auto equals = line.find('=');
        return equals != std::string_view::npos && EqualNoCase(Trim(line.substr(0, equals)), key);
    }

    // Lines of the section, without its head; (0, 0) when there is none.
    std::pair<std::size_t, std::size_t> Section(std::string_view section) const {
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (!IsSection(lines_[i]) || !EqualNoCase(SectionName(lines_[i]), section)) continue;
            std::size_t end = i + 1;
            while (end < lines_.size() && !IsSection(lines_[end])) ++end;
            return {i + 1, end};
        }
        return {0, 0};
    }

    std::vector<CString> lines_;
    bool wereRead_ = false;
};

bool Holds(const CString& text, const char* characters) {
    return text.find_first_of(characters) != CString::npos;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

CString AfxGetProfileString(const CString& file, const CString& section, const CString& key,
                            const CString& fallback) {
    return ProfileLines(file).Find(section, key).value_or(fallback);
}

int AfxGetProfileInt(const CString& file, const CString& section, const CString& key,
                     int fallback) {
    const CString text = AfxGetProfileString(file, section, key, "");
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? value : fallback;
}

bool AfxGetProfileStruct(const CString& file, const CString& section, const CString& key,
                         std::span<std::byte> out) {
    const CString text = AfxGetProfileString(file, section, key, "");
    if (text.size() != 2 * out.size()) return false;
    if (!std::ranges::all_of(text, [](char c) { return HexDigit(c) >= 0; })) return false;
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = static_cast<std::byte>(HexDigit(text[2 * i]) * 16 + HexDigit(text[2 * i + 1]));
    }
    return true;
}

bool AfxWriteProfileString(const CString& file, const CString& section, const CString& key,
                           const CString& value) {
    if (Holds(section, "\r\n]") || Holds(key, "\r\n=") || Holds(value, "\r\n")) return false;
    ProfileLines lines(file);
    if (!lines.WereRead()) return false;
    lines.Set(section, key, value);
    return lines.Write(file);
}

bool AfxWriteProfileInt(const CString& file, const CString& section, const CString& key,
                        int value) {
    return AfxWriteProfileString(file, section, key, std::to_string(value));
}

bool AfxWriteProfileStruct(const CString& file, const CString& section, const CString& key,
                           std::span<const std::byte> value) {
    CString text;
    for (const std::byte b : value) text += kvx::FormatText("%02x", static_cast<unsigned>(b));
    return AfxWriteProfileString(file, section, key, text);
}
