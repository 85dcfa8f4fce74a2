#include <gtest/gtest.h>

#include "host/text/ResourceTable.h"
#include "host/ui/ResourceOverride.h"
#include "suite/tools/KelMessageBox.h"

TEST(ToolsKelMessageBox, WarningsAndQuestionsFollowTheSuiteConvention) {
    kelaz::RecordingMessageSink sink;
    kelaz::ScopedMessageSink install(sink);
    kelaz::ShowWarning(CString(L"楼层信息错误"));
    sink.QueueAnswer(IDYES);
    EXPECT_TRUE(kelaz::AskQuestion(L"是否删除"));
    EXPECT_FALSE(kelaz::AskQuestion(L"是否删除"));  // no answer given: no

    const kelaz::ResourceTable table({{4242, L"边距过大"}});
    {
        CAcModuleResourceOverride resources(table);
        kelaz::ShowWarning(4242u);
    }

    ASSERT_EQ(sink.Records().size(), 4u);
    EXPECT_EQ(sink.Records()[0].text, L"楼层信息错误!");
    EXPECT_EQ(sink.Records()[0].caption, L"Kelsoft");
    EXPECT_EQ(sink.Records()[0].flags, 0x12030u);
    EXPECT_EQ(sink.Records()[1].text, L"是否删除?");
    EXPECT_EQ(sink.Records()[1].flags, 0x12134u);
    EXPECT_EQ(sink.Records()[3].text, L"边距过大!");
}
