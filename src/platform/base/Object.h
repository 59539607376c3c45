#pragma once
// Root of the framework's classes, and run-time class records for dynamic creation.
//
//     class CFooView : public CView {
//       public:
//         static const CRuntimeClass kClass;  // CRuntimeClass CFooView::kClass = MakeRuntimeClass…
//         const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }
//     };
//     const CRuntimeClass CFooView::kClass = MakeDynamicClass<CFooView>("CFooView",
//     &CView::kClass);

class CObject;

struct CRuntimeClass {
    const char* name = nullptr;
    const CRuntimeClass* base = nullptr;
    CObject* (*create)() = nullptr;  // null: cannot be created dynamically

    // A new object, the caller's; null when the class cannot be created or its constructor throws.
    CObject* CreateObject() const;
    bool IsDerivedFrom(const CRuntimeClass* other) const;
};

class CObject {
  public:
    static const CRuntimeClass kClass;
    CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;
    virtual const CRuntimeClass* GetRuntimeClass() const { return &kClass; }
    bool IsKindOf(const CRuntimeClass* other) const {
        return GetRuntimeClass()->IsDerivedFrom(other);
    }
};

// Record of a class that can be created by name of its class; T has a default constructor.
template <class T>
constexpr CRuntimeClass MakeDynamicClass(const char* name, const CRuntimeClass* base) {
    return {name, base, []() -> CObject* { return new T; }};
}

// Record of a class that cannot.
constexpr CRuntimeClass MakeRuntimeClass(const char* name, const CRuntimeClass* base) {
    return {name, base, nullptr};
}
