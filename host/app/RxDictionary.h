#pragma once

// A dictionary of runtime objects by name, and the system registry: the process-wide dictionary
// whose entry "ClassDictionary" holds every registered class by its name.

#include <map>
#include <string>

#include "host/app/RxObject.h"

class AcRxDictionary : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDictionary);

    AcRxDictionary() = default;

    // Null when key is absent.
    AcRxObject* at(const wchar_t* key) const;
    // Puts obj under key and answers what was there before (null if nothing). The dictionary
    // does not own its entries: registry entries live as long as the process.
    AcRxObject* atPut(const wchar_t* key, AcRxObject* obj);
    bool has(const wchar_t* key) const { return at(key) != nullptr; }
    // Takes the entry out and answers it (null if absent).
    AcRxObject* remove(const wchar_t* key);
    int numEntries() const { return static_cast<int>(m_entries.size()); }

    // Range-for over (key, object) pairs in key order (not in the host, handy for audits).
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    std::map<std::wstring, AcRxObject*> m_entries;
};

#define ACRX_CLASS_DICTIONARY L"ClassDictionary"

AcRxDictionary* acrxSysRegistry();
#define acrxClassDictionary AcRxDictionary::cast(acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY))
