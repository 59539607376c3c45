#include "workbench/formats/text/ResourceFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>

#include "host/TraceCodes.h"
#include "platform/base/Automation.h"
#include "platform/base/Text.h"
#include "workbench/formats/text/JsonNesting.h"
#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats {
namespace {

using service::ContextKey;
using service::ContextKind;
using service::DeclaredContext;
using service::TaskState;
using Json = nlohmann::json;

constexpr std::size_t kLargestFile = std::size_t{64} << 20;
constexpr std::uint64_t kMostPriority = 0x7FFFFFFF;

struct KindName {
    std::string_view name;
    ContextKind kind;
};
constexpr std::array<KindName, 6> kKinds = {
    {{"Task", ContextKind::Task},
     {"InterruptHandler", ContextKind::Interrupt},
     {"InterruptServiceRoutine", ContextKind::ServiceRoutine},
     {"CyclicHandler", ContextKind::Cyclic},
     {"AlarmHandler", ContextKind::Alarm},
     {"CPUExceptionHandler", ContextKind::Exception}}};

struct StateName {
    std::string_view name;
    TaskState state;
};
constexpr std::array<StateName, 6> kStates = {{{"RUNNABLE", TaskState::Runnable},
                                               {"DORMANT", TaskState::Dormant},
                                               {"WAITING", TaskState::Waiting},
                                               {"SUSPENDED", TaskState::Suspended},
                                               {"WAITING-SUSPENDED", TaskState::WaitingSuspended},
                                               {"NONEXISTENT", TaskState::NonExistent}}};

// The text without commas that separate nothing: some generators write one for each list that they
// leave out. Commas inside strings stay.
std::string WithoutIdleCommas(std::string_view text, std::uint64_t& skipped) {
    std::string kept;
    kept.reserve(text.size());
    bool inString = false;
    char last = '{';
    std::optional<std::size_t> comma;  // in kept, with nothing but white space behind it
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            kept += c;
            if (c == '\\' && i + 1 < text.size()) kept += text[++i];
            inString = c != '"';
            continue;
        }
        const bool idle = c == ',' && (last == ',' || last == '{' || last == '[');
        if (idle) ++skipped;
        kept += idle ? ' ' : c;
        if (idle || c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
        if ((c == '}' || c == ']') && comma) {
            kept[*comma] = ' ';
            ++skipped;
        }
        comma = c == ',' ? std::optional(kept.size() - 1) : std::nullopt;
        inString = c == '"';
        last = c;
    }
    return kept;
}

std::optional<std::uint64_t> NumberOf(const Json& value) {
    if (value.is_number_unsigned()) return value.get<std::uint64_t>();
    if (!value.is_string()) return std::nullopt;
    const auto& text = value.get_ref<const std::string&>();
    if (text.empty() || text.size() > 10 || text.find_first_not_of("0123456789") != text.npos)
        return std::nullopt;
    return std::stoull(text);
}

std::string TextOf(const Json& value) {
    return value.is_string() ? value.get<std::string>() : std::string();
}

const Json& Member(const Json& object, const char* name) {
    static const Json none;
    const auto at = object.is_object() ? object.find(name) : object.end();
    return object.is_object() && at != object.end() ? *at : none;
}

// The number of the processor behind "CurrentContext_PRC"; any processor where there is none.
std::uint32_t ProcessorOfContext(std::string_view name) {
    const auto at = name.rfind("_PRC");
    if (at == std::string_view::npos) return service::kAnyProcessor;
    const auto number = NumberOf(std::string(name.substr(at + 4)));
    return number ? static_cast<std::uint32_t>(*number) : service::kAnyProcessor;
}

std::uint32_t ProcessorOf(const Json& attributes) {
    for (const auto* name : {"prcId", "prcIdI", "prcIdC", "prcIdA", "prcIdE"})
        if (const auto number = NumberOf(Member(attributes, name)))
            return static_cast<std::uint32_t>(*number);
    return service::kAnyProcessor;
}

void AddResource(ResourceFile& file, const std::string& name, const Json& resource) {
    const auto type = TextOf(Member(resource, "Type"));
    const Json& attributes = Member(resource, "Attributes");
    if (type == "Context" && TextOf(Member(attributes, "name")) == "None")
        file.idleAtStart.push_back(ProcessorOfContext(name));
    const auto kind = std::ranges::find(kKinds, type, &KindName::name);
    const auto id = NumberOf(Member(attributes, "id"));
    if (kind == kKinds.end() || !id) return;
    DeclaredContext context;
    context.key = {kind->kind, *id};
    // Contexts may have the same name, and resources may not.
    const auto ownName = TextOf(Member(attributes, "name"));
    context.name = ownName.empty() ? name : ownName;
    context.processor = ProcessorOf(attributes);
    const auto priority = NumberOf(Member(attributes, "pri"));
    if (kind->kind == ContextKind::Task && priority && *priority <= kMostPriority)
        context.priority = static_cast<std::int32_t>(*priority);
    const auto state =
        std::ranges::find(kStates, TextOf(Member(attributes, "state")), &StateName::name);
    if (kind->kind == ContextKind::Task && state != kStates.end()) {
        context.hasState = state->state != TaskState::NonExistent;
        context.state = state->state;
        context.waitCode = host::StateCodeOf(TextOf(Member(attributes, "wait")));
    }
    file.contexts.push_back(std::move(context));
}

std::optional<ContextKey> KeyOf(const Json& resources, const Json& name) {
    const Json& resource = Member(resources, TextOf(name).c_str());
    const auto kind = std::ranges::find(kKinds, TextOf(Member(resource, "Type")), &KindName::name);
    const auto id = NumberOf(Member(Member(resource, "Attributes"), "id"));
    if (kind == kKinds.end() || !id) return std::nullopt;
    return ContextKey{kind->kind, *id};
}

// A context that has the processor at the start, and the handlers over it.
void AddRunning(ResourceFile& file, const std::string& name, const Json& resource,
                const Json& resources) {
    if (TextOf(Member(resource, "Type")) != "Context") return;
    const Json& attributes = Member(resource, "Attributes");
    const Json& handlers = Member(attributes, "handlers");
    const Json& below = Member(attributes, "name");
    const bool idle = TextOf(below) == "None";
    const auto key =
        idle ? std::optional(ContextKey{ContextKind::Task, 0}) : KeyOf(resources, below);
    if (!key || (idle && !handlers.is_array())) return;
    auto& running = file.running[ProcessorOfContext(name)];
    running = {*key};
    if (!handlers.is_array()) return;
    for (const Json& handler : handlers)
        if (const auto over = KeyOf(resources, handler)) running.push_back(*over);
}

std::string PlaceIn(std::string_view text, std::size_t byte) {
    const auto before = text.substr(0, std::min(byte, text.size()));
    return FormatText("line %zu", static_cast<std::size_t>(std::ranges::count(before, '\n')) + 1);
}

}  // namespace

Result<ResourceFile> ParseResourceFile(std::string_view text, const std::string& path) {
    ResourceFile file;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    if (text.size() > kLargestFile) return Error{path + ": too large for a resource file"};
    // Names may be in any code: what is no UTF-8 becomes replacement characters.
    const auto cleaned = TakeUtf8(ToBstr(WithoutIdleCommas(text, file.commasSkipped)));
    if (IsNestedTooDeep(cleaned)) return Error{path + ": no resource file: nested too deep"};
    Json json;
    try {
        json = Json::parse(cleaned);
    } catch (const Json::parse_error& error) {
        return Error{path + ": " + PlaceIn(cleaned, error.byte) + ": no JSON"};
    } catch (const Json::exception&) {
        return Error{path + ": holds a number that is too large"};
    }
    const Json& resources = Member(json, "Resources");
    if (!resources.is_object()) return Error{path + ": has no \"Resources\""};
    if (const Json& unit = Member(json, "TimeScale"); unit.is_string())
        file.timeUnit = service::TimeUnitOf(TextOf(unit));
    const auto radix = NumberOf(Member(json, "TimeRadix"));
    if (radix && *radix >= 2 && *radix <= 36) file.timeRadix = static_cast<unsigned>(*radix);
    file.kernel = TextOf(Member(json, "Kernel"));
    for (const auto& [name, resource] : resources.items()) AddResource(file, name, resource);
    for (const auto& [name, resource] : resources.items())
        AddRunning(file, name, resource, resources);
    return file;
}

Result<ResourceFile> FindResourceFile(const std::string& path, const std::string& logPath,
                                      service::LossCounters& losses,
                                      std::vector<std::string>& warnings) {
    const bool asked = !path.empty();
    // That of "x.log.gz" is "x.res" too.
    std::filesystem::path beside(logPath);
    if (beside.extension() == ".gz" || beside.extension() == ".zst") beside.replace_extension();
    beside.replace_extension(".res");
    const auto from = asked ? path : beside.string();
    std::error_code ignored;
    if (!asked && (from == logPath || !std::filesystem::exists(beside, ignored)))
        return ResourceFile();
    const auto mapped = MapFile(from);
    auto file =
        mapped ? ParseResourceFile(mapped->Text(), from) : Result<ResourceFile>(mapped.GetError());
    if (file) {
        losses.Add(service::Loss::ResourceFileMended, file->commasSkipped);
        return file;
    }
    if (asked) return file;
    losses.Add(service::Loss::ResourceFileUnreadable);
    warnings.push_back(file.GetError().message);
    return ResourceFile();
}

}  // namespace kvx::formats
