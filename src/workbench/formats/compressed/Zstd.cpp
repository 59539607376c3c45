#include "workbench/formats/compressed/Decompressor.h"

#ifndef KVX_NO_ZSTD
#include <zstd.h>

#include <new>
#endif

namespace kvx::formats::compressed {

constexpr std::string_view kZstdMagic = "\x28\xB5\x2F\xFD";

#ifdef KVX_NO_ZSTD

const Kind kZstd = {"zstd", kZstdMagic, nullptr};

#else

namespace {

class ZstdDecompressor final : public IDecompressor {
  public:
    ZstdDecompressor() : stream_(ZSTD_createDStream()) {
        if (!stream_) throw std::bad_alloc();
    }
    ZstdDecompressor(const ZstdDecompressor&) = delete;
    ~ZstdDecompressor() override { ZSTD_freeDStream(stream_); }

    Step Take(std::string_view& from, std::span<char> out, std::size_t& made) override {
        ZSTD_inBuffer input{from.data(), from.size(), 0};
        ZSTD_outBuffer output{out.data(), out.size(), 0};
        const auto result = ZSTD_decompressStream(stream_, &output, &input);
        from.remove_prefix(input.pos);
        made = output.pos;
        if (ZSTD_isError(result)) return Step::Damaged;
        return result == 0 ? Step::End : Step::GoOn;
    }

  private:
    ZSTD_DStream* stream_;
};

}  // namespace

const Kind kZstd = {"zstd", kZstdMagic, [] {
                        return std::unique_ptr<IDecompressor>(std::make_unique<ZstdDecompressor>());
                    }};

#endif

}  // namespace kvx::formats::compressed
