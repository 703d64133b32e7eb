#include "bench/TerminalCommands.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "bench/FreshLine.h"

using namespace kelvora::bench;

namespace {

LineState Erased()
{
    LineState state;
    state.flash.fill(0xFF);
    return state;
}

// The bytes 0 to 63: six of them need an escape.
std::string CountingBlock()
{
    std::string block;
    for (char byte = 0; byte < 64; ++byte) {
        const bool isEscaped = std::string_view("\1\3\n\r\x15\x1B").find(byte) != std::string_view::npos;
        block += isEscaped ? std::string{'\x1B', static_cast<char>(byte + 64)} : std::string{byte};
    }
    return block;
}

const std::string Counting = CountingBlock();
const std::string Letters(64, 'a');

}  // namespace

TEST(TerminalCommands, KeepTheirOrder)
{
    LineState memory = Erased();
    TerminalCommands terminal(memory);
    int stored = 0;
    terminal.onStored = [&] { return ++stored > 0; };
    const auto check = [&](const std::string& command, const std::string& reply, int stores) {
        EXPECT_EQ(terminal.Run(command), reply) << command;
        EXPECT_EQ(stored, stores) << command;
    };
    check("$9918", "$9918!0", 0);
    check("$9902", "$9902!0!0 ", 0);
    check("$9904!4", "$9904!2", 0);
    check("$9904!3", "$9904!0!3", 1);
    check("$9904!3", "$9904!0!3", 1);
    check("20", "20!2", 1);  // not open
    check("0FB10040" + Counting, "0FB1!2", 1);
    check("0FB3", "0FB3!2", 1);
    check("0F02", "0F02!0(B4293435", 1);
    check("0FB3B4293435", "0FB3!0", 1);  // that is what the device already has
    check("0FB0", "0FB0!0$8192", 1);
    check("0FB10040" + Counting, "0FB1!0", 1);
    check("0FB10041" + Letters, "0FB1!2", 1);  // not aligned
    check("0FB12000" + Letters, "0FB1!2", 1);  // past the end
    check("0FB10000" + Letters.substr(1), "0FB1!2", 1);
    check("0FB10000" + Letters.substr(1) + "\x1B", "0FB1!2", 1);
    check("0FB10000" + Letters.substr(1) + "\33a", "0FB1!2", 1);
    check("0F02", "0F02!0(B4293435", 1);  // staging changes nothing
    check("0FB0", "0FB0!0$8192", 1);      // and is gone with a new open
    check("0FB10000" + Letters, "0FB1!0", 1);
    check("0FB10040" + Counting, "0FB1!0", 1);
    check("0FB10000" + std::string(64, '\xFF'), "0FB1!0", 1);
    check("0FB1", "0FB1!0", 1);
    check("0FB10000" + Letters, "0FB1!2", 1);  // no more blocks
    check("0FB300000000", "0FB3!2", 1);
    check("0FB38ad4e742", "0FB3!2", 1);
    check("0F02", "0F02!0(B4293435", 1);
    check("0FB38AD4E742", "0FB3!0", 2);
    check("0F02", "0F02!0(8AD4E742", 2);
    check("0FB38AD4E742", "0FB3!0", 2);  // asked again, done as well
    check("20", "20!2", 2);              // closed
    check("0FB0", "0FB0!0$8192", 2);
    check("0FB10000" + Letters, "0FB1!0", 2);
    check("0FB3", "0FB3!0", 2);  // discarded
    check("0FB377861B96", "0FB3!2", 2);
    check("0FB0x", "0FB0!2", 2);
    check("$9999", "$9999!2", 2);
    check("", "!2", 2);
    for (std::size_t address = 0; address < FlashSize; ++address)
        ASSERT_EQ(memory.flash[address], address >= 64 && address < 128 ? address - 64 : 0xFF) << address;
}

TEST(TerminalCommands, BlocksHoldWhatFits)
{
    LineState memory = Erased();
    std::ranges::fill(memory.flash.begin(), memory.flash.begin() + 300, std::uint8_t{3});
    TerminalCommands terminal(memory);
    terminal.Run("0FB0");
    const std::string field = "\xFF" + std::string(223, '\xFF');
    std::string pairs;
    for (int count = 0; count < 111; ++count)
        pairs += "\33C";
    EXPECT_EQ(terminal.Run("20"), "20!0$0000\xFE" + pairs + "\xFE" + pairs);
    const std::string mixed = pairs.substr(0, 2 * 78) + std::string(67, '\xFF');
    EXPECT_EQ(terminal.Run("20"), "20!0$00DE\xFF" + mixed + field);
    EXPECT_EQ(terminal.Run("000"), "000!0");
}

TEST(TerminalCommands, DeviceMapIsDecodedFromTheBlocks)
{
    const IdentityBytes composite{0xAA, 0x55, 214, 23, 0xFF, 0xFF, 4, 0};
    const IdentityBytes reader{0xAA, 0x55, 0xFF, 0xFF, 0xFF, 3, 0xFF, 0};
    const IdentityBytes wrongPlace{0xAA, 0x55, 8, 0, 0, 0, 0, 0};
    const IdentityBytes empty{};
    const std::vector<std::pair<std::vector<IdentityBytes>, std::vector<std::uint8_t>>> cases{
        {{composite, composite, composite, composite}, {214, 23, 4, 214}},
        {{reader, composite, composite}, {255, 214, 23}},  // the first module is asked at offset 2 alone
        {{composite, reader, reader}, {214, 3, 3}},
        {{wrongPlace, empty, {0xAA, 0x55, 0, 31}, {0xAA, 0x55, 0, 0, 0, 1}}, {255, 255, 31, 255}},
    };
    for (const auto& [modules, map] : cases)
        EXPECT_EQ(DeviceMapOf(modules), map);
}
