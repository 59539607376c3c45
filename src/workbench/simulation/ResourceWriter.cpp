#include "workbench/simulation/ResourceWriter.h"

#include <nlohmann/json.hpp>

#include "workbench/simulation/LogLine.h"

namespace kvx::simulation {
namespace {

using Json = nlohmann::ordered_json;

Json TaskResource(const Task& task, const KernelMoment& start) {
    const TaskConfig& config = task.config;
    return {{"Type", "Task"},
            {"Attributes",
             {{"id", task.id},
              {"atr", config.active ? "TA_ACT" : "TA_NULL"},
              {"pri", config.priority},
              {"exinf", "0"},
              {"task", config.function},
              {"stksz", config.stackSize},
              {"stk", "NULL"},
              {"state", NameOf(start.StateOf(task))}}}};
}

Json HandlerResource(const Handler& handler) {
    static constexpr const char* kTypes[] = {"InterruptHandler", "InterruptServiceRoutine",
                                             "CyclicHandler", "AlarmHandler"};
    return {{"Type", kTypes[static_cast<std::size_t>(handler.kind)]},
            {"Attributes", {{"id", handler.id}, {"state", "DORMANT"}}}};
}

}  // namespace

std::string ResourceText(const SimulatedKernel& kernel, const KernelMoment& start) {
    Json resources;
    if (start.IsIdle())
        resources["CurrentContext"] = {{"Type", "Context"}, {"Attributes", {{"name", "None"}}}};
    for (const auto& task : kernel.AllTasks())
        resources[task.config.name] = TaskResource(task, start);
    for (const auto& line : kernel.Interrupts().Lines())
        resources[line.handler.name] = HandlerResource(line.handler);
    for (const auto& routine : kernel.ServiceRoutines())
        resources[routine.name] = HandlerResource(routine);
    for (const auto& timed : kernel.TimedHandlers())
        resources[timed.handler.name] = HandlerResource(timed.handler);
    std::int32_t message = 0;
    for (const auto& name : kernel.Messages())
        resources[name] = {{"Type", "ApplogString"},
                           {"Attributes", {{"id", std::to_string(++message)}}}};
    const Json file = {{"TimeScale", "us"},          {"TimeRadix", 10},
                       {"ConvertRules", {"asp"}},    {"VisualizeRules", {"asp"}},
                       {"ResourceHeaders", {"asp"}}, {"Resources", resources}};
    return file.dump(1, '\t') + "\n";
}

}  // namespace kvx::simulation
