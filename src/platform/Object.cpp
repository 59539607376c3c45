#include "platform/Object.h"

const CRuntimeClass CObject::kClass = MakeRuntimeClass("CObject", nullptr);

CObject* CRuntimeClass::CreateObject() const {
    if (!create) return nullptr;
    try {
        return create();
    } catch (...) {
        return nullptr;
    }
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* other) const {
    for (const CRuntimeClass* record = this; record; record = record->base)
        if (record == other) return true;
    return false;
}
