#include "flash/DumpText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <regex>
#include <vector>

#include "flash/BackupTitle.h"
#include "flash/Images.h"

namespace kelvora {
namespace {

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
    EXPECT_EQ(text.substr(2 * 74, 74),
              "0000:20 20 21 22 23 24 25 26 27 28 29 2A 2B 2C 2D 2E 2F  !\"#$%&'()*+,-./\r\n");
    EXPECT_EQ(text.substr(7 * 74, 74),
              "0000:70 70 71 72 73 74 75 76 77 78 79 7A 7B 7C 7D 7E 7F pqrstuvwxyz{|}~.\r\n");
    EXPECT_EQ(text.substr(511 * 74, 74),
              "001F:F0 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF ................\r\n");
    EXPECT_EQ(FormatDeviceMapDump({"COM1", "\xD6\x1F"}),
              "'DeviceMap: COM1\r\n0000:00 D6 1F                                           ..\r\n");
    EXPECT_EQ(FormatDeviceMapDump({"COM1", ""}), "'DeviceMap: COM1\r\n");
}

TEST(DumpText, ReadsBack)
{
    const std::string dump = FormatDump(0, Sample());
    std::string bare;
    for (const char c : dump)
        if (c != '\r')
            bare += c;
    const std::string map = FormatDeviceMapDump({"COM2, today", std::string(WholeChain)});
    const std::string emptyMap = FormatDeviceMapDump({"COM2", ""});
    struct Case {
        std::string reason, text;
        std::optional<DeviceMapDump> map;
    };
    const std::vector<Case> cases{
        {"as written", dump, std::nullopt},
        {"with the writer's last line", dump + "\r\n", std::nullopt},
        {"line feeds alone, the last one missing", bare.substr(0, bare.size() - 1), std::nullopt},
        {"comments", "'a\r\n" + dump.substr(0, 74) + "'DeviceMap: b\r\n" + dump.substr(74) + "'c",
         std::nullopt},
        {"backup", map + "'Flash\r\n" + dump, DeviceMapDump{"COM2, today", std::string(WholeChain)}},
        {"backup of an empty line", emptyMap + dump, DeviceMapDump{"COM2", ""}},
        {"empty lines at the end", dump + "\r\n  \r\n\n", std::nullopt},
        {"blanks that an editor took", WithoutBlanks(emptyMap + dump), DeviceMapDump{"COM2", ""}},
        {"comments like head lines",
         "'Kinds: a\r\n'CRCs\r\n" + dump.substr(0, 74) + "'Kind: b\r\n" + dump.substr(74), std::nullopt},
    };
    for (const Case& c : cases) {
        const FlashDump read = ReadDump(c.text);
        EXPECT_EQ(read.image, Sample()) << c.reason;
        EXPECT_EQ(read.head.deviceMap, c.map) << c.reason;
    }
}

TEST(DumpText, RejectsWhatIsNoWholeImage)
{
    struct Case {
        std::string reason;
        std::function<void(std::string&)> spoil;  // of a dump in lines of 74 characters
        std::size_t line;
        DumpFault fault;
        std::size_t address;
    };
    const std::string shortMap = FormatDeviceMapDump({"COM1", "\xD6"});
    const auto begins = [](const std::string& lines) {
        return [lines](std::string& t) { t.insert(0, lines); };
    };
    const std::string shortLine = "0000:00 D6" + std::string(46, ' ') + ".\n";
    const std::string noCode = FormatDeviceMapDump({"COM1", "\xD6\x18"});
    const std::string eight = FormatDeviceMapDump({"COM1", "12345678"});
    const std::vector<Case> cases{
        {"empty", [](std::string& t) { t.clear(); }, 1, DumpFault::MissingEnd, 0},
        {"last line missing", [](std::string& t) { t.resize(511 * 74); }, 512, DumpFault::MissingEnd, 8176},
        {"cut in the last line", [](std::string& t) { t.resize(t.size() - 3); }, 512, DumpFault::Characters,
         8176},
        {"a line missing", [](std::string& t) { t.erase(3 * 74, 74); }, 4, DumpFault::Address, 48},
        {"a line twice", [](std::string& t) { t.insert(74, t.substr(0, 74)); }, 2, DumpFault::Address, 16},
        {"a line too many", [](std::string& t) { t += t.substr(0, 74); }, 513, DumpFault::AfterEnd, 8192},
        {"an empty line inside", [](std::string& t) { t.insert(74, "\r\n"); }, 2, DumpFault::Form, 16},
        {"a character too many", [](std::string& t) { t.insert(72, " "); }, 1, DumpFault::Form, 0},
        {"no device code", begins(noCode), 2, DumpFault::DeviceMapCode, 0},
        {"an unknown kind", begins("'Kind: backup\n"), 1, DumpFault::Kind, 0},
        {"two kinds", begins("'Kind: setup\n'Kind: device\n"), 2, DumpFault::Kind, 0},
        {"no checksum", begins("'CRC: 1234567\n"), 1, DumpFault::CrcForm, 0},
        {"two checksums", begins("'CRC: 12345678\n'CRC: 12345678\n"), 2, DumpFault::CrcForm, 0},
        {"a letter in a number", [](std::string& t) { t[8] = 'G'; }, 1, DumpFault::Digits, 0},
        {"numbers run together", [](std::string& t) { t[10] = '0'; }, 1, DumpFault::Digits, 0},
        {"a byte changed", [](std::string& t) { t[2 * 74 + 8] = '3'; }, 3, DumpFault::Characters, 32},
        {"a character changed", [](std::string& t) { t[2 * 74 + 71] = 'x'; }, 3, DumpFault::Characters, 32},
        {"a short line", begins(shortLine), 1, DumpFault::Form, 0},
        {"two device maps", begins(shortMap + shortMap), 4, DumpFault::Form, 0},
        {"a device map of eight", begins(eight), 2, DumpFault::DeviceMapSize, 0},
        {"a dump of another address", [](std::string& t) { t = FormatDump(16, Sample()); }, 1,
         DumpFault::Address, 0},
        {"any bytes", [](std::string& t) { t = "\x00\xFF\n"s; }, 1, DumpFault::Form, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        std::string text = FormatDump(0, Sample());
        c.spoil(text);
        try {
            ReadDump(text);
            ADD_FAILURE() << "was accepted";
        } catch (const DumpError& error) {
            EXPECT_EQ(error.Line(), c.line);
            EXPECT_EQ(error.Fault(), c.fault);
            EXPECT_EQ(error.Address(), c.address);
        }
    }
}

TEST(DumpText, SaysWhatItIsAndIsReadBack)
{
    const FlashDump dump{Sample(),
                         {DeviceMapDump{"COM1, 2026-03-09 07:05:00", "\xD6\x17\x04"}, DumpKind::Device,
                          "TILL 7%\n\xE8 ", "/tills/caff\xC3\xA8%41.dat"}};
    const std::string text = FormatFlashDump(dump);
    EXPECT_EQ(text.substr(0, text.find("0000:00 00")),
              "'DeviceMap: COM1, 2026-03-09 07:05:00\r\n"
              "0000:00 D6 17 04                                        ...\r\n"
              "'MapCRC: 74ABD01F\r\n"
              "'Kind: device\r\n"
              "'Terminal: TILL 7%25%0A%E8%20\r\n"
              "'Setup: /tills/caff%C3%A8%2541.dat\r\n"
              "'CRC: CA827594\r\n");
    for (const std::string& each : {text, WithoutBlanks(text)}) {
        const FlashDump read = ReadDump(each);
        EXPECT_EQ(read.image, dump.image);
        EXPECT_EQ(read.head, dump.head);
    }
    // Another hand's text, and lines of which some were taken out.
    EXPECT_EQ(ReadDump("'Terminal: 100% of 2%G0\n'Setup:\n" + FormatDump(0, Sample())).head,
              (DumpHead{{}, {}, "100% of 2%G0", ""}));
    for (std::size_t at = text.find("'MapCRC"); at < text.find("0000:00 00"); at = text.find('\n', at) + 1)
        EXPECT_NO_THROW(ReadDump(std::string(text).erase(at, text.find('\n', at) + 1 - at))) << at;
    EXPECT_NO_THROW(ReadDump(text.substr(text.find("'MapCRC"))));
}

TEST(DumpText, NoWrongDigitPasses)
{
    constexpr std::string_view HexDigits = "0123456789ABCDEF";
    const FlashDump dump{Sample(),
                         {DeviceMapDump{"COM1, today", std::string(WholeChain)}, DumpKind::Device, "", ""}};
    const std::string text = FormatFlashDump(dump);
    std::size_t tried = 0;
    const auto expectRejected = [&](std::size_t at, std::size_t line, std::string_view digits) {
        for (const char digit : digits) {
            std::string wrong = text;
            wrong[at] = digit;
            if (wrong == text)
                continue;
            ++tried;
            try {
                ReadDump(wrong);
                ADD_FAILURE() << "line " << line << " was accepted with " << digit << " at " << at;
            } catch (const DumpError& error) {
                // Where the line does not tell by itself, that of its checksum is named.
                const bool isSum = error.Fault() == DumpFault::Crc || error.Fault() == DumpFault::MapCrc;
                EXPECT_TRUE(isSum || error.Line() == line) << line;
            }
        }
    };
    std::size_t line = 1;
    for (std::size_t start = 0; start < text.size(); start = text.find('\n', start) + 1, ++line) {
        const std::size_t mark = text.substr(start, 12).find("CRC: ");
        const bool isNumbers = text[start] != '\'';
        if (!isNumbers && mark == std::string::npos)
            continue;
        // Every digit of the head; of the image's lines one each, from left to right, in every eighth line.
        const std::size_t first = isNumbers ? start : start + mark + 5;
        const std::size_t end = isNumbers ? start + 56 : first + 8;
        const bool isHead = line < 8;
        if (isHead || line % 8 == 0)
            for (std::size_t at = first + (isHead ? 0 : line % 61); at < end; at += isHead ? 1 : 61)
                if (HexDigits.find(text[at]) != std::string_view::npos)
                    expectRejected(at, line, HexDigits.substr(at % 13, isHead ? 4 : 1));
    }
    EXPECT_GT(tried, 200U);
}

TEST(BackupTitle, ReadsBack)
{
    using namespace std::chrono;
    const BackupOrigin origin{3, local_days(2026y / March / 9d) + 7h + 5min + 9s};
    EXPECT_EQ(BackupTitle(origin), "COM3, 2026-03-09 07:05:09");
    EXPECT_EQ(OriginOf("COM3, 2026-03-09 07:05:09"), origin);
    const BackupOrigin portless{0, origin.time};
    EXPECT_EQ(BackupTitle(portless), "2026-03-09 07:05:09");
    EXPECT_EQ(OriginOf("2026-03-09 07:05:09"), portless);
    for (const char* const title :
         {"", "COM3", "COM0, 2026-03-09 07:05:09", "COM3, 2026-02-30 07:05:09", "COM3, 2026-03-09 25:05:09",
          "COM3, 2026-03-09 07:05:09 ", "COM99999999999, 2026-03-09 07:05:09"})
        EXPECT_EQ(OriginOf(title), std::nullopt) << title;
}

}  // namespace
}  // namespace kelvora
