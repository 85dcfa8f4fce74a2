#pragma once

// Just enough JSON writing for the dump: strings in UTF-8 with escapes, numbers in their
// shortest exact form (null when not finite), points as [x, y, z].

#include <string>

#include "host/ge/Point3d.h"
#include "host/ge/Vector3d.h"
#include "host/text/CString.h"

namespace kelaz::json {

std::string String(const CString& text);
std::string Number(double value);
std::string Triple(double x, double y, double z);
inline std::string Point(const AcGePoint3d& p) { return Triple(p.x, p.y, p.z); }
inline std::string Vector(const AcGeVector3d& v) { return Triple(v.x, v.y, v.z); }

// Builds one object, members in the order they are added.
class Object {
public:
    Object& Add(const char* key, const std::string& rawValue);
    std::string Str() const { return m_text + "}"; }

private:
    std::string m_text = "{";
};

}  // namespace kelaz::json
