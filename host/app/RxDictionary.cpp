#include "host/app/RxDictionary.h"

#include "host/app/RxClass.h"

ACRX_CONS_DEFINE_MEMBERS(AcRxDictionary, AcRxObject, 0)

AcRxObject* AcRxDictionary::at(const wchar_t* key) const {
    if (key == nullptr) return nullptr;
    const auto it = m_entries.find(key);
    return it == m_entries.end() ? nullptr : it->second;
}

AcRxObject* AcRxDictionary::atPut(const wchar_t* key, AcRxObject* obj) {
    if (key == nullptr) return nullptr;
    AcRxObject*& slot = m_entries[key];
    AcRxObject* previous = slot;
    slot = obj;
    return previous;
}

AcRxObject* AcRxDictionary::remove(const wchar_t* key) {
    if (key == nullptr) return nullptr;
    const auto it = m_entries.find(key);
    if (it == m_entries.end()) return nullptr;
    AcRxObject* obj = it->second;
    m_entries.erase(it);
    return obj;
}

AcRxDictionary* acrxSysRegistry() {
    // Built on first use and never destroyed: classes register from anywhere, at any time,
    // including while other statics are being torn down.
    static AcRxDictionary* registry = [] {
        auto* reg = new AcRxDictionary();
        reg->atPut(ACRX_CLASS_DICTIONARY, new AcRxDictionary());
        return reg;
    }();
    return registry;
}
