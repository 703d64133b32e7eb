#include "network/ComPortSession.h"

#include <gtest/gtest.h>

#include <map>

#include "fakes/FakeConnection.h"
#include "network/Telnet.h"

namespace kelvora {
namespace {

// What comes, byte by byte or at once, leads to the same.
ComPortSession::Taken Take(ComPortSession& session, const std::string& bytes)
{
    ComPortSession::Taken all;
    for (const char byte : bytes) {
        const ComPortSession::Taken taken = session.Take(std::string_view(&byte, 1));
        all.data += taken.data;
        all.answer += taken.answer;
    }
    return all;
}

TEST(ComPortSession, TakesTheLinesBytesOutOfWhatComes)
{
    const auto check = [&](const char* why, const char* heard, const char* data, const char* answer) {
        ComPortSession session;
        const ComPortSession::Taken taken = Take(session, FromHex(heard));
        EXPECT_EQ(taken.data, FromHex(data)) << why;
        EXPECT_EQ(taken.answer, FromHex(answer)) << why;
    };
    check("bytes pass as they are", "41 00 0D 42", "41 00 0D 42", "");
    check("IAC twice is the byte 255", "41 FF FF 42", "41 FF 42", "");
    check("commands of two bytes are nothing", "FF F1 41 FF F9", "41", "");
    check("answers to wishes need none", "FF FD 00 FF FB 00 FF FE 2C", "", "");
    check("an unknown option is declined", "FF FD 18 FF FB 01", "", "FF FC 18 FF FE 01");
    check("that is the last word on it", "FF FE 18 FF FC 01", "", "");
    check("a change of mind is followed", "FF FE 2C FF FD 2C FF FD 2C", "", "FF FB 2C");
    check("and so is a withdrawal", "FF FD 00 FF FE 00", "", "FF FC 00");
    check("the server may set its own port too", "FF FB 2C", "", "FF FD 2C");
    check("what an option says is no data", "FF FA 2C 69 01 FF F0 41", "41", "");
    check("IAC twice within it", "FF FA 2C 65 FF FF 00 FF F0 41", "41", "");
    check("its end is lost", "FF FA 2C 65 FF FD 18 41", "41", "FF FC 18");
    check("an end without a beginning", "FF F0 41", "41", "");
    check("an option that says nothing", "FF FA 2C FF F0 41", "41", "");
    ComPortSession session;
    EXPECT_EQ(
        session.Ask(*ParseSerialSettings("300,e,7,2")),
        FromHex(
            "FF FA 2C 01 00 00 01 2C FF F0 FF FA 2C 02 07 FF F0 FF FA 2C 03 03 FF F0 FF FA 2C 04 02 FF F0"));
    EXPECT_EQ(Take(session, FromHex("FF FA 2C") + std::string(1'000'000, 'a') + FromHex("FF F0 41")).data,
              "A")
        << "an endless text of an option";

    for (const auto& [hex, begins] : std::map<std::string, bool>{
             {"FF", false}, {"FF FB", true}, {"FF FA", true}, {"FF F1", false}, {"41 FB", false}})
        EXPECT_EQ(BeginsTelnet(FromHex(hex)), begins) << hex;
}

}  // namespace
}  // namespace kelvora
