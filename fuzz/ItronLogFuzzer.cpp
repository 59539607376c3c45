// Text logs of both ITRON formats: the log, and behind a separator the resource file beside it.

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvx::fuzz::Scratch scratch;
    auto rest = kvx::fuzz::AsText(data, size);
    scratch.Write("x.log", kvx::fuzz::TakePart(rest, "\x1E"));
    if (rest.empty())
        scratch.Remove("x.res");
    else
        scratch.Write("x.res", rest);
    kvx::fuzz::DecodeAll(scratch.Path("x.log"));
    return 0;
}
