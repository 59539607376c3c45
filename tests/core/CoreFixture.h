#pragma once
// The shared objects of a component over a scripted trace.

#include "resources/Tables.h"
#include "support/ScriptedHost.h"
#include "support/ScriptedView.h"
#include "trace/HostTraceSource.h"
#include "trace/TraceData.h"

namespace kvx::test {

struct Core {
    explicit Core(ScriptedTrace trace = {}, bool decode = true) : service(std::move(trace)) {
        SetResourceTable(&resources::Table());
        if (decode) service.DecodeAll();
        data.contexts.Load();
    }
    void SetRange(std::uint32_t start, std::uint32_t end) {
        data.markers.SetMarker(nullptr, kMarkerStart, start);
        data.markers.SetMarker(nullptr, kMarkerEnd, end);
        data.markers.Rebuild(nullptr, true);
    }
    CString TimeText(double t) const {
        CString text;
        data.engine.FormatTime(t, text);
        return text;
    }

    ScriptedTraceService service;
    ScriptedHost host{service};
    HostTraceSource source;
    COSTraceData data{source};
    ScriptedView view;
};

}  // namespace kvx::test
