#include "comms/LinkFrame.h"

#include <gtest/gtest.h>

#include "comms/Crc.h"
#include "comms/Reply.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

using Event = FrameReceiver::Event;

// The events of a text, without those of bytes that tell of nothing.
std::vector<Event> EventsOf(FrameReceiver& receiver, std::string_view bytes)
{
    std::vector<Event> events;
    for (const char byte : bytes)
        if (const Event event = receiver.Take(byte); event != Event::None)
            events.push_back(event);
    return events;
}

}  // namespace

TEST(Crc, HasThePublishedCheckValues)
{
    EXPECT_EQ(Crc16("123456789"), 0x29B1);
    EXPECT_EQ(Crc32("123456789"), 0xCBF43926);
}

TEST(LinkFrame, IsBuiltAndFoundAmongOtherBytes)
{
    // The CRC is of "0001$9902", reckoned apart from this program.
    EXPECT_EQ(BuildFrame({1, "$9902"}), "\0010001$9902\0038F91");
    FrameReceiver receiver;
    EXPECT_EQ(EventsOf(receiver, "noise\x15" + BuildFrame({1, ""}) + BuildFrame({0xA0F, "M20!0"}) +
                                     std::string(LongestFrame + 1, 'x')),
              (std::vector{Event::Nak, Event::Frame, Event::Frame}));
    EXPECT_EQ(receiver.Frame().exchange, 0xA0F);
    EXPECT_EQ(receiver.Frame().body, "M20!0");
    EXPECT_EQ(receiver.Bytes(), std::string(LongestFrame, 'x')) << "more is not kept";
    EXPECT_TRUE(receiver.HasRest());
}

TEST(LinkFrame, RejectsWhatNoSenderSends)
{
    const auto framed = [](std::string text) {
        const std::string crc = HexText(Crc16(text), 4);
        return "\x01" + text + "\x03" + crc;
    };
    std::string smallLetters = framed("0001M");
    for (char& c : smallLetters)
        c = c >= 'A' && c <= 'F' ? static_cast<char>(c + 32) : c;
    for (const std::string& bytes :
         {framed("001"), framed("00G1M"), framed("0001M\x15"), framed("0001M\n"), framed("00a1M"),
          smallLetters, "\x01" + std::string(LongestFrame, 'x')}) {
        FrameReceiver receiver;
        EXPECT_EQ(EventsOf(receiver, bytes), std::vector{Event::Damage});
    }
}

TEST(LinkFrame, EscapesExactlyTheSixControlBytes)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const std::string escaped = EscapeData(all);
    EXPECT_EQ(escaped.size(), 256U + 6U);
    EXPECT_EQ(escaped.find_first_of(std::string("\x01\x03\n\r\x15", 5)), std::string::npos);
    EXPECT_EQ(UnescapeData(escaped), all);
    EXPECT_EQ(EscapeData("\x1B"), "\x1B\x5B");
    EXPECT_EQ(UnescapeData("\33A"), "\1");
    for (const char* bad : {"a\33", "\33A\33", "\33B", "\3", "\25"})
        EXPECT_EQ(UnescapeData(bad), std::nullopt);
}

TEST(Reply, FieldsAreCounted)
{
    using Fields = std::vector<std::string>;
    EXPECT_EQ(ReplyFields("$9902!0!2&214,23", "$9902"), (Fields{"0", "2", "214,23"}));
    EXPECT_EQ(ReplyFields("20", "20"), Fields{});
    EXPECT_EQ(ReplyFields("20! ", "20"), Fields{" "});
    EXPECT_EQ(ReplyFields("20 ", "20"), Fields{""});
    EXPECT_EQ(ReplyFields("20!", "20"), std::nullopt);
    EXPECT_EQ(ReplyFields("20!0\x1F", "20"), std::nullopt);
    EXPECT_EQ(CountedField(std::string(MaximumField, 'x')).front(), '\xFF');
}

}  // namespace kelvora
