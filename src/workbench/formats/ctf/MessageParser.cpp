#include "workbench/formats/ctf/MessageParser.h"

namespace kvx::formats::ctf {

using Form = kernels::EventField::Form;
using wire::Message;
using wire::Place;

MessageParser::Next MessageParser::Take(std::string_view block) {
    ByteCursor from(block);
    while (!from.AtEnd() && !end_) {
        const auto what = from.Number();
        if (what >= wire::kFirstKind) {
            const auto next = TakeEvent(what - wire::kFirstKind, from);
            if (next != Next::GoOn) return next;
            continue;
        }
        bool sense = true;
        switch (static_cast<Message>(what)) {
            case Message::Names:
                sense = TakeNames(from);
                break;
            case Message::Kind:
                sense = TakeKind(from);
                break;
            case Message::Packet:
                sense = TakePacket(from);
                break;
            case Message::Discarded: {
                const auto packets =
                    from.Number() == static_cast<std::uint64_t>(Discarded::Packets);
                sink_.OnDiscarded(packets ? Discarded::Packets : Discarded::Events, from.Number());
                break;
            }
            case Message::End:
                end_ = from.Text();
                break;
            default:
                sense = false;
        }
        if (!sense) return Next::Nonsense;
    }
    return Next::GoOn;
}

bool MessageParser::TakeNames(ByteCursor& from) {
    auto& names = names_.emplace_back();
    for (auto count = from.Number(); count > 0 && !from.AtEnd(); --count)
        names.emplace(from.Text());
    return true;
}

bool MessageParser::TakeKind(ByteCursor& from) {
    kernels::EventShape shape;
    shape.name = from.Text();
    const auto names = from.Number();
    Kind& kind = kinds_.emplace_back();
    kind.hasTime = from.Number() != 0;
    for (auto count = from.Number(); count > 0 && !from.AtEnd(); --count) {
        std::string name(from.Text());
        const auto form = from.Number();
        const auto place = from.Number();
        if (form > static_cast<std::uint64_t>(Form::Text) ||
            place > static_cast<std::uint64_t>(Place::Packet))
            return false;
        const bool ofPacket = place == static_cast<std::uint64_t>(Place::Packet);
        shape.fields.push_back({std::move(name), static_cast<Form>(form),
                                place == static_cast<std::uint64_t>(Place::Payload)});
        if (ofPacket)
            kind.hasPacket = true;
        else
            kind.forms.push_back(static_cast<Form>(form));
    }
    if (names >= names_.size()) return false;
    sink_.OnKind(shape, names_[names]);
    return true;
}

bool MessageParser::TakePacket(ByteCursor& from) {
    auto& packet = packets_[from.Number()];
    packet.clear();
    for (auto count = from.Number(); count > 0 && !from.AtEnd(); --count)
        packet.push_back({from.Number(), {}});
    return true;
}

MessageParser::Next MessageParser::TakeEvent(std::uint64_t number, ByteCursor& from) {
    if (number >= kinds_.size()) return Next::Nonsense;
    const Kind& kind = kinds_[number];
    const auto stream = kind.hasPacket ? from.Number() : 0;
    std::optional<std::int64_t> time;
    if (kind.hasTime)
        time = time_ = static_cast<std::int64_t>(static_cast<std::uint64_t>(time_) +
                                                 static_cast<std::uint64_t>(from.Signed()));
    values_.clear();
    for (const auto form : kind.forms) values_.push_back(TakeValue(form, from));
    if (kind.hasPacket) {
        if (!latestPacket_ || stream != latestStream_) {
            latestStream_ = stream;
            latestPacket_ = &packets_[stream];
        }
        values_.insert(values_.end(), latestPacket_->begin(), latestPacket_->end());
    }
    return sink_.OnEvent(static_cast<std::uint32_t>(number), time, values_) ? Next::GoOn
                                                                            : Next::Stop;
}

EventValue MessageParser::TakeValue(Form form, ByteCursor& from) {
    switch (form) {
        case Form::Unsigned:
        case Form::Hexadecimal:
            return {from.Number(), {}};
        case Form::Signed:
            return {static_cast<std::uint64_t>(from.Signed()), {}};
        case Form::Label: {
            const auto number = from.Number();
            return {number, from.Text()};
        }
        case Form::Text:
            break;
    }
    return {0, from.Text()};
}

}  // namespace kvx::formats::ctf
