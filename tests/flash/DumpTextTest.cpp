#include "flash/DumpText.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <regex>

#include "flash/Images.h"

namespace kelvora {
namespace {

using testing::Property;
using namespace std::string_literals;

// Every code once, and what the rest of the image is erased to.
FlashImage Sample()
{
    FlashImage image = Filled(0xFF);
    std::fill_n(image.begin() + 0x100, 32, std::uint8_t{' '});
    for (std::size_t code = 0; code < 256; ++code)
        image[code] = static_cast<std::uint8_t>(code);
    return image;
}

std::string WithoutBlanks(const std::string& text)
{
    return std::regex_replace(text, std::regex(" +\r\n"), "\r\n");
}

TEST(DumpText, Lines)
{
    const std::string text = FormatDump(0, Sample());
    EXPECT_EQ(text.size(), 512U * 74);
    const auto line = [&](std::size_t number) { return text.substr(number * 74, 74); };
    EXPECT_EQ(line(2), "0000:20 20 21 22 23 24 25 26 27 28 29 2A 2B 2C 2D 2E 2F  !\"#$%&'()*+,-./\r\n");
    EXPECT_EQ(line(7), "0000:70 70 71 72 73 74 75 76 77 78 79 7A 7B 7C 7D 7E 7F pqrstuvwxyz{|}~.\r\n");
    EXPECT_EQ(line(511), "001F:F0 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF ................\r\n");
    EXPECT_EQ(FormatDeviceMapDump({"COM1", "\xD6\x1F"}),
              "'DeviceMap: COM1\r\n0000:00 D6 1F                                           ..\r\n");
    EXPECT_TRUE(FormatFlashDump({Sample(), {DeviceMapDump{"COM1", ""}}})
                    .starts_with("'DeviceMap: COM1\r\n'CRC: CA827594\r\n0000:00 00 01 "));
}

TEST(DumpText, ReadsBack)
{
    const std::string dump = FormatDump(0, Sample());
    std::string bare;
    for (const char c : dump)
        if (c != '\r')
            bare += c;
    const DeviceMapDump seven{"COM2, today", std::string(WholeChain) + '\xFF'};
    const std::string emptyMap = FormatDeviceMapDump({"COM2", ""});
    const auto check = [&](const std::string& reason, const std::string& text,
                           const std::optional<DeviceMapDump>& map) {
        const FlashDump read = ReadDump(text);
        EXPECT_EQ(read.image, Sample()) << reason;
        EXPECT_EQ(read.head.deviceMap, map) << reason;
    };
    check("as written", dump, {});
    check("with the writer's last line", dump + "\r\n", {});
    check("line feeds alone, a blank for the last one", bare.substr(0, bare.size() - 1) + ' ', {});
    check("comments", "'a\r\n" + dump.substr(0, 74) + "'DeviceMap: b\r\n" + dump.substr(74) + "'c", {});
    check("backup", FormatDeviceMapDump(seven) + "'Flash\r\n" + dump, seven);
    check("backup of an empty line", emptyMap + dump, DeviceMapDump{"COM2", ""});
    check("empty lines at the end", dump + "\r\n  \r\n\n", {});
    check("blanks that an editor took", WithoutBlanks(emptyMap + dump), DeviceMapDump{"COM2", ""});
    check("comments like head lines",
          "'Kinds: a\r\n'Kind:a\r\n'CRCs\r\n" + dump.substr(0, 74) + "'Kind: b\r\n" + dump.substr(74), {});
}

TEST(DumpText, RejectsWhatIsNoWholeImage)
{
    const std::string shortMap = FormatDeviceMapDump({"COM1", "\xD6"});
    const std::string whole = FormatDump(0, Sample());
    const auto with = [&](std::size_t at, std::size_t length, const char* text) {
        return std::string(whole).replace(at, length, text);
    };
    const std::string shortLine = "0000:00 D6" + std::string(46, ' ') + ".\n";
    const std::string noCode = FormatDeviceMapDump({"COM1", "\xD6\x18"});
    const std::string eight = FormatDeviceMapDump({"COM1", "12345678"});
    const auto check = [&](const std::string& reason, const std::string& text, std::size_t line,
                           DumpFault fault, std::size_t address) {
        EXPECT_THAT([&] { ReadDump(text); },
                    testing::Throws<DumpError>(testing::AllOf(Property(&DumpError::Line, line),
                                                              Property(&DumpError::Fault, fault),
                                                              Property(&DumpError::Address, address))))
            << reason;
    };
    check("empty", "", 1, DumpFault::MissingEnd, 0);
    check("last line missing", with(511 * 74, 74, ""), 512, DumpFault::MissingEnd, 8176);
    check("cut in the last line", with(512 * 74 - 3, 3, ""), 512, DumpFault::Characters, 8176);
    check("a line missing", with(3 * 74, 74, ""), 4, DumpFault::Address, 48);
    check("a line too many", whole + whole.substr(0, 74), 513, DumpFault::AfterEnd, 8192);
    check("an empty line inside", with(74, 0, "\r\n"), 2, DumpFault::Form, 16);
    check("a character too many", with(72, 0, " "), 1, DumpFault::Form, 0);
    check("no device code", noCode + whole, 2, DumpFault::DeviceMapCode, 0);
    check("an unknown kind", "'Kind: backup\n" + whole, 1, DumpFault::Kind, 0);
    check("no checksum", "'CRC: 1234567\n" + whole, 1, DumpFault::CrcForm, 0);
    check("another checksum", "'CRC: 00000000\n" + whole, 1, DumpFault::Crc, 0);
    check("another checksum of the map", shortMap + "'MapCRC: 00000000\n" + whole, 3, DumpFault::MapCrc, 0);
    check("numbers run together", with(10, 1, "0"), 1, DumpFault::Digits, 0);
    check("no digit", with(8, 1, "G"), 1, DumpFault::Digits, 0);
    check("a gap in the numbers", with(11, 2, "  "), 1, DumpFault::Form, 0);
    check("a byte changed", with(2 * 74 + 8, 1, "3"), 3, DumpFault::Characters, 32);
    check("a character changed", with(2 * 74 + 71, 1, "x"), 3, DumpFault::Characters, 32);
    check("a short line", shortLine + whole, 1, DumpFault::Form, 0);
    check("two device maps", shortMap + shortMap + whole, 4, DumpFault::Form, 0);
    check("a device map of two lines", shortMap + shortLine + whole, 3, DumpFault::Form, 0);
    check("a device map of eight", eight + whole, 2, DumpFault::DeviceMapSize, 0);
}

TEST(DumpText, SaysWhatItIsAndIsReadBack)
{
    const FlashDump dump{Sample(),
                         {DeviceMapDump{"COM1, 2026-03-09 07:05:00", "\xD6\x17\x04"}, DumpKind::Device,
                          "TILL 7%~\n\xE8 ", "/tills/caff\xC3\xA8%41.dat"}};
    const std::string text = FormatFlashDump(dump);
    EXPECT_EQ(text.substr(0, text.find("0000:00 00")),
              "'DeviceMap: COM1, 2026-03-09 07:05:00\r\n"
              "0000:00 D6 17 04                                        ...\r\n"
              "'MapCRC: 74ABD01F\r\n"
              "'Kind: device\r\n"
              "'Terminal: TILL 7%25~%0A%E8%20\r\n"
              "'Setup: /tills/caff%C3%A8%2541.dat\r\n"
              "'CRC: CA827594\r\n");
    for (const std::string& each : {text, WithoutBlanks(text)}) {
        const FlashDump read = ReadDump(each);
        EXPECT_EQ(read.image, dump.image);
        EXPECT_EQ(read.head, dump.head);
    }
    // Another hand's text, and lines of which some were taken out.
    EXPECT_EQ(ReadDump("'Terminal: 100% of 2%G0 \n'Setup:\n" + FormatDump(0, Sample())).head,
              (DumpHead{{}, {}, "100% of 2%G0", ""}));
    for (std::size_t at = text.find("'MapCRC"); at < text.find("0000:00 00"); at = text.find('\n', at) + 1)
        EXPECT_NO_THROW(ReadDump(std::string(text).erase(at, text.find('\n', at) + 1 - at))) << at;
    EXPECT_NO_THROW(ReadDump(text.substr(text.find("'MapCRC"))));
}

}  // namespace
}  // namespace kelvora
