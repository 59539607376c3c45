#pragma once
// What the events of one class mean, worked out once from the class: which record they make and
// from which fields.

#include <babeltrace2/babeltrace.h>

#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/ctf/Fields.h"
#include "workbench/service/Record.h"

namespace kvx::formats::ctf {

enum class Kernel : std::uint8_t { Other, Linux, Zephyr };

struct DetailField {
    enum class Form : std::uint8_t { Unsigned, Hexadecimal, Signed, Text };
    std::string name;
    FieldPlace place;
    Form form = Form::Text;
};

struct Plan {
    Kernel kernel = Kernel::Other;
    service::RecordKind kind = service::RecordKind::Comment;
    service::TaskState state = service::TaskState::Runnable;
    service::ContextKind subjectKind = service::ContextKind::Task;
    std::string name;    // calls: as shown
    FieldPlace subject;  // number of the task or handler; none: 0
    FieldPlace subjectName;
    FieldPlace from;  // Switch
    FieldPlace fromName;
    FieldPlace fromState;
    FieldPlace object;    // calls
    FieldPlace target;    // processor that the subject is on
    FieldPlace callName;  // calls whose name is in a field: its label, else its number
    FieldPlace processor;
    std::vector<DetailField> details;
    bool objectIsThread = false;  // object is numbered like the threads are
    bool namesOnly = false;       // tells the subject's name and nothing else
    bool recordsStates = false;   // the kernel tells itself when tasks become ready or wait
};

// The fields of an event class by name.
class EventShape {
  public:
    explicit EventShape(const bt_event_class* cls);

    // Without the domain before a colon.
    const std::string& Name() const { return name_; }
    Kernel GetKernel() const { return kernel_; }
    // The kernel closes every call with one kind of event.
    bool EndsCallsAlike() const { return endsCallsAlike_; }
    // The first of the names that there is.
    FieldPlace Find(std::initializer_list<std::string_view> names) const;
    std::vector<DetailField> Details() const;

  private:
    struct Member {
        std::string name;
        FieldPlace place;
        const bt_field_class* cls;
    };
    void AddMembers(Scope scope, const bt_field_class* structure);
    void LookAtSiblings(const bt_stream_class* cls);

    std::string name_;
    Kernel kernel_ = Kernel::Other;
    bool endsCallsAlike_ = false;
    std::vector<Member> members_;
};

Plan MakePlan(const EventShape& shape);
// False: not an event of that kernel that says anything.
bool PlanZephyr(const EventShape& shape, Plan& plan);
bool PlanLinux(const EventShape& shape, Plan& plan);

}  // namespace kvx::formats::ctf
