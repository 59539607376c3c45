#include "workbench/simulation/FileOutput.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace kvx::simulation {

FileOutput::FileOutput(const std::string& path)
    : path_(path), file_(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
    if (file_ < 0) error_ = errno;
}

FileOutput::~FileOutput() {
    Close();
}

bool FileOutput::IsRegular() const {
    struct stat status {};
    return fstat(file_, &status) == 0 && S_ISREG(status.st_mode);
}

bool FileOutput::Write(std::string_view bytes) {
    while (!bytes.empty() && error_ == 0) {
        const ssize_t written = write(file_, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            error_ = errno;
    }
    return error_ == 0;
}

bool FileOutput::Close() {
    if (file_ >= 0 && close(file_) != 0 && error_ == 0) error_ = errno;
    file_ = -1;
    return error_ == 0;
}

std::string FileOutput::Failure() const {
    return path_ + ": " + std::generic_category().message(error_);
}

std::string WriteFile(const std::string& path, std::string_view bytes) {
    FileOutput file(path);
    return file.Write(bytes) && file.Close() ? "" : file.Failure();
}

}  // namespace kvx::simulation
