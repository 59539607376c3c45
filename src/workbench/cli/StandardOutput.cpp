#include "workbench/cli/StandardOutput.h"

#include <cerrno>

#include "platform/os/Descriptors.h"

namespace kvx::cli {
StandardOutput::StandardOutput() : stream_(this) {
    os::PrepareStandardStreams();
    setp(kept_.data(), kept_.data() + kept_.size());
    stream_.exceptions(std::ios::badbit);
}

StandardOutput::int_type StandardOutput::overflow(int_type c) {
    sync();
    return traits_type::eq_int_type(c, traits_type::eof()) ? traits_type::not_eof(c)
                                                           : sputc(traits_type::to_char_type(c));
}

int StandardOutput::sync() {
    const char* from = pbase();
    while (from < pptr()) {
        const auto written =
            os::WriteBytes(os::kStandardOutput, from, static_cast<std::size_t>(pptr() - from));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            setp(kept_.data(), kept_.data() + kept_.size());
            throw OutputFailure(errno);
        }
        from += written;
    }
    setp(kept_.data(), kept_.data() + kept_.size());
    return 0;
}

}  // namespace kvx::cli
