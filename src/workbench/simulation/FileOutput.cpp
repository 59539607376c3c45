#include "workbench/simulation/FileOutput.h"

#include <cerrno>
#include <system_error>

#include "platform/os/Descriptors.h"

namespace kvx::simulation {

FileOutput::FileOutput(const std::string& path) : path_(path), file_(os::OpenForWriting(path)) {
    if (file_ < 0) error_ = errno;
}

FileOutput::~FileOutput() {
    Close();
}

bool FileOutput::IsRegular() const {
    return os::IsRegularFile(file_);
}

bool FileOutput::Write(std::string_view bytes) {
    while (!bytes.empty() && error_ == 0) {
        const auto written = os::WriteBytes(file_, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            error_ = errno;
    }
    return error_ == 0;
}

bool FileOutput::Close() {
    if (file_ >= 0 && !os::CloseDescriptor(file_) && error_ == 0) error_ = errno;
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
