#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>

#include "workbench/formats/compressed/Decompressor.h"

namespace kvx::formats::compressed {
namespace {

constexpr int kGzipWindow = 15 + 16;  // the largest window, behind a header of gzip's

class GzipDecompressor final : public IDecompressor {
  public:
    GzipDecompressor() {
        if (inflateInit2(&stream_, kGzipWindow) != Z_OK) throw std::bad_alloc();
    }
    GzipDecompressor(const GzipDecompressor&) = delete;
    ~GzipDecompressor() override { inflateEnd(&stream_); }

    Step Take(std::string_view& from, std::span<char> out, std::size_t& made) override {
        constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
        // The library takes what it reads as bytes without const, and does not change them.
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(from.data()));
        stream_.avail_in = static_cast<uInt>(std::min(from.size(), kMost));
        stream_.next_out = reinterpret_cast<Bytef*>(out.data());
        stream_.avail_out = static_cast<uInt>(std::min(out.size(), kMost));
        const auto offered = stream_.avail_in;
        const auto room = stream_.avail_out;
        const int result = inflate(&stream_, Z_NO_FLUSH);
        from.remove_prefix(offered - stream_.avail_in);
        made = room - stream_.avail_out;
        if (result == Z_STREAM_END) {
            inflateReset(&stream_);
            return Step::End;
        }
        return result == Z_OK || result == Z_BUF_ERROR ? Step::GoOn : Step::Damaged;
    }

  private:
    z_stream stream_ = {};
};

}  // namespace

const Kind kGzip = {"gzip", "\x1F\x8B", [] {
                        return std::unique_ptr<IDecompressor>(std::make_unique<GzipDecompressor>());
                    }};

}  // namespace kvx::formats::compressed
