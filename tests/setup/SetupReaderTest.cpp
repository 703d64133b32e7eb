#include "setup/SetupReader.h"

#include "setup/SampleTexts.h"
#include "setup/SetupErrorText.h"

using namespace kelvora;
using namespace std::string_literals;

namespace {

constexpr std::uint32_t Refused = 0x80040104;

const std::string Master = "0:214(YES)1:23(YES)2:4()";

// An extension keyboard whose picture starts so and goes on with single keys.
std::string KM064(std::string picture, std::size_t cells = 64)
{
    picture.resize(cells, 'S');
    return "[KM064]\nKEYMAP=" + picture;
}

std::string Repeat(std::string_view text, std::size_t times)
{
    std::string repeated;
    while (times-- > 0)
        repeated += text;
    return repeated;
}

}  // namespace

TEST(SetupReader, NamesTheLineAndWhatWasExpected)
{
    const std::vector<Rejection> rows{
        {"carriage return inside a line", "[MCR]\r\nTracks\r=1,2\r\n", 2, Expected::LineFeed},
        {"carriage return that ends the text", "[MCR]\r\n\r", 2, Expected::LineFeed},
        {"head without bracket", "\r\n[MCR\r\n]", 2, Expected::SectionName},
        {"head with a blank name", "[ \t]", 1, Expected::SectionName},
        {"line without =", "[MCR]\nTracks", 2, Expected::KeyAndValue},
        {"unknown key", "[MCR]\nTrack4Sep=,", 2, Expected::KnownKey},
        {"key map under an unknown head", "[MCR]\n[Other]\nKeyMap=S", 3, Expected::KeyOfSection},
        {"backlight of a badge reader", "[KM096]\n[MCR]\nBacklight=NO", 3, Expected::KeyOfSection},
        {"key map of a badge reader", "[MCR]\nKeyMap=X", 2, Expected::KeyOfSection},
        {"fiscal value", "[KM096]\nFiscal=Y", 2, Expected::YesOrNo},
        {"auto-read value", "[MCR]\nAutoread=YES", 2, Expected::OnOrOff},
        {"tracks that no reader has", "[MCR]\nTracks=1,3", 2, Expected::Tracks},
        {"separator that a written line could not carry", "[MCR]\nTrack1Sep=_", 2, Expected::Separator},
        {"master behind another module", "[KM064]\n[KM096]", 2, Expected::MasterFirst, Refused},
        {"second badge reader", "[MCR]\n[ICCR]\n[MCR]", 3, Expected::OneOfAKind, Refused},
        {"continuation open at a head", "[KM064]\nKeyMap=S _\n\n[MCR]", 4, Expected::Continuation},
        {"continuation open at the end", "[KM064]\nKeyMap=S\t_\n", 2, Expected::Continuation},
        {"a continued line has its start's number", "[KM064]\nKeyMap=S _\n'\n S", 2, Expected::KeyMapSize},
        {"key map one cell short", KM064("", 63), 2, Expected::KeyMapSize},
        {"letter that means nothing", KM064("Z"), 2, Expected::KeyMapLetter},
        {"V alone", KM064("V"), 2, Expected::WholeKeys},
        {"H over the right edge", KM064("SSSSSSSHH"), 2, Expected::WholeKeys},
        {"Q without its diagonal", KM064("QQSSSSSSQS"), 2, Expected::WholeKeys},
        {"key type without its covered cell", KM064("3S"), 2, Expected::WholeKeys},
        {"key type that overlaps a key", KM064("S2SSSSSSHH"), 2, Expected::WholeKeys},
    };
    for (const Rejection& row : rows)
        ExpectRejected(row, [](const std::string& text) { ReadSetup(text); });
    ExpectRejected({"eighth module", Repeat("[KM064]\n", 8), 8, Expected::Room, Refused},
                   [](const std::string& text) { ReadSetup(text, RepeatedKinds::Read); });
    const MessageCatalogue english;
    EXPECT_EQ(DescribeSetupError(english, {Refused, 1, Expected::MasterFirst}),
              "A module of the file cannot stand where it does.\r\nLine 1: Expected here: another module: "
              "[KM096] may only be the first one");
    EXPECT_EQ(DescribeSetupError(english, {SetupErrorNumber::LineRejected, 0, Expected::SectionName}),
              "A line of the file is not valid.\r\nExpected here: the name of a section between [ and ]");
    EXPECT_EQ(DescribeMapError(english, {Refused, Expected::KeyOfSection, 2, 23}),
              "Position 2: code 23, a backlight part without a main keyboard before it");
}

TEST(SetupReader, ReadsModulesAndOptions)
{
    const auto check = [&](const std::string& reason, const std::string& text, const std::string& deviceMap,
                           const std::string& summary) {
        const SetupDocument document = ReadSetup(text);
        EXPECT_EQ(document.DeviceMap, deviceMap) << reason;
        EXPECT_EQ(Summary(document), summary) << reason;
    };
    check("nothing but end-of-text characters", "\x1A\x03\0\x1A"s, "", "");
    check("end-of-text characters behind a line", "[MCR]\r\nAutoread=OFF\x1A\0"s, "\x03", "0:3(1,2,3^^^OFF)");
    check("line feeds alone, the last line without", "[MCR]\nTracks=2,3", "\x02", "0:2(2,3  ^^^ON )");
    check("comments, case, tabs and blanks", "[mCr ] text\n'[KM096]\n:x\n\tTracks\t =  1,2 \t\n", "\x01",
          "0:1(1,2  ^^^ON )");
    check("separators", "[MCR]\nTrack1Sep==\nTrack2Sep = \xA7\nTrack3Sep=x\n", "\x03", "0:3(1,2,3=\xA7XON )");
    check("options add up", "[MCR]\nAutoread=OFF\nTrack2Sep=;\nTracks=1,2\n", "\x01", "0:1(1,2  ^;^OFF)");
    check("a master brings its parts", "[KM096]\nBacklight=NO\nBacklight=YES", "\xD6\x17\x04", Master);
    check("its options", "[KM096]\nFiscal=NO\nBacklight=NO", "\xD6\x1F\x04", "0:214(NO )1:31(NO )2:4()");
    check("unknown head and keys", "Version=9\n[Other]\nDefaultConfig=\n[ICCR]\nVersion=", "\x08", "0:8()");
    check("line order", "[KM096]\n[ICCR]\n[MCR]\n[KM064]", "\xD6\x17\x04\x08\x03\xBF",
          Master + "3:8()4:3(1,2,3^^^ON )5:191()");
    const auto repeated = ReadSetup("[MCR]\nTracks=1,2\n[MCR]\nTracks=2,3", RepeatedKinds::Read);
    EXPECT_EQ(Summary(repeated), "0:2(2,3  ^^^ON )1:3(1,2,3^^^ON )") << "all lines go to the first of a kind";
}

TEST(SetupReader, ReadsKeyMaps)
{
    // Four columns show whole keys in little room; the two positions that the picture lacks stay.
    const auto read = [](const std::string& picture) {
        return ReadSetup("[ICCR]\nKEYMAP=" + picture).Modules[0].KeyMap;
    };
    EXPECT_EQ(read("QQVSQQVSHH_=SSSS"), "4021000130 01111XX") << "every letter";
    EXPECT_EQ(read("VVHHVVHHQQQQQQQQ"), "2230003040400000XX") << "equal keys side by side";
    EXPECT_EQ(read("4=2S=0=XS SSSSSS"), "4021000X1 111111XX") << "key types, blanks and absent positions";
    const std::string rows = "[KM064]\nKeyMap = ssssssss _\r\n\r\n'\n  hhssssss _\r\n" + std::string(48, 's');
    EXPECT_EQ(ReadSetup(rows).Modules[0].KeyMap, "1111111130" + std::string(54, '1'));
}

TEST(SetupReader, ReadsDeviceMapsLetterForLetter)
{
    const auto check = [&](const std::string& reason, const std::string& deviceMap,
                           const std::string& summary) {
        const SetupDocument document = ReadDeviceMap(deviceMap);
        EXPECT_EQ(document.DeviceMap, deviceMap) << reason;
        EXPECT_EQ(Summary(document), summary) << reason;
    };
    check("backlight off", "\xD6\x1F\x04\x08\x02", "0:214(YES)1:31(NO )2:4()3:8()4:2(2,3  ^^^ON )");
    check("unknown codes keep their places", "\xFF\xBF\x63\x01", "1:191()3:1(1,2  ^^^ON )");
    check("seven modules", "\xD6\x17\x04\xBF\x03\x08\xFF", Master + "3:191()4:3(1,2,3^^^ON )5:8()");
    const std::vector<Rejection> rejections{
        {"eight positions", std::string(8, '\xFF'), 0, Expected::Room, Refused},
        {"master behind another module", "\xBF\xD6", 0, Expected::MasterFirst, Refused},
        {"repeated kind", "\x01\x02", 0, Expected::OneOfAKind, Refused},
        {"repeated part", "\xD6\x04\x04", 0, Expected::OneOfAKind, Refused},
        {"backlight behind another keyboard", "\xD6\xBF\x17", 0, Expected::KeyOfSection},
    };
    for (const Rejection& row : rejections)
        ExpectRejected(row, [](const std::string& deviceMap) { ReadDeviceMap(deviceMap); });
}
