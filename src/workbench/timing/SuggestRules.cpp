#include "workbench/timing/SuggestRules.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "platform/base/Text.h"
#include "workbench/timing/JobFigures.h"

namespace kvx::timing {
namespace {

constexpr double kRoom = 1.2;

class Writer {
  public:
    explicit Writer(const Model& model) : model_(model) {}

    std::string Write() {
        text_ = "# Suggested from " + model_.Recording().Path() +
                ": the greatest figures of this recording and a fifth more.\n";
        const Selection all{model_.Range(), std::nullopt};
        std::set<std::string> done;
        for (ContextId id = 0; id < model_.AllContexts().Count(); ++id) {
            const auto& info = model_.AllContexts().Get(id);
            if (!info.IsTask() && !info.IsHandler()) continue;
            const std::string section = info.IsTask() ? "task" : "handler";
            if (!done.insert(section + "." + info.name).second) continue;
            AddContext(section, info.name, FiguresOfName(all, info));
        }
        return text_;
    }

  private:
    // A rule is for all contexts of the name: it takes the greatest of each figure.
    std::vector<JobFigures> FiguresOfName(const Selection& all, const ContextInfo& like) const {
        std::vector<JobFigures> figures;
        for (ContextId id = 0; id < model_.AllContexts().Count(); ++id) {
            const auto& info = model_.AllContexts().Get(id);
            if (info.name == like.name && info.IsTask() == like.IsTask())
                figures.push_back(FiguresOf(model_, all, id));
        }
        return figures;
    }

    void AddContext(const std::string& section, const std::string& name,
                    const std::vector<JobFigures>& figures) {
        std::string lines;
        AddMost(lines, "deadline", figures, Figure::Rt);
        AddMost(lines, "cet", figures, Figure::Cet);
        if (section == "task") {
            AddMost(lines, "ipt", figures, Figure::Ipt);
            AddMost(lines, "blocked", figures, Figure::Blocked);
        }
        if (!lines.empty()) text_ += "\n[" + section + "." + Quoted(name) + "]\n" + lines;
    }

    void AddMost(std::string& lines, const char* key, const std::vector<JobFigures>& figures,
                 Figure figure) const {
        std::optional<std::int64_t> most;
        for (const JobFigures& each : figures)
            if (const auto& values = each.Of(figure))
                most = std::max(most.value_or(0), values->max);
        if (!most) return;
        const auto limit = static_cast<std::int64_t>(std::ceil(static_cast<double>(*most) * kRoom));
        lines += std::string(key) + " = " + Time(limit) + "\n";
    }

    // In the unit of the clock, so that it is exact; bare counts without one.
    std::string Time(std::int64_t count) const {
        const auto& clock = model_.Recording().Clock();
        if (!clock.Known()) return std::to_string(count);
        return "\"" + std::to_string(count) + std::string(clock.UnitName()) + "\"";
    }

    static std::string Quoted(const std::string& name) {
        const bool bare = !name.empty() && std::ranges::all_of(name, [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                   c == '_' || c == '-';
        });
        if (bare) return name;
        std::string quoted = "\"";
        for (const char c : name) {
            const auto byte = static_cast<unsigned char>(c);
            if (c == '"' || c == '\\')
                quoted += std::string("\\") + c;
            else
                quoted += byte < 0x20 ? FormatText("\\u%04X", byte) : std::string(1, c);
        }
        return quoted + "\"";
    }

    const Model& model_;
    std::string text_;
};

}  // namespace

std::string SuggestRules(const Model& model) {
    return Writer(model).Write();
}

}  // namespace kvx::timing
