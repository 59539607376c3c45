#pragma once
// One kind of compressed data, taken apart piece by piece.

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

namespace kvx::formats::compressed {

class IDecompressor {
  public:
    enum class Step { GoOn, End, Damaged };

    virtual ~IDecompressor() = default;
    // Takes bytes from the front of `from` and puts what they stand for to the front of `out`,
    // whose used part is answered in `made`. End: a whole member has ended; more may follow.
    virtual Step Take(std::string_view& from, std::span<char> out, std::size_t& made) = 0;
};

struct Kind {
    const char* name;
    std::string_view magic;
    std::unique_ptr<IDecompressor> (*open)();  // null: built without its library
};

extern const Kind kGzip;
extern const Kind kZstd;

}  // namespace kvx::formats::compressed
