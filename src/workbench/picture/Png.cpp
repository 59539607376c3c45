#include "workbench/picture/Png.h"

#include <cmath>
#include <new>
#include <string_view>
#include <utility>

namespace kvx::picture {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
constexpr std::size_t kChunk = std::size_t{1} << 18;
constexpr std::size_t kColours = 3;
constexpr std::uint8_t kDifferenceToAbove = 2;
constexpr double kInchesPerMetre = 1000.0 / 25.4;

void Append(std::string& out, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>(number >> shift);
}

void AppendChunk(std::string& out, std::string_view type, std::string_view data) {
    Append(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t from = out.size();
    out.append(type).append(data);
    const auto* const bytes = reinterpret_cast<const Bytef*>(out.data() + from);
    Append(out, static_cast<std::uint32_t>(
                    crc32(0, bytes, static_cast<uInt>(type.size() + data.size()))));
}

std::string Header(SIZE size) {
    std::string header;
    Append(header, static_cast<std::uint32_t>(size.cx));
    Append(header, static_cast<std::uint32_t>(size.cy));
    constexpr char kEightBitsOfRgb[] = {8, 2, 0, 0, 0};
    return header.append(kEightBitsOfRgb, sizeof kEightBitsOfRgb);
}

std::string Density(int dpi) {
    const auto perMetre = static_cast<std::uint32_t>(std::lround(dpi * kInchesPerMetre));
    std::string density;
    Append(density, perMetre);
    Append(density, perMetre);
    return density + '\1';
}

}  // namespace

PngWriter::PngWriter(SIZE size, int dpi)
    : size_(size),
      file_(kSignature),
      line_(static_cast<std::size_t>(size.cx) * kColours + 1),
      above_(line_.size() - 1) {
    if (deflateInit(&stream_, Z_DEFAULT_COMPRESSION) != Z_OK) throw std::bad_alloc();
    AppendChunk(file_, "IHDR", Header(size));
    AppendChunk(file_, "pHYs", Density(dpi));
}

PngWriter::~PngWriter() {
    deflateEnd(&stream_);
}

// A window's rows are much alike: what differs from the row above is little.
void PngWriter::Add(const std::uint32_t* row) {
    line_[0] = kDifferenceToAbove;
    std::size_t at = 0;
    for (std::int32_t x = 0; x < size_.cx; ++x) {
        for (const int shift : {16, 8, 0}) {
            const auto value = static_cast<std::uint8_t>(row[x] >> shift);
            line_[at + 1] = static_cast<std::uint8_t>(value - above_[at]);
            above_[at++] = value;
        }
    }
    stream_.next_in = line_.data();
    stream_.avail_in = static_cast<uInt>(line_.size());
    Deflate(Z_NO_FLUSH);
}

void PngWriter::Deflate(int flush) {
    do {
        const std::size_t used = packed_.size();
        packed_.resize(used + kChunk);
        stream_.next_out = reinterpret_cast<Bytef*>(packed_.data() + used);
        stream_.avail_out = static_cast<uInt>(kChunk);
        deflate(&stream_, flush);
        packed_.resize(used + kChunk - stream_.avail_out);
    } while (stream_.avail_out == 0);
    if (packed_.size() < kChunk && flush != Z_FINISH) return;
    AppendChunk(file_, "IDAT", packed_);
    packed_.clear();
}

std::string PngWriter::Finish() {
    Deflate(Z_FINISH);
    AppendChunk(file_, "IEND", {});
    return std::move(file_);
}

}  // namespace kvx::picture
