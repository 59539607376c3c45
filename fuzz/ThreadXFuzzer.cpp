// The event buffer of a ThreadX kernel.

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvx::fuzz::Scratch scratch;
    scratch.Write("x.trx", kvx::fuzz::AsText(data, size));
    kvx::fuzz::DecodeAll(scratch.Path("x.trx"));
    return 0;
}
