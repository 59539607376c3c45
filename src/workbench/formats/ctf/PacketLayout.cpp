#include "workbench/formats/ctf/PacketLayout.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace kvx::formats::ctf {
namespace {

using Tokens = std::vector<std::string_view>;

struct Type {
    std::uint64_t size = 0;  // bits; 0: not known
    std::uint64_t align = 1;
};
struct Member {
    std::string_view name;
    Type type;
    std::uint64_t count = 1;
};
using Members = std::vector<Member>;

bool IsWordByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           c == '.';
}

Tokens Split(std::string_view text) {
    Tokens tokens;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + 1;
        if (IsWordByte(text[i])) {
            while (end < text.size() && IsWordByte(text[end])) ++end;
        } else if (text.substr(i, 2) == ":=") {
            end = i + 2;
        } else if (static_cast<unsigned char>(text[i]) <= ' ') {
            ++i;
            continue;
        }
        tokens.push_back(text.substr(i, end - i));
        i = end;
    }
    return tokens;
}

std::uint64_t NumberOf(std::string_view text) {
    std::uint64_t number = 0;
    const bool hex = text.starts_with("0x");
    if (hex) text.remove_prefix(2);
    std::from_chars(text.data(), text.data() + text.size(), number, hex ? 16 : 10);
    return number;
}

class Reader {
  public:
    explicit Reader(std::string_view metadata) : tokens_(Split(metadata)) {}

    PacketLayout Run() {
        for (; at_ < tokens_.size(); ++at_) {
            if (At(0) == "typealias" && At(1) == "integer") {
                ReadAlias();
            } else if (At(0) == "struct" && At(2) == "{") {
                const auto name = At(1);
                at_ += 2;
                structures_[name] = ReadStructure();
            } else if (At(0) == "trace" && At(1) == "{") {
                orderFollows_ = true;
            } else if (orderFollows_ && At(0) == "byte_order" && At(1) == "=") {
                orderFollows_ = false;  // integers may have one of their own
                layout_.bigEndian = At(2) == "be" || At(2) == "network";
            } else if (At(0) == "packet.header" && At(1) == ":=") {
                at_ += 2;
                header_ = ReadStructureUse();
            } else if (At(0) == "stream" && At(1) == "{") {
                ReadStream();
            }
        }
        PlaceFields();
        return std::move(layout_);
    }

  private:
    std::string_view At(std::size_t ahead) const {
        return at_ + ahead < tokens_.size() ? tokens_[at_ + ahead] : std::string_view();
    }

    // Behind the bracket that closes the one at at_.
    void SkipBlock() {
        int depth = 0;
        for (; at_ < tokens_.size(); ++at_) {
            if (At(0) == "{") ++depth;
            if (At(0) == "}" && --depth == 0) break;
        }
        ++at_;
    }

    // at_ stands on "integer"; goes behind its block.
    Type ReadInteger() {
        Type type;
        bool aligned = false;
        for (++at_; at_ < tokens_.size() && At(0) != "}"; ++at_) {
            if (At(1) != "=") continue;
            if (At(0) == "size") type.size = NumberOf(At(2));
            if (At(0) == "align") type.align = NumberOf(At(2));
            aligned |= At(0) == "align";
        }
        ++at_;
        if (!aligned) type.align = type.size % 8 == 0 ? 8 : 1;
        if (type.align == 0 || type.align > 4096 || type.size > 64) return {};
        return type;
    }

    void ReadAlias() {
        ++at_;
        const Type type = ReadInteger();
        if (At(0) != ":=") return;
        std::string name;
        for (++at_; at_ < tokens_.size() && At(0) != ";"; ++at_)
            name.append(name.empty() ? "" : " ").append(At(0));
        aliases_[name] = type;
    }

    // at_ stands on "{"; ends on what closes it.
    Members ReadStructure() {
        Members members;
        for (++at_; at_ < tokens_.size() && At(0) != "}"; ++at_) members.push_back(ReadMember());
        return members;
    }

    // Ends on the semicolon. A type that is not simple has no size.
    Member ReadMember() {
        Member member;
        std::string type;
        bool simple = true;
        if (At(0) == "integer" && At(1) == "{") {
            member.type = ReadInteger();
            member.name = At(0);
            ++at_;
        } else {
            while (at_ < tokens_.size() && At(0) != ";" && At(0) != "[" && At(0) != "}") {
                if (At(0) == "{") {
                    SkipBlock();
                    simple = false;
                    continue;
                }
                if (!member.name.empty()) type.append(type.empty() ? "" : " ").append(member.name);
                member.name = At(0);
                ++at_;
            }
            const auto alias = aliases_.find(type);
            if (simple && alias != aliases_.end()) member.type = alias->second;
        }
        if (At(0) == "[") {
            member.count = NumberOf(At(1));
            if (member.count == 0 || member.count > 4096) member.type = {};
        }
        while (at_ < tokens_.size() && At(0) != ";" && At(1) != "}") ++at_;
        return member;
    }

    // "struct name" or "struct { ... }" or "struct name { ... }".
    Members ReadStructureUse() {
        if (At(0) != "struct") return {};
        ++at_;
        std::string_view name;
        if (At(0) != "{") {
            name = At(0);
            ++at_;
        }
        if (At(0) == "{") return ReadStructure();
        const auto known = structures_.find(name);
        return known == structures_.end() ? Members() : known->second;
    }

    void ReadStream() {
        std::uint64_t id = 0;
        Members context;
        int depth = 0;
        for (++at_; at_ < tokens_.size(); ++at_) {
            if (At(0) == "{") ++depth;
            if (At(0) == "}" && --depth == 0) break;
            if (depth == 1 && At(0) == "id" && At(1) == "=") id = NumberOf(At(2));
            if (depth == 1 && At(0) == "packet.context" && At(1) == ":=") {
                at_ += 2;
                context = ReadStructureUse();
            }
        }
        streams_.emplace_back(id, std::move(context));
    }

    // Calls take with each member that can be placed. Answers where the next one may begin; none
    // where a member cannot be placed.
    template <class Take>
    static std::optional<std::uint64_t> Place(const Members& members, std::uint64_t at, Take take) {
        std::uint64_t align = 1;
        for (const Member& member : members) align = std::max(align, member.type.align);
        at = (at + align - 1) / align * align;
        for (const Member& member : members) {
            if (member.type.size == 0) return std::nullopt;
            for (std::uint64_t i = 0; i < member.count; ++i) {
                at = (at + member.type.align - 1) / member.type.align * member.type.align;
                if (i == 0) take(member.name, HeaderField{at, member.type.size});
                at += member.type.size;
            }
        }
        return at;
    }

    void PlaceFields() {
        const auto behind = Place(header_, 0, [&](std::string_view name, HeaderField field) {
            if (name == "magic") layout_.magic = field;
            if (name == "stream_id") layout_.streamId = field;
        });
        if (!behind) return;
        for (const auto& [id, members] : streams_) {
            PacketContext& context = layout_.contexts[id];
            Place(members, *behind, [&](std::string_view name, HeaderField field) {
                if (name == "content_size") context.contentSize = field;
                if (name == "packet_size") context.packetSize = field;
            });
        }
    }

    Tokens tokens_;
    std::size_t at_ = 0;
    PacketLayout layout_;
    bool orderFollows_ = false;
    Members header_;
    std::map<std::string, Type, std::less<>> aliases_;
    std::map<std::string_view, Members> structures_;
    std::vector<std::pair<std::uint64_t, Members>> streams_;
};

}  // namespace

std::optional<std::uint64_t> PacketLayout::Read(const HeaderField& field,
                                                std::string_view bytes) const {
    if (field.at % 8 != 0 || field.size % 8 != 0 || field.size > 64) return std::nullopt;
    const auto begin = field.at / 8;
    const auto count = field.size / 8;
    if (begin > bytes.size() || count > bytes.size() - begin) return std::nullopt;
    std::uint64_t value = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto byte = bytes[begin + (bigEndian ? i : count - 1 - i)];
        value = value << 8 | static_cast<unsigned char>(byte);
    }
    return value;
}

PacketLayout FindPacketLayout(std::string_view metadata) {
    return Reader(metadata).Run();
}

}  // namespace kvx::formats::ctf
