#pragma once
// Incidents in words.

#include "workbench/timing/Findings.h"

namespace kvx::timing {

Finding FindingOf(const Model& model, const Incident& incident);

}  // namespace kvx::timing
