#include "workbench/timing/FindingWords.h"

#include "workbench/timing/Sentence.h"
#include "workbench/timing/Times.h"

namespace kvx::timing {
namespace {

class Words {
  public:
    Words(const Model& model, const Incident& incident) : model_(model), incident_(incident) {}

    std::string Write() const {
        switch (incident_.kind) {
            case FindingKind::PriorityInversion:
                return Job() + " was blocked on " + Object() + " held by " + Name(1) +
                       ", which stood ready for " + Time(incident_.measured) + " while " +
                       Names(2) + " ran" + GoesOn() + ".";
            case FindingKind::Deadlock:
                if (incident_.contexts.size() == 1)
                    return "Deadlock: " + Name(0) + " waits for " + Object() +
                           ", which it holds itself, for " + Time(incident_.measured) + GoesOn() +
                           ".";
                return "Deadlock: " + Names(0) + " wait for each other, for " +
                       Time(incident_.measured) + GoesOn() + ".";
            case FindingKind::Overload:
                return "Processor " + Processor() + " had no idle time for " +
                       Time(incident_.measured) + GoesOn() + ".";
            case FindingKind::HandlerLoad:
                return Name(0) + " ran for up to " + Time(incident_.measured) +
                       " of 10 ms on processor " + Processor() + ".";
            case FindingKind::LockHeldAtEnd:
                if (incident_.goesOn)
                    return Name(0) + " holds " + Object() + " at the end of the recording.";
                return Name(0) + " ended a job with " + Object() + " held" + Often() + ".";
            case FindingKind::UnlockWithoutLock:
                return Name(0) + " gave " + Object() + ", which it did not hold.";
            case FindingKind::Overrun:
                return Job() + " was not over when " + Name(1) + " was to start the next one" +
                       Often() + ".";
            case FindingKind::LostStretch:
                return "Processor " + Processor() + ": " + Time(incident_.measured) + " are lost" +
                       GoesOn() + ".";
            default:
                return {};
        }
    }

  private:
    std::string Name(std::size_t i) const {
        return i < incident_.contexts.size() ? model_.AllContexts().NameOf(incident_.contexts[i])
                                             : std::string("nobody");
    }
    std::string Names(std::size_t first) const {
        std::string text;
        for (auto i = first; i < incident_.contexts.size(); ++i)
            text += (i == first                           ? ""
                     : i + 1 == incident_.contexts.size() ? " and "
                                                          : ", ") +
                    Name(i);
        return text;
    }
    std::string Job() const {
        return incident_.job == 0 ? Name(0)
                                  : JobName(model_, incident_.contexts.front(), incident_.job);
    }
    std::string Object() const { return WaitName(model_, incident_.object, kCauseUnknown); }
    std::string Processor() const {
        return std::to_string(model_.ProcessorOf(*incident_.timeline));
    }
    std::string Time(std::int64_t count) const {
        return TimeText(count, model_.Recording().Clock());
    }
    std::string GoesOn() const {
        return incident_.goesOn ? ", and still does at the end of the recording" : "";
    }
    std::string Often() const {
        return incident_.measured < 2 ? "" : ", " + std::to_string(incident_.measured) + " times";
    }

    const Model& model_;
    const Incident& incident_;
};

Severity SeverityOf(const Incident& incident) {
    switch (incident.kind) {
        case FindingKind::Deadlock:
            return Severity::Fault;
        case FindingKind::LockHeldAtEnd:
            return incident.goesOn ? Severity::Note : Severity::Warning;
        default:
            return Severity::Warning;
    }
}

}  // namespace

Finding FindingOf(const Model& model, const Incident& incident) {
    Finding finding;
    finding.kind = incident.kind;
    finding.severity = SeverityOf(incident);
    finding.contexts = incident.contexts;
    finding.timeline = incident.timeline;
    finding.start = incident.start;
    finding.end = incident.end;
    finding.measured = static_cast<double>(incident.measured);
    finding.sentence = Words(model, incident).Write();
    finding.evidence = incident.evidence;
    finding.job = incident.job;
    return finding;
}

}  // namespace kvx::timing
