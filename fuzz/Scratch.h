#pragma once
// A folder in memory for the files of one input, there for the time of the program.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace kvx::fuzz {

class Scratch {
  public:
    Scratch() {
        std::string pattern = "/dev/shm/kvx-fuzz-XXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    Scratch(const Scratch&) = delete;
    ~Scratch() { std::filesystem::remove_all(path_); }

    std::string Path(const char* name) const { return (path_ / name).string(); }
    void Write(const char* name, std::string_view content) const {
        const auto path = path_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
    }
    void Remove(const char* name) const { std::filesystem::remove_all(path_ / name); }

  private:
    std::filesystem::path path_;
};

// Takes the part up to the separator, and it, from the front of the rest; all of it where there is
// none.
inline std::string_view TakePart(std::string_view& rest, std::string_view separator) {
    const auto end = rest.find(separator);
    const auto part = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + separator.size());
    return part;
}

inline std::string_view AsText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

}  // namespace kvx::fuzz
