#include <gtest/gtest.h>

#include "module/entry/EntryPoint.h"

namespace {

TEST(EntryPoint, InitUnlocksAndRegistersForSeveralDocumentsOtherMessagesDoNothing) {
    int module = 0;
    int untouched = 0;
    for (const AcRx::AppMsgCode msg : {AcRx::kLoadDwgMsg, AcRx::kUnloadDwgMsg, AcRx::kQuitMsg}) {
        EXPECT_EQ(acrxEntryPoint(msg, &untouched), AcRx::kRetOK);
    }
    EXPECT_TRUE(kelaz::ApplicationIsLocked(&untouched));
    EXPECT_FALSE(kelaz::ApplicationIsMDIAware(&untouched));

    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, &module), AcRx::kRetOK);
    EXPECT_FALSE(kelaz::ApplicationIsLocked(&module));
    EXPECT_TRUE(kelaz::ApplicationIsMDIAware(&module));
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &module), AcRx::kRetOK);
    EXPECT_FALSE(kelaz::ApplicationIsLocked(&module));
}

}  // namespace
