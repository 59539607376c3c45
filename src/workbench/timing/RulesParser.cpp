// Rules files, as TOML.

#include <algorithm>
#include <charconv>
#include <map>

#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include "platform/base/Text.h"
#include "workbench/service/TimeArgument.h"
#include "workbench/timing/Rules.h"

namespace kvx::timing {
namespace {

constexpr std::uint8_t kVariableQueue = 9;  // state code, which has two names

// The state code of a wait; none: the text is none.
std::optional<std::uint8_t> CauseOf(std::string_view text) {
    if (text == "VSDTQ" || text == "VRDTQ") return kVariableQueue;
    for (std::uint8_t code = 0; code < 14; ++code)
        if (code != 1 && code != 2 && CauseName(code) == text) return code;
    return std::nullopt;
}

class Parser {
  public:
    Parser(const std::string& path, const Contexts& contexts, const service::TraceClock& clock)
        : path_(path), contexts_(contexts), clock_(clock) {}

    Result<Rules> Parse(std::string_view text) {
        const toml::parse_result parsed = toml::parse(text);
        if (!parsed) {
            Fail(parsed.error().source(), std::string(parsed.error().description()));
            return Errors();
        }
        for (const auto& [key, node] : parsed.table()) ReadSection(key, node);
        if (!errors_.empty()) return Errors();
        return std::move(rules_);
    }

  private:
    void Fail(const toml::source_region& where, const std::string& what) {
        errors_.emplace(
            std::pair(where.begin.line, where.begin.column),
            FormatText("%s:%u:%u: %s", path_.c_str(), static_cast<unsigned>(where.begin.line),
                       static_cast<unsigned>(where.begin.column), what.c_str()));
    }
    // A line each, in order of place.
    Error Errors() const {
        std::string lines;
        for (const auto& [place, line] : errors_) lines.append(lines.empty() ? "" : "\n") += line;
        return Error{lines};
    }
    static std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }
    void FailKey(const toml::key& key, std::string_view known) {
        Fail(key.source(),
             Quoted(key.str()) + " is not known here; there are " + std::string(known));
    }

    void ReadSection(const toml::key& key, const toml::node& node) {
        if (key == "task" || key == "handler") return ReadContexts(key, node);
        if (key == "cpu") return ReadLoad(node);
        if (key == "chain") return ReadChains(node);
        if (key == "accept") return ReadAccepts(node);
        FailKey(key, "task, handler, cpu, chain and accept");
    }

    const toml::table* TableOf(const toml::node& node) {
        if (!node.is_table()) Fail(node.source(), "a table is expected, as [task.NAME]");
        return node.as_table();
    }

    void ReadContexts(const toml::key& section, const toml::node& node) {
        const auto* table = TableOf(node);
        if (!table) return;
        const bool handler = section == "handler";
        for (const auto& [key, each] : *table) {
            const auto* rule = TableOf(each);
            if (!rule) continue;
            ContextRule& out = rules_.contexts.emplace_back();
            out.name = std::string(section.str()) + "." + std::string(key.str());
            out.contexts = Named(key.str(), key.source(), handler ? 1 : 0);
            for (const auto& [name, value] : *rule) ReadContextKey(name, value, handler, out);
            if (out.jitter && !out.period)
                Fail(each.source(), "jitter needs a period that it is of");
        }
    }

    void ReadContextKey(const toml::key& key, const toml::node& value, bool handler,
                        ContextRule& out) {
        if (key == "period") return ReadTime(value, out.period);
        if (key == "jitter") return ReadTime(value, out.jitter);
        if (key == "deadline") return ReadTime(value, out.deadline);
        if (key == "cet") return ReadTime(value, out.cet);
        if (key == "ipt" && !handler) return ReadTime(value, out.ipt);
        if (key == "blocked" && !handler) return ReadTime(value, out.blocked);
        if (key == "job_ends_at" && !handler) return ReadEnds(value, out.ends.emplace());
        FailKey(key, handler ? "period, jitter, deadline and cet"
                             : "period, jitter, deadline, cet, ipt, blocked and job_ends_at");
    }

    // A count, or a time with a unit.
    void ReadTime(const toml::node& value, std::optional<std::int64_t>& out) {
        if (const auto count = value.value_exact<std::int64_t>())
            out = *count;
        else if (const auto text = value.value_exact<std::string_view>()) {
            const auto time = service::ParseTime(*text, clock_);
            if (!time) return Fail(value.source(), time.GetError().message);
            out = *time;
        } else {
            return Fail(value.source(),
                        "a time is expected: \"1.5ms\", or a whole number of counts");
        }
        if (*out < 0) Fail(value.source(), "a time below zero");
    }

    void ReadEnds(const toml::node& value, JobEnds& out) {
        for (const auto& [text, where] : Texts(value)) {
            if (const auto cause = CauseOf(text))
                out.causes.push_back(*cause);
            else if (text.find('_') != std::string::npos ||
                     std::ranges::any_of(text, [](char c) { return c >= 'a' && c <= 'z'; }))
                out.calls.push_back(text);
            else
                Fail(where, Quoted(text) +
                                " is neither a cause, as \"SEM\", nor a call, as "
                                "\"rcv_dtq\"");
        }
    }

    std::vector<std::pair<std::string, toml::source_region>> Texts(const toml::node& value) {
        std::vector<std::pair<std::string, toml::source_region>> texts;
        const auto* list = value.as_array();
        if (!list) {
            Fail(value.source(), "a list of texts is expected: [\"...\"]");
            return texts;
        }
        for (const auto& each : *list) {
            if (const auto text = each.value_exact<std::string>())
                texts.emplace_back(*text, each.source());
            else
                Fail(each.source(), "a text is expected");
        }
        return texts;
    }

    // wanted: 0 tasks, 1 handlers, 2 both. Handlers and tasks may have the same name.
    std::vector<ContextId> Named(std::string_view name, const toml::source_region& where,
                                 int wanted) {
        auto found = contexts_.Find(name);
        std::erase_if(found, [&](ContextId id) {
            return wanted != 2 && contexts_.Get(id).IsHandler() != (wanted == 1);
        });
        static constexpr const char* kWhat[] = {"task", "handler", "context"};
        if (found.empty())
            Fail(where, std::string("there is no ") + kWhat[wanted] + " " + Quoted(name) +
                            " in the recording");
        return found;
    }

    void ReadLoad(const toml::node& node) {
        const auto* table = TableOf(node);
        if (!table) return;
        LoadRule& load = rules_.load.emplace();
        std::optional<std::int64_t> window;
        bool limited = false;
        for (const auto& [key, value] : *table) {
            if (key == "window")
                ReadTime(value, window);
            else if (key == "load")
                limited = ReadShare(value, load.load);
            else
                FailKey(key, "load and window");
        }
        if (window) load.window = *window;
        if (!limited || !window || *window == 0)
            Fail(node.source(), "cpu needs a load, and a window that it is over");
    }

    // 0.8, or "80 %".
    bool ReadShare(const toml::node& value, double& out) {
        if (const auto number = value.value<double>(); value.is_number() && number) {
            out = *number;
        } else if (auto text = value.value_exact<std::string_view>()) {
            const auto [end, error] =
                std::from_chars(text->data(), text->data() + text->size(), out);
            auto unit = text->substr(static_cast<std::size_t>(end - text->data()));
            while (unit.starts_with(' ')) unit.remove_prefix(1);
            if (error != std::errc() || unit != "%") out = -1;
            out /= 100;
        } else {
            out = -1;
        }
        if (out > 0 && out <= 1) return true;
        Fail(value.source(), "a share is expected: from 0 to 1, or \"80%\"");
        return false;
    }

    void ReadChains(const toml::node& node) {
        const auto* table = TableOf(node);
        if (!table) return;
        for (const auto& [key, each] : *table) {
            const auto* chain = TableOf(each);
            if (!chain) continue;
            ChainRule& out = rules_.chains.emplace_back();
            out.name = "chain." + std::string(key.str());
            std::optional<std::int64_t> max;
            for (const auto& [name, value] : *chain) {
                if (name == "max")
                    ReadTime(value, max);
                else if (name == "path")
                    ReadPath(value, out);
                else
                    FailKey(name, "path and max");
            }
            if (max) out.max = *max;
            if (out.path.size() < 2 || !max)
                Fail(each.source(), "a chain needs a path of two or more, and a max");
        }
    }

    void ReadPath(const toml::node& value, ChainRule& out) {
        for (const auto& [text, where] : Texts(value)) out.path.push_back(Named(text, where, 2));
    }

    void ReadAccepts(const toml::node& node) {
        const auto* list = node.as_array();
        if (!list || !list->is_array_of_tables())
            return Fail(node.source(), "a list of tables is expected, as [[accept]]");
        for (const auto& each : *list) {
            AcceptRule& out = rules_.accepts.emplace_back();
            bool hasKind = false;
            for (const auto& [key, value] : *each.as_table()) {
                if (key == "kind")
                    hasKind = ReadKind(value, out.kind);
                else if (key == "contexts")
                    for (const auto& [text, where] : Texts(value))
                        std::ranges::copy(Named(text, where, 2), std::back_inserter(out.contexts));
                else if (key == "reason")
                    ReadText(value, out.reason);
                else
                    FailKey(key, "kind, contexts and reason");
            }
            if (!hasKind || out.reason.empty())
                Fail(each.source(), "accept needs a kind of finding and a reason");
        }
    }

    bool ReadKind(const toml::node& value, FindingKind& out) {
        const auto text = value.value_exact<std::string>();
        const auto kind = text ? FindingKindOf(*text) : std::nullopt;
        if (kind) out = *kind;
        if (!kind) Fail(value.source(), "a kind of finding is expected, as \"priority_inversion\"");
        return true;
    }

    void ReadText(const toml::node& value, std::string& out) {
        if (const auto text = value.value_exact<std::string>())
            out = *text;
        else
            Fail(value.source(), "a text is expected");
    }

    const std::string& path_;
    const Contexts& contexts_;
    const service::TraceClock& clock_;
    Rules rules_;
    std::multimap<std::pair<toml::source_index, toml::source_index>, std::string> errors_;
};

}  // namespace

Result<Rules> ParseRules(std::string_view text, const std::string& path, const Contexts& contexts,
                         const service::TraceClock& clock) {
    return Parser(path, contexts, clock).Parse(text);
}

}  // namespace kvx::timing
