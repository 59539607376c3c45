#include "platform/base/Object.h"

#include "platform/base/Guarded.h"

const CRuntimeClass CObject::kClass = MakeRuntimeClass("CObject", nullptr);

CObject* CRuntimeClass::CreateObject() const {
    return create ? kvx::Guarded(nullptr, create) : nullptr;
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* other) const {
    for (const CRuntimeClass* record = this; record; record = record->base)
        if (record == other) return true;
    return false;
}
