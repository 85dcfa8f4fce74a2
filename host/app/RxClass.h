#pragma once

// A runtime class descriptor: name, parent, the function that makes an empty instance (used
// when a drawing is read back) and the filing names. Descriptors live in the class dictionary
// of the system registry (acrxClassDictionary) for the life of the process.

#include <string>

#include "host/app/RxObject.h"

class AcRxClass : public AcRxObject {
public:
    using PseudoConstructor = AcRxObject* (*)();

    ACRX_DECLARE_MEMBERS(AcRxClass);

    const wchar_t* name() const { return m_name.c_str(); }
    AcRxClass* myParent() const { return m_parent; }
    // True for this class itself and for every class below otherClass.
    bool isDerivedFrom(const AcRxClass* otherClass) const;
    // A new empty instance; null for a class that cannot be instantiated (an abstract base).
    AcRxObject* create() const { return m_constructor != nullptr ? m_constructor() : nullptr; }
    const wchar_t* dxfName() const { return m_dxfName.c_str(); }
    const wchar_t* appName() const { return m_appName.c_str(); }
    int classVersion() const { return m_dwgVersion; }
    int proxyFlags() const { return m_proxyFlags; }

private:
    friend AcRxClass* newAcRxClass(const wchar_t*, const wchar_t*, int, int, int, PseudoConstructor,
                                   const wchar_t*, const wchar_t*);
    friend void acrxBuildClassHierarchy();
    AcRxClass() = default;

    std::wstring m_name;
    std::wstring m_parentName;
    AcRxClass* m_parent = nullptr;
    PseudoConstructor m_constructor = nullptr;
    std::wstring m_dxfName;
    std::wstring m_appName;
    int m_dwgVersion = 0;
    int m_maintVersion = 0;
    int m_proxyFlags = 0;
};

// Registers a class under className in the class dictionary. The parent is linked at once when
// it is registered already, otherwise by acrxBuildClassHierarchy(). Registering a name again
// answers the descriptor already there.
AcRxClass* newAcRxClass(const wchar_t* className, const wchar_t* parentClassName,
                        int dwgVersion = 0, int maintVersion = 0, int proxyFlags = 0,
                        AcRxClass::PseudoConstructor pseudoConstructor = nullptr,
                        const wchar_t* dxfName = nullptr, const wchar_t* appName = nullptr);

// Links every registered class to its parent by name. A parent that is still unknown is a
// programming error (a class registered before the class it derives from was ever declared).
void acrxBuildClassHierarchy();

#define KELAZ_RX_WIDEN_(text) L##text
#define KELAZ_RX_WIDEN(text) KELAZ_RX_WIDEN_(text)
#define KELAZ_RX_NAME(token) KELAZ_RX_WIDEN(#token)

// The members every define macro gives: the descriptor, registered on first use if rxInit() was
// not called yet, so that a class is never seen without its descriptor.
#define KELAZ_RX_DEFINE_COMMON_(CLASS_NAME)                      \
    AcRxClass* CLASS_NAME::gpDesc = nullptr;                     \
    AcRxClass* CLASS_NAME::desc() {                              \
        if (CLASS_NAME::gpDesc == nullptr) CLASS_NAME::rxInit(); \
        return CLASS_NAME::gpDesc;                               \
    }                                                            \
    AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }

#define KELAZ_RX_DEFINE_INIT_(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINT_VERSION, PROXY_FLAGS, \
                              CONSTRUCTOR, DXF_NAME, APP_NAME)                                   \
    void CLASS_NAME::rxInit() {                                                                  \
        if (CLASS_NAME::gpDesc != nullptr) return;                                               \
        CLASS_NAME::gpDesc =                                                                     \
            newAcRxClass(KELAZ_RX_NAME(CLASS_NAME), PARENT_CLASS::desc()->name(), DWG_VERSION,   \
                         MAINT_VERSION, PROXY_FLAGS, CONSTRUCTOR, DXF_NAME, APP_NAME);           \
    }

// A class that cannot be made empty (an abstract base): no pseudo-constructor.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS) \
    KELAZ_RX_DEFINE_COMMON_(CLASS_NAME)                       \
    KELAZ_RX_DEFINE_INIT_(CLASS_NAME, PARENT_CLASS, 0, 0, 0, nullptr, nullptr, nullptr)

// A class made empty by its default constructor.
#define ACRX_CONS_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, VERSION_NUMBER) \
    KELAZ_RX_DEFINE_COMMON_(CLASS_NAME)                                    \
    KELAZ_RX_DEFINE_INIT_(                                                 \
        CLASS_NAME, PARENT_CLASS, VERSION_NUMBER, 0, 0,                    \
        []() -> AcRxObject* { return new CLASS_NAME(); }, nullptr, nullptr)

// A filed class: made empty by its default constructor, with its DXF record name and the
// application that defines it (both written as bare tokens, as the host's macro takes them).
#define ACRX_DXF_DEFINE_MEMBERS(CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINT_VERSION, PROXY_FLAGS, \
                                DXF_NAME, APP_NAME)                                                \
    KELAZ_RX_DEFINE_COMMON_(CLASS_NAME)                                                            \
    KELAZ_RX_DEFINE_INIT_(                                                                         \
        CLASS_NAME, PARENT_CLASS, DWG_VERSION, MAINT_VERSION, PROXY_FLAGS,                         \
        []() -> AcRxObject* { return new CLASS_NAME(); }, KELAZ_RX_NAME(DXF_NAME),                 \
        KELAZ_RX_NAME(APP_NAME))
