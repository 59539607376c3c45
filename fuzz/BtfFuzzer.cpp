// BTF files.

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvx::fuzz::Scratch scratch;
    scratch.Write("x.btf", kvx::fuzz::AsText(data, size));
    kvx::fuzz::DecodeAll(scratch.Path("x.btf"));
    return 0;
}
