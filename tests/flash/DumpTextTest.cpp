#include "flash/DumpText.h"

#include <gtest/gtest.h>

#include <functional>
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
    for (std::size_t code = 0; code < 256; ++code)
        image[code] = static_cast<std::uint8_t>(code);
    return image;
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
    };
    for (const Case& c : cases) {
        const FlashDump read = ReadDump(c.text);
        EXPECT_EQ(read.image, Sample()) << c.reason;
        EXPECT_EQ(read.deviceMap, c.map) << c.reason;
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
    const std::vector<Case> cases{
        {"empty", [](std::string& t) { t.clear(); }, 1, DumpFault::MissingEnd, 0},
        {"last line missing", [](std::string& t) { t.resize(511 * 74); }, 512, DumpFault::MissingEnd, 8176},
        {"cut in the last line", [](std::string& t) { t.resize(t.size() - 3); }, 512, DumpFault::Form, 8176},
        {"a line missing", [](std::string& t) { t.erase(3 * 74, 74); }, 4, DumpFault::Address, 48},
        {"a line twice", [](std::string& t) { t.insert(74, t.substr(0, 74)); }, 2, DumpFault::Address, 16},
        {"a line too many", [](std::string& t) { t += t.substr(0, 74); }, 513, DumpFault::AfterEnd, 8192},
        {"an empty line inside", [](std::string& t) { t.insert(74, "\r\n"); }, 2, DumpFault::Form, 16},
        {"two empty lines", [](std::string& t) { t += "\r\n\r\n"; }, 513, DumpFault::AfterEnd, 8192},
        {"a letter in a number", [](std::string& t) { t[8] = 'G'; }, 1, DumpFault::Digits, 0},
        {"numbers run together", [](std::string& t) { t[10] = '0'; }, 1, DumpFault::Digits, 0},
        {"a byte changed", [](std::string& t) { t[2 * 74 + 8] = '3'; }, 3, DumpFault::Characters, 32},
        {"a character changed", [](std::string& t) { t[2 * 74 + 71] = 'x'; }, 3, DumpFault::Characters, 32},
        {"a short line", [](std::string& t) { t.insert(0, "0000:00 D6" + std::string(46, ' ') + ".\n"); }, 1,
         DumpFault::Form, 0},
        {"two device maps", [&](std::string& t) { t = shortMap + shortMap + t; }, 4, DumpFault::Form, 0},
        {"a device map of eight",
         [](std::string& t) {
             t.insert(0, FormatDeviceMapDump({"COM1", "12345678"}));
         },
         2, DumpFault::DeviceMapSize, 0},
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

TEST(BackupTitle, ReadsBack)
{
    using namespace std::chrono;
    const BackupOrigin origin{3, local_days(2026y / March / 9d) + 7h + 5min + 9s};
    EXPECT_EQ(BackupTitle(origin), "COM3, 2026-03-09 07:05:09");
    EXPECT_EQ(OriginOf("COM3, 2026-03-09 07:05:09"), origin);
    for (const char* const title : {"", "COM3", "COM3, 2026-02-30 07:05:09", "COM3, 2026-03-09 25:05:09",
                                    "COM3, 2026-03-09 07:05:09 ", "COM99999999999, 2026-03-09 07:05:09"})
        EXPECT_EQ(OriginOf(title), std::nullopt) << title;
}

}  // namespace
}  // namespace kelvora
