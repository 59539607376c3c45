#pragma once
// What the events of one kind mean: which record they make and from which fields. Worked out once
// from the event's shape.

#include <string>
#include <vector>

#include "workbench/kernels/EventShape.h"
#include "workbench/service/Record.h"

namespace kvx::kernels {

struct EventPlan {
    service::RecordKind kind = service::RecordKind::Comment;
    service::TaskState state = service::TaskState::Runnable;
    service::ContextKind subjectKind = service::ContextKind::Task;
    std::uint8_t waitCode = 0;  // state Waiting: the state code, where the event gives the cause
    std::string name;           // calls: as shown
    FieldRef subject;           // number or address of the task or handler; none: 0
    FieldRef subjectName;
    FieldRef from;  // Switch
    FieldRef fromName;
    FieldRef fromState;  // see EventKernel::StateOf
    FieldRef object;     // calls
    FieldRef target;     // processor that the subject is on
    FieldRef callName;   // calls whose name is in a field: its label, else its number
    FieldRef priority;   // base priority of the subject
    FieldRef processor;
    FieldRef condition;  // the event means nothing where this field is 0
    std::vector<EventDetail> details;
    bool keepsCase = false;     // call names in fields are the application's own
    bool objectIsTask = false;  // object is numbered like the tasks are
    bool tellsReady = false;    // the kernel tells itself when tasks become ready
};

}  // namespace kvx::kernels
