#pragma once
// An explanation as lines for people: what happened when, for how long, one below the other.

#include <string>
#include <vector>

#include "workbench/timing/Explanation.h"

namespace kvx::timing {

struct ExplanationLine {
    std::string at;    // empty for what happened meanwhile
    std::string time;  // how long; empty at the end of the job
    std::string text;
    bool isMeanwhile = false;  // what the holders of a lock did during the line above
    std::int64_t start = 0;    // counts, as at and time say
    std::int64_t end = 0;
};

// Of several parts that are one wait, what the holder did is added up.
std::vector<ExplanationLine> LinesOf(const Model& model, const Explanation& explanation);
// "Started by DRIVER job 4 in sig_sem at 00:00:01.000.000."; empty where it is not known.
std::string StarterSentence(const Model& model, const Job& job);

}  // namespace kvx::timing
