#include <gtest/gtest.h>

#include <set>
#include <string>

#include "host/app/RxClass.h"
#include "host/app/RxDictionary.h"
#include "host/db/Arc.h"
#include "host/db/Circle.h"
#include "host/db/HostClasses.h"
#include "host/db/Line.h"
#include "host/db/Polyline.h"

namespace {

// A class added the way the suite adds its entities: a declaration and one define line.
class TestMarker : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(TestMarker);
};

}  // namespace

ACRX_DXF_DEFINE_MEMBERS(TestMarker, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0,
                        TESTMARKER, KelazTest)

namespace {

TEST(RxClass, HostClassesFormOneTree) {
    kelaz::InitHostClasses();
    AcRxDictionary* classes = acrxClassDictionary;
    ASSERT_NE(classes, nullptr);
    for (const wchar_t* name : {L"AcDbLine", L"AcDbArc", L"AcDbCircle", L"AcDbPolyline",
                                L"AcDbLayerTableRecord", L"AcDbBlockTableRecord"}) {
        auto* cls = AcRxClass::cast(classes->at(name));
        ASSERT_NE(cls, nullptr) << kelaz::ToUtf8(std::wstring_view(name));
        EXPECT_EQ(std::wstring(cls->name()), name);
        EXPECT_TRUE(cls->isDerivedFrom(AcDbObject::desc()));
        AcRxObject* made = cls->create();
        EXPECT_NE(made, nullptr) << "filed classes can be made empty";
        delete made;
    }
    // The chain up from a line, and nothing above the root.
    std::wstring chain;
    for (AcRxClass* c = AcDbLine::desc(); c != nullptr; c = c->myParent()) {
        chain += c->name();
        chain += L' ';
    }
    EXPECT_EQ(chain, L"AcDbLine AcDbCurve AcDbEntity AcDbObject AcRxObject ");
    EXPECT_EQ(AcDbCurve::desc()->create(), nullptr) << "abstract bases cannot be made";
    EXPECT_EQ(std::wstring(AcDbPolyline::desc()->dxfName()), L"LWPOLYLINE");
}

TEST(RxClass, IsKindOfAndCastFollowTheTree) {
    AcDbLine line;
    AcDbCircle circle;
    const AcRxObject* obj = &line;
    EXPECT_EQ(line.isA(), AcDbLine::desc());
    EXPECT_TRUE(line.isKindOf(AcDbCurve::desc()));
    EXPECT_TRUE(line.isKindOf(AcRxObject::desc()));
    EXPECT_FALSE(line.isKindOf(AcDbArc::desc()));
    EXPECT_FALSE(line.isKindOf(nullptr));
    EXPECT_EQ(AcDbCurve::cast(obj), &line);
    EXPECT_EQ(AcDbLine::cast(obj), &line);
    EXPECT_EQ(AcDbArc::cast(obj), nullptr);
    EXPECT_EQ(AcDbLine::cast(&circle), nullptr);
    EXPECT_EQ(AcDbLine::cast(nullptr), nullptr);

    // A made instance is of the class that made it.
    AcRxObject* made = AcDbArc::desc()->create();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->isA(), AcDbArc::desc());
    delete made;
}

TEST(RxClass, ASuiteClassRegistersWithOneLine) {
    TestMarker::rxInit();
    auto* cls = AcRxClass::cast(acrxClassDictionary->at(L"TestMarker"));
    ASSERT_NE(cls, nullptr);
    EXPECT_EQ(cls, TestMarker::desc());
    EXPECT_EQ(cls->myParent(), AcDbEntity::desc());
    EXPECT_EQ(std::wstring(cls->dxfName()), L"TESTMARKER");
    EXPECT_EQ(std::wstring(cls->appName()), L"KelazTest");
    TestMarker::rxInit();  // a second registration changes nothing
    EXPECT_EQ(AcRxClass::cast(acrxClassDictionary->at(L"TestMarker")), cls);

    AcRxObject* made = cls->create();
    ASSERT_NE(made, nullptr);
    EXPECT_NE(TestMarker::cast(made), nullptr);
    EXPECT_NE(AcDbEntity::cast(made), nullptr);
    EXPECT_EQ(AcDbCurve::cast(made), nullptr);
    delete made;
}

TEST(RxClass, ParentsNamedBeforeTheyExistAreLinkedByTheHierarchyBuild) {
    AcRxClass* child = newAcRxClass(L"KelazTestLateChild", L"KelazTestLateParent");
    EXPECT_EQ(child->myParent(), nullptr);
    AcRxClass* parent = newAcRxClass(L"KelazTestLateParent", L"AcRxObject");
    acrxBuildClassHierarchy();
    EXPECT_EQ(child->myParent(), parent);
    EXPECT_TRUE(child->isDerivedFrom(AcRxObject::desc()));
    EXPECT_FALSE(parent->isDerivedFrom(child));
    EXPECT_EQ(acrxSysRegistry()->at(L"no such entry"), nullptr);
}

TEST(AcadErrorStatus, NumbersAndNamesAreDistinct) {
    EXPECT_EQ(Acad::eOk, 0);
    EXPECT_EQ(Acad::eNotImplementedYet, 1);
    EXPECT_EQ(Acad::eNotApplicable, 2);
    EXPECT_EQ(Acad::eInvalidInput, 3);
    std::set<int> values;
    std::set<std::wstring> names;
    int count = 0;
#define KELAZ_COLLECT(name, value)                                    \
    values.insert(value);                                             \
    names.insert(kelaz::ErrorText(Acad::name));                       \
    EXPECT_EQ(std::wstring(kelaz::ErrorText(Acad::name)), L"" #name); \
    ++count;
    KELAZ_ERROR_STATUS_LIST(KELAZ_COLLECT)
#undef KELAZ_COLLECT
    EXPECT_EQ(static_cast<int>(values.size()), count);
    EXPECT_EQ(static_cast<int>(names.size()), count);
    EXPECT_EQ(std::wstring(kelaz::ErrorText(static_cast<Acad::ErrorStatus>(9999))),
              L"Unknown ErrorStatus");
}

}  // namespace
