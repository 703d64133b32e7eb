#include "comms/LineErrorText.h"

#include <gtest/gtest.h>

#include "comms/PortTrial.h"
#include "comms/Reply.h"

namespace kelvora {

TEST(LineErrorText, SaysWhatIsWrongWithALine)
{
    const auto check = [](LineOutcome outcome, const LineFailure& failure, const MessageId& message,
                          const std::string& extra) {
        LineResult result;
        result.outcome = outcome;
        result.failure = failure;
        const LineErrorText text = DescribeLineFailure({}, {2, "9600,n,8,1", 0}, result);
        EXPECT_EQ(text.message.id, message.id) << message.text;
        EXPECT_EQ(text.extra, "COM2" + extra) << message.text;
    };
    using enum LineOutcome;
    using Port = PortFailure;
    check(Failed, {Port::Disconnected, 0, {}, {}, {}}, Message::PortDisconnected, ": 9600,n,8,1");
    check(Failed, {Port::NotAllowed, 0, {}, {}, {}}, Message::PortLost, ": 9600,n,8,1");
    check(NoPort, {Port::Missing, 0, {}, {}, {}}, Message::PortMissing, ": 9600,n,8,1");
    check(NoPort, {Port::NotAllowed, 0, {}, "dialout", {}}, Message::PortNotAllowed,
          ": 9600,n,8,1\r\n" + DescribeGroup({}, "dialout"));
    // A server that keeps the speed is the first suspect when nobody answers.
    check(Failed, {Port::None, ReplyErrorNumber::GaveUp, "raw:a:1", {}, "$9900: \x1B[1mno\x7F", {}, true},
          Message::LineGaveUp,
          " (raw:a:1): 9600,n,8,1\r\n$9900: .[1mno.\r\n"
          "The server has fixed the line's settings. Check there that they are the terminal's: 9600,n,8,1");
}

}  // namespace kelvora
