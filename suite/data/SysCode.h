#pragma once

// System codes of a speciality (送风 SF, 给水 J, 照明 WL ...): each names a pipe or line system
// and gives its layers their colour and line type.

#include <vector>

#include "host/text/Array.h"
#include "host/text/CString.h"

namespace KelAzDataMng {

class CSysCodeData {
public:
    CSysCodeData() = default;
    CSysCodeData(CString spec, CString code, CString name, int color, CString lineType)
        : m_spec(std::move(spec)),
          m_code(std::move(code)),
          m_name(std::move(name)),
          m_color(color),
          m_lineType(std::move(lineType)) {}

    // The code as drawings carry it ("SF").
    CString GetFullName() const { return m_code; }
    CString GetName() const { return m_name; }  // "送风"
    CString GetSpec() const { return m_spec; }
    int GetColor() const { return m_color; }  // colour index
    CString GetLineType() const { return m_lineType; }

    // Appends this code's entry for a list control: the code, or prefix + separator + code
    // when a prefix is given.
    void GetStrTreeDataAry(const CString& prefix, const CString& separator,
                           CStringArray& entries) const;

private:
    CString m_spec;
    CString m_code;
    CString m_name;
    int m_color = 7;
    CString m_lineType;
};

class CISysCode {
public:
    // The system codes of a speciality in table order; false for an unknown speciality.
    static bool GetSpecCodeInfos(const CString& spec, std::vector<CSysCodeData>& infos);
    static bool GetSysCodeData(const CString& spec, const CString& code, CSysCodeData& data);
    // "speciality\\code" when the speciality has that code, otherwise empty.
    static CString GetIndexPath(const CString& specAndCode);
};

class CSys {
public:
    // The catalogue path of an attribute or category; empty when the catalogue has none.
    static CString GetIndexPath(const CString& attName);
};

}  // namespace KelAzDataMng
