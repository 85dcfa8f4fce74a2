#pragma once

// The fields of a suite entity as (name, value) pairs, in the order the entity lists them. Names
// are the keys a dump writes (attName, start, mainPipe, ...); the dump and the drawing's
// extended data are both written from this one listing, so an entity names its fields once.

#include <vector>

#include "host/Adesk.h"
#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"
#include "host/text/CString.h"

namespace kelaz {

struct Property {
    enum class Kind {
        kText,
        kReal,
        kInteger,
        kPoint,
        kVector,
        kGroup,  // named members, like an object of the dump
        kRows,   // rows of numbers, like a list of [x, y, z, bulge]
    };

    CString name;
    Kind kind = Kind::kText;
    CString text;
    double real = 0.0;
    Adesk::Int32 integer = 0;
    AcGePoint3d point;
    AcGeVector3d vector;
    std::vector<Property> members;
    std::vector<std::vector<double>> rows;
};

class PropertyList {
public:
    // A name may appear once: listing a field twice is a programming error.
    void AddText(const wchar_t* name, const CString& value);
    void AddReal(const wchar_t* name, double value);
    void AddInteger(const wchar_t* name, Adesk::Int32 value);
    void AddPoint(const wchar_t* name, const AcGePoint3d& value);
    void AddVector(const wchar_t* name, const AcGeVector3d& value);
    void AddGroup(const wchar_t* name, const PropertyList& members);
    void AddRows(const wchar_t* name, std::vector<std::vector<double>> rows);

    const std::vector<Property>& Items() const { return m_items; }
    // Null when there is no property of that name.
    const Property* Find(const wchar_t* name) const;
    // The names in listing order.
    std::vector<CString> Names() const;

private:
    Property& Add(const wchar_t* name, Property::Kind kind);

    std::vector<Property> m_items;
};

}  // namespace kelaz
