#pragma once
// What the texts of system calls tell, read once: the objects that they are about, whether they
// succeeded, and which errors they returned.

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/service/DecodedRecording.h"
#include "workbench/service/Kernel.h"

namespace kvx::timing {

using ObjectId = std::uint32_t;
inline constexpr ObjectId kNoObject = 0xFFFFFFFFu;

struct ObjectInfo {
    std::uint8_t kind = 0;  // the state code of a wait for it; 0: a task
    std::string text;       // its number, address or name, as parameters give it
    // "semaphore", "event flag" and so on.
    std::string_view KindName() const;
    // "semaphore 3"; the text alone where it says the kind itself.
    std::string Name() const {
        const std::string kindName(KindName());
        return text.starts_with(kindName) ? text : kindName + " " + text;
    }
};

class Objects {
  public:
    // parameter: "semid=3". The same for the same.
    ObjectId Intern(std::uint8_t kind, std::string_view parameter);
    const ObjectInfo& Get(ObjectId id) const { return infos_[id]; }
    std::uint32_t Count() const { return static_cast<std::uint32_t>(infos_.size()); }

  private:
    std::vector<ObjectInfo> infos_;
    std::unordered_map<std::string, ObjectId> ids_;
};

enum class Outcome : std::uint8_t {
    Open,       // no return is recorded
    Succeeded,  // or returned without telling what
    Failed
};

struct CallFact {
    std::uint32_t event = 0;
    ObjectId object = kNoObject;
    service::CallUse use = service::CallUse::None;
    Outcome outcome = Outcome::Open;
    bool waits = false;  // the task waits in it
};

struct CallError {
    std::uint32_t event = 0;
    std::uint32_t timeline = 0;
    std::uint32_t name = 0;  // number of the error's name
};

class CallFacts {
  public:
    // Reads on until everything is decoded.
    explicit CallFacts(const service::DecodedRecording& decoded);

    // Calls about an object, and those that start a task; in order of events.
    std::span<const CallFact> Of(std::uint32_t timeline) const { return facts_[timeline]; }
    // Null: none of those.
    const CallFact* Find(std::uint32_t timeline, std::uint32_t event) const;
    const Objects& AllObjects() const { return objects_; }
    // By timeline, then by event.
    const std::vector<CallError>& Errors() const { return errors_; }
    const std::string& ErrorName(std::uint32_t name) const { return errorNames_[name]; }
    // The error that a call returned; empty: none.
    std::string_view ErrorOf(std::uint32_t timeline, std::uint32_t event) const;
    std::size_t Bytes() const;

  private:
    class Reader;
    void MarkWaits(const service::DecodedRecording& decoded, std::uint32_t timeline);

    std::vector<std::vector<CallFact>> facts_;
    Objects objects_;
    std::vector<CallError> errors_;
    std::vector<std::string> errorNames_;
};

// The call that the record issued; none among the events of the timeline below end: kOpenEnd.
std::uint32_t FindCallOfRecord(const service::EventStore& events, std::uint32_t record,
                               std::uint32_t end);

}  // namespace kvx::timing
