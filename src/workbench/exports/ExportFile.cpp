#include "workbench/exports/ExportFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

namespace kvx::exports {
namespace {

namespace fs = std::filesystem;

// A file that takes the place of another when it is whole.
class Replacement {
  public:
    explicit Replacement(std::string path) : path_(std::move(path)), part_(path_ + ".part") {
        out_.rdbuf()->pubsetbuf(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        out_.open(part_, std::ios::binary | std::ios::trunc);
    }
    Replacement(const Replacement&) = delete;
    ~Replacement() {
        std::error_code ignored;
        if (!done_) fs::remove(part_, ignored);
    }

    std::ostream& Out() { return out_; }
    // Empty: it is written. Else why not.
    std::optional<Error> Close() {
        errno = 0;
        out_.close();
        if (out_) return std::nullopt;
        return Failed(errno ? std::strerror(errno) : "cannot be written");
    }
    std::optional<Error> Take() {
        std::error_code error;
        fs::rename(part_, path_, error);
        done_ = !error;
        if (error) return Failed(error.message());
        return std::nullopt;
    }
    bool IsOpen() const { return out_.is_open(); }
    Error Failed(const std::string& why) const { return Error{path_ + ": " + why}; }

  private:
    const std::string path_;
    const std::string part_;
    std::vector<char> buffer_ = std::vector<char>(1 << 18);
    std::ofstream out_;
    bool done_ = false;
};

}  // namespace

std::optional<Error> WriteFiles(const Exporter& exporter, const ExportRequest& request,
                                const std::string& path) {
    std::error_code ignored;
    if (fs::equivalent(path, request.decoded.GetRecording().Path(), ignored))
        return Error{path + ": is the recording itself"};
    if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored))
        return Error{path + ": is no file"};
    errno = 0;
    Replacement file(path);
    if (!file.IsOpen()) return file.Failed(std::strerror(errno));
    if (!exporter.write(request, file.Out())) return Error{path + ": was cancelled", true};
    if (auto failed = file.Close()) return failed;
    if (!exporter.writeCompanion) return file.Take();
    const auto beside = fs::path(path).replace_extension(exporter.companionExtension).string();
    if (beside == path) return Error{path + ": is the name of the file beside it"};
    Replacement companion(beside);
    if (!companion.IsOpen()) return companion.Failed(std::strerror(errno));
    exporter.writeCompanion(request, companion.Out());
    if (auto failed = companion.Close()) return failed;
    if (auto failed = companion.Take()) return failed;
    return file.Take();
}

}  // namespace kvx::exports
