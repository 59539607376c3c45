// Rules files, over a small log of two tasks and a handler.

#include <memory>

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"
#include "workbench/timing/Findings.h"
#include "workbench/timing/RulesText.h"

namespace {

using kvx::timing::Model;

constexpr std::string_view kLog =
    "[0] task 1 becomes DORMANT.\n[0] task 2 becomes DORMANT.\n[10] enter to int handler 1.\n"
    "[10] task 1 becomes RUNNABLE.\n[12] leave from int handler 1.\n[12] dispatch to task 1.\n"
    "[14] enter to act_tsk tskid=2.\n[14] task 2 becomes RUNNABLE.\n[15] leave from act_tsk "
    "ercd=0.\n[20] enter to wai_sem semid=1.\n[20] task 1 becomes WAITING.\n[20] dispatch to task "
    "2.\n[24] enter to sig_sem semid=1.\n[24] task 1 becomes RUNNABLE.\n[25] leave from sig_sem "
    "ercd=0.\n[25] dispatch to task 1.\n[26] leave from wai_sem ercd=0.\n[30] enter to ext_tsk.\n"
    "[30] task 1 becomes DORMANT.\n[30] dispatch to task 2.\n[33] enter to ext_tsk.\n[33] task 2 "
    "becomes DORMANT.\n[33] dispatch from task 2.\n";

class Decoded {
  public:
    Decoded() {
        scratch_.Write("x.log", kLog);
        auto recording = kvx::formats::OpenRecording(scratch_.Path("x.log"));
        kvx::fuzz::Require(static_cast<bool>(recording), "the log does not open");
        trace_.SetRecording(std::move(*recording));
        trace_.Summarize();
    }
    const kvx::service::DecodedRecording& Get() const { return *trace_.Decoded(); }

  private:
    kvx::fuzz::Scratch scratch_;
    kvx::service::TraceService trace_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Decoded decoded;
    static const kvx::timing::Contexts contexts(decoded.Get());
    const auto text = kvx::fuzz::AsText(data, size);
    const auto& clock = decoded.Get().GetRecording().Clock();
    kvx::timing::WithDeadline(text, false, "task 1", "5ms");
    const auto rules = kvx::timing::ParseRules(text, "x.toml", contexts, clock);
    if (!rules) {
        kvx::fuzz::Require(!rules.GetError().message.empty(), "an error without a message");
        return 0;
    }
    const Model model(decoded.Get(), rules->EndsFor(contexts.Count()));
    const auto found = kvx::timing::FindAll(model, *rules);
    for (const auto& violation : found.violations)
        kvx::fuzz::Require(!violation.rule.empty() && !violation.sentence.empty(),
                           "a violation that does not say of what");
    for (const auto& rule : found.rules)
        kvx::fuzz::Require(rule.violated <= rule.examined, "more are violated than examined");
    return 0;
}
