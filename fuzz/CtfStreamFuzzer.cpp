// The library leaks on some metadata that it refuses: run the fuzzer with
// ASAN_OPTIONS=detect_leaks=0.
//
// CTF: the metadata up to the first zero byte, if there is one, then the stream; otherwise a stream
// of a Zephyr kernel.

#include <filesystem>
#include <fstream>
#include <string_view>

#include "fuzz/DecodeAll.h"

namespace {

constexpr std::string_view kMetadata = R"(/* CTF 1.8 */
typealias integer { size = 8; align = 8; signed = false; } := uint8_t;
typealias integer { size = 32; align = 8; signed = false; } := uint32_t;
typealias integer { size = 32; align = 8; signed = true; } := int32_t;
typealias integer { size = 8; align = 8; signed = false; encoding = ASCII; } := name_t;
trace { major = 1; minor = 8; byte_order = le; };
stream { event.header := struct { uint32_t timestamp; uint8_t id; }; };
event { name = thread_switched_out; id = 1; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_switched_in; id = 2; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = isr_enter; id = 3; };
event { name = isr_exit; id = 4; };
event { name = idle; id = 5; };
event { name = sem_take_enter; id = 6; fields := struct { uint32_t id; }; };
event { name = sem_take_blocking; id = 7; fields := struct { uint32_t id; }; };
event { name = sem_take_exit; id = 8; fields := struct { uint32_t id; int32_t ret; }; };
event { name = sem_give_enter; id = 9; fields := struct { uint32_t id; string note; }; };
event { name = thread_suspend; id = 10; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_resume; id = 11; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_create; id = 12; fields := struct { uint32_t thread_id; name_t name[4]; }; };
event { name = thread_abort; id = 13; fields := struct { uint32_t thread_id; name_t name[4]; }; };
)";
constexpr std::string_view kOwnMetadata = "/* CTF";

// In memory, for the time of the program.
class Scratch {
  public:
    Scratch() {
        std::string pattern = "/dev/shm/kvx-fuzz-XXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    ~Scratch() { std::filesystem::remove_all(path_); }
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

const std::filesystem::path& Folder() {
    static const Scratch scratch;
    return scratch.Path();
}

void Write(const char* name, std::string_view content) {
    std::ofstream(Folder() / name, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view stream(reinterpret_cast<const char*>(data), size);
    std::string_view metadata = kMetadata;
    if (stream.starts_with(kOwnMetadata)) {
        metadata = stream.substr(0, stream.find('\0'));
        stream.remove_prefix(std::min(metadata.size() + 1, stream.size()));
    }
    Write("metadata", metadata);
    Write("channel0", stream);
    kvx::fuzz::DecodeAll(Folder().string());
    return 0;
}
