#include <gtest/gtest.h>

#include "host/ui/MessageBox.h"

TEST(UiMessageBox, RecordingSinkKeepsBoxesAndAnswersInTurn) {
    kelaz::RecordingMessageSink sink;
    kelaz::ScopedMessageSink install(sink);
    sink.QueueAnswer(IDYES);
    EXPECT_EQ(MessageBox(GetActiveWindow(), L"删除?", L"Kelsoft", MB_YESNO), IDYES);
    // Once the queue is empty a question gets the safe answer and a plain box OK.
    EXPECT_EQ(MessageBox(nullptr, L"再删除?", L"Kelsoft", MB_YESNO | MB_DEFBUTTON2), IDNO);
    EXPECT_EQ(AfxMessageBox(L"完成"), IDOK);
    ASSERT_EQ(sink.Records().size(), 3u);
    EXPECT_EQ(sink.Records()[0].text, L"删除?");
    EXPECT_EQ(sink.Records()[1].flags, MB_YESNO | MB_DEFBUTTON2);
    EXPECT_EQ(sink.Records()[2].text, L"完成");
}

TEST(UiMessageBox, ScopedSinksNestAndRestore) {
    kelaz::RecordingMessageSink outer;
    kelaz::RecordingMessageSink inner;
    kelaz::ScopedMessageSink a(outer);
    {
        kelaz::ScopedMessageSink b(inner);
        AfxMessageBox(L"inner");
    }
    AfxMessageBox(L"outer");
    EXPECT_EQ(inner.Records().size(), 1u);
    ASSERT_EQ(outer.Records().size(), 1u);
    EXPECT_EQ(outer.Records()[0].text, L"outer");
}
