#include <gtest/gtest.h>

#include "suite/data/CurrentProject.h"
#include "suite/model/BimModel.h"
#include "tests/support/ProjectFixture.h"

using BimModel = kelaz::test::ProjectTest;

// The default floor table has a basement, single floors, a range "3/6", a comma row "7,9" with
// its own records and a refuge floor 8 between them.
TEST_F(BimModel, StoreysOfEveryRowFormInElevationOrder) {
    pDeleteBimInstance();
    EXPECT_FALSE(HasBimInstance());
    const KelAzBimModel* model = pGetBimInstance();
    ASSERT_NE(model, nullptr);
    struct Expected {
        const wchar_t* name;
        double bottom, top;
    };
    const Expected expected[] = {
        {L"-1", -4500, 0},    {L"1", 0, 4500},      {L"2", 4500, 8700},    {L"3", 8700, 12300},
        {L"4", 12300, 15900}, {L"5", 15900, 19500}, {L"6", 19500, 23100},  {L"7", 23100, 26700},
        {L"8", 26700, 31200}, {L"9", 31200, 34800}, {L"10", 34800, 37800},
    };
    ASSERT_EQ(model->Storeys().size(), std::size(expected));
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(model->Storeys()[i].strName, expected[i].name) << i;
        EXPECT_DOUBLE_EQ(model->Storeys()[i].dBottom, expected[i].bottom) << i;
        EXPECT_DOUBLE_EQ(model->Storeys()[i].dTop, expected[i].top) << i;
    }
    // A floor's own elevation belongs to it, its top to the storey above.
    EXPECT_EQ(model->StoreyAt(8700)->strName, L"3");
    EXPECT_EQ(model->StoreyAt(12299.999)->strName, L"3");
    EXPECT_EQ(model->StoreyAt(0)->strName, L"1");
    EXPECT_EQ(model->StoreyAt(-4500.001), nullptr);
    EXPECT_EQ(model->StoreyAt(37800), nullptr);

    // Kept until dropped; the next reader builds a new one.
    const int generation = model->Generation();
    EXPECT_EQ(pGetBimInstance(), model);
    pDeleteBimInstance();
    pDeleteBimInstance();
    EXPECT_FALSE(HasBimInstance());
    const KelAzBimModel* rebuilt = pGetBimInstance();
    ASSERT_NE(rebuilt, nullptr);
    EXPECT_GT(rebuilt->Generation(), generation);

    KelAzDataMng::CloseProject();
    pDeleteBimInstance();
    EXPECT_EQ(pGetBimInstance(), nullptr);
    EXPECT_FALSE(HasBimInstance());
}
