#pragma once
// What records: a target that runs implements it. A trace read from a file has none.

#include "platform/base/Types.h"

namespace kvx::service {

class IMeasurement {
  public:
    virtual ~IMeasurement() = default;
    // Each answers a status; negative is failure.
    virtual HRESULT Stop() = 0;
    virtual HRESULT Reset() = 0;
    virtual HRESULT Start() = 0;
    // kRangeFull or kRangeFree.
    virtual HRESULT SetRangeCondition(std::int32_t condition) = 0;
    virtual std::int32_t GetRangeCondition() const = 0;
};

}  // namespace kvx::service
