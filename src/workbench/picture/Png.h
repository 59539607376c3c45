#pragma once
// A picture as the bytes of a PNG file, made row by row.

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/base/Types.h"

namespace kvx::picture {

class PngWriter {
  public:
    // dpi: pixels an inch, noted in the file.
    PngWriter(SIZE size, int dpi);
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;
    ~PngWriter();

    // The next row: as many pixels as the picture is wide, 0xXXRRGGBB each.
    void Add(const std::uint32_t* row);
    // After the last row: the whole file.
    std::string Finish();

  private:
    void Deflate(int flush);

    SIZE size_;
    std::string file_;
    std::string packed_;               // of the chunk at work
    std::vector<std::uint8_t> line_;   // filtered
    std::vector<std::uint8_t> above_;  // plain
    z_stream stream_ = {};
};

}  // namespace kvx::picture
