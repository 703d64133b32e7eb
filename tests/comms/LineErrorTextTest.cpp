#include "comms/LineErrorText.h"

#include <gtest/gtest.h>

#include "comms/Reply.h"

namespace kelvora {

TEST(LineErrorText, SaysWhatIsWrongWithALineOnTheNetwork)
{
    const LineTarget target{2, "9600,n,8,1", 0};
    LineResult lost;
    lost.outcome = LineOutcome::Failed;
    lost.failure.port = PortFailure::Disconnected;
    EXPECT_EQ(DescribeLineFailure({}, target, lost).message.id, Message::PortDisconnected.id);
    lost.failure.port = PortFailure::Missing;
    EXPECT_EQ(DescribeLineFailure({}, target, lost).message.id, Message::PortLost.id);

    // A server that keeps the speed is the first suspect when nobody answers.
    LineResult silent;
    silent.outcome = LineOutcome::Failed;
    silent.failure = {
        PortFailure::None, ReplyErrorNumber::GaveUp, "raw:a:1", {}, "$9900: no answer", {}, true};
    const LineErrorText text = DescribeLineFailure({}, target, silent);
    EXPECT_EQ(text.message.id, Message::LineGaveUp.id);
    EXPECT_EQ(
        text.extra,
        "COM2 (raw:a:1): 9600,n,8,1\r\n$9900: no answer\r\n"
        "The server has fixed the line's settings. Check there that they are the terminal's: 9600,n,8,1");
}

}  // namespace kelvora
