#include "workbench/formats/ctf/LibraryRun.h"

#include <cstring>

#include "workbench/formats/ctf/HelperProcess.h"
#include "workbench/formats/ctf/MessageParser.h"

namespace kvx::formats::ctf {
namespace {

// Computing without an event: some of it goes into finding all packets of a large trace.
constexpr std::uint64_t kBytesASecond = std::uint64_t{200} << 20;

// Puts the bytes of the pipe together to blocks.
class Blocks {
  public:
    explicit Blocks(os::ChildProcess& process) : process_(process) {}

    // The next block; empty: it is not there yet, or, with AtEnd, never comes.
    std::string_view Next() {
        if (const auto block = Whole(); !block.empty()) return block;
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
        const auto wanted = Size().value_or(0) + sizeof(std::uint32_t) + wire::kBlock;
        if (buffer_.size() < wanted) buffer_.resize(wanted);
        end_ += process_.Read(std::span(buffer_).subspan(end_));
        return Whole();
    }
    bool AtEnd() const { return process_.AtEnd(); }
    bool IsNonsense() const { return Size().value_or(1) > wire::kLargestBlock || Size() == 0; }

  private:
    std::optional<std::uint32_t> Size() const {
        std::uint32_t size = 0;
        if (end_ - begin_ < sizeof(size)) return std::nullopt;
        std::memcpy(&size, buffer_.data() + begin_, sizeof(size));
        return std::min<std::uint32_t>(size, wire::kLargestBlock + 1);
    }
    std::string_view Whole() {
        const auto size = Size();
        if (!size || end_ - begin_ - sizeof(*size) < *size) return {};
        const char* block = buffer_.data() + begin_ + sizeof(*size);
        begin_ += sizeof(*size) + *size;
        return {block, *size};
    }

    os::ChildProcess& process_;
    std::vector<char> buffer_ = std::vector<char>(4 * wire::kBlock);
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

}  // namespace

RunResult RunLibrary(const std::vector<CheckedTrace>& traces, std::uint64_t bytes,
                     IEventSink& sink) {
    std::vector<std::string> folders;
    for (const auto& trace : traces) folders.push_back(trace.folder);
    auto process = StartHelper(folders, static_cast<long>(1 + bytes / kBytesASecond));
    if (!process) return {false, false, process.GetError().message, false};
    Blocks blocks(*process);
    MessageParser parser(sink);
    while (!parser.End()) {
        const auto block = blocks.Next();
        auto next = MessageParser::Next::GoOn;
        if (!block.empty()) next = parser.Take(block);
        if (blocks.IsNonsense() || next == MessageParser::Next::Nonsense)
            return {false, true, "the program that reads CTF answers nonsense"};
        if (next == MessageParser::Next::Stop || !sink.OnBatch()) return {true, false, {}};
        if (block.empty() && blocks.AtEnd()) {
            const auto reason = WhyEnded(process->Wait());
            return {false, true,
                    reason.empty() ? "the program that reads CTF ended early" : reason};
        }
    }
    return {false, false, *parser.End()};
}

}  // namespace kvx::formats::ctf
