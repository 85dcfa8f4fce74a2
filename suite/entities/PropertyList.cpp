#include "suite/entities/PropertyList.h"

#include <utility>

#include "host/Assert.h"

namespace kelaz {

Property& PropertyList::Add(const wchar_t* name, Property::Kind kind) {
    KELAZ_ASSERT(name != nullptr && *name != L'\0', "a property needs a name");
    KELAZ_ASSERT(Find(name) == nullptr, "a property is listed twice");
    Property& p = m_items.emplace_back();
    p.name = name;
    p.kind = kind;
    return p;
}

void PropertyList::AddText(const wchar_t* name, const CString& value) {
    Add(name, Property::Kind::kText).text = value;
}

void PropertyList::AddReal(const wchar_t* name, double value) {
    Add(name, Property::Kind::kReal).real = value;
}

void PropertyList::AddInteger(const wchar_t* name, Adesk::Int32 value) {
    Add(name, Property::Kind::kInteger).integer = value;
}

void PropertyList::AddPoint(const wchar_t* name, const AcGePoint3d& value) {
    Add(name, Property::Kind::kPoint).point = value;
}

void PropertyList::AddVector(const wchar_t* name, const AcGeVector3d& value) {
    Add(name, Property::Kind::kVector).vector = value;
}

void PropertyList::AddGroup(const wchar_t* name, const PropertyList& members) {
    Add(name, Property::Kind::kGroup).members = members.m_items;
}

void PropertyList::AddRows(const wchar_t* name, std::vector<std::vector<double>> rows) {
    Add(name, Property::Kind::kRows).rows = std::move(rows);
}

const Property* PropertyList::Find(const wchar_t* name) const {
    for (const Property& p : m_items) {
        if (p.name == name) return &p;
    }
    return nullptr;
}

std::vector<CString> PropertyList::Names() const {
    std::vector<CString> names;
    names.reserve(m_items.size());
    for (const Property& p : m_items) names.push_back(p.name);
    return names;
}

}  // namespace kelaz
