// A SystemView recording, and behind a separator the file that describes its calls.

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvx::fuzz::Scratch scratch;
    auto rest = kvx::fuzz::AsText(data, size);
    scratch.Write("x.SVDat", kvx::fuzz::TakePart(rest, "\n--description--\n"));
    if (rest.empty())
        scratch.Remove("SYSVIEW_FreeRTOS.txt");
    else
        scratch.Write("SYSVIEW_FreeRTOS.txt", rest);
    kvx::fuzz::DecodeAll(scratch.Path("x.SVDat"));
    return 0;
}
