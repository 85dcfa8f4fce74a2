#include "host/app/RxClass.h"

#include <string_view>

#include "host/Assert.h"
#include "host/app/RxDictionary.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxClass, AcRxObject)

namespace {
// The class dictionary without the checked cast: the cast needs AcRxDictionary's descriptor,
// which is itself being registered through here.
AcRxDictionary* ClassDictionary() {
    return static_cast<AcRxDictionary*>(acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY));
}
}  // namespace

bool AcRxClass::isDerivedFrom(const AcRxClass* otherClass) const {
    for (const AcRxClass* c = this; c != nullptr; c = c->m_parent) {
        if (c == otherClass) return true;
    }
    return false;
}

AcRxClass* newAcRxClass(const wchar_t* className, const wchar_t* parentClassName, int dwgVersion,
                        int maintVersion, int proxyFlags,
                        AcRxClass::PseudoConstructor pseudoConstructor, const wchar_t* dxfName,
                        const wchar_t* appName) {
    KELAZ_ASSERT(className != nullptr && *className != L'\0', "a class needs a name");
    // Every tree hangs from the root: it is there before any class that may name it.
    if (std::wstring_view(className) != L"AcRxObject") AcRxObject::desc();
    AcRxDictionary* classes = ClassDictionary();
    if (AcRxObject* existing = classes->at(className)) return static_cast<AcRxClass*>(existing);

    // The registry keeps its descriptors for the life of the process.
    auto* cls = new AcRxClass();
    cls->m_name = className;
    cls->m_parentName = parentClassName != nullptr ? parentClassName : L"";
    cls->m_constructor = pseudoConstructor;
    cls->m_dxfName = dxfName != nullptr ? dxfName : L"";
    cls->m_appName = appName != nullptr ? appName : L"";
    cls->m_dwgVersion = dwgVersion;
    cls->m_maintVersion = maintVersion;
    cls->m_proxyFlags = proxyFlags;
    if (!cls->m_parentName.empty()) {
        cls->m_parent = static_cast<AcRxClass*>(classes->at(cls->m_parentName.c_str()));
    }
    classes->atPut(className, cls);
    return cls;
}

void acrxBuildClassHierarchy() {
    AcRxDictionary* classes = ClassDictionary();
    for (const auto& [name, obj] : *classes) {
        auto* cls = static_cast<AcRxClass*>(obj);
        if (cls->m_parent != nullptr || cls->m_parentName.empty()) continue;
        cls->m_parent = static_cast<AcRxClass*>(classes->at(cls->m_parentName.c_str()));
        KELAZ_ASSERT(cls->m_parent != nullptr, "a registered class names an unknown parent");
    }
}
