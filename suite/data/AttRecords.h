#pragma once

// Records of the attribute catalogue shared by the data module and its callers.

#include "host/text/CString.h"

namespace KelAzDataMng {

// Where an attribute sits in the catalogue: speciality, big category, small category and
// detail member, each the text of its id. A small category's index has an empty member part.
struct SAttDataIndex {
    CString strSpecId;
    CString strBigCategoryId;
    CString strSmallCategoryId;
    CString strDetailMemId;

    bool IsComplete() const {
        return !strSpecId.IsEmpty() && !strBigCategoryId.IsEmpty() &&
               !strSmallCategoryId.IsEmpty() && !strDetailMemId.IsEmpty();
    }
    friend bool operator==(const SAttDataIndex&, const SAttDataIndex&) = default;
};

// Section types: how a component of the category is drawn.
inline constexpr int kSectionTypeSection = 1;    // by its cross-section (section entity)
inline constexpr int kSectionTypeEquipment = 2;  // as an equipment block

// How an attribute is drawn: its section type, the section's shape code and size text
// ("B,630,H,320" for a rectangle, "B,300" for a round section), what kind of component it is
// and the block that shows it.
struct SectionInfo {
    int nSectionType = kSectionTypeSection;
    CString strShapeCode;
    CString strSize;
    CString strKind;
    CString strBlockName;

    friend bool operator==(const SectionInfo&, const SectionInfo&) = default;
};

}  // namespace KelAzDataMng
