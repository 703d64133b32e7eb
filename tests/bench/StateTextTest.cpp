#include "bench/StateText.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "bench/FreshLine.h"

using namespace kelvora;
using namespace kelvora::bench;

namespace {

LineState Sample()
{
    LineState state = FreshLine({Module::KM064, Module::ICCR});
    state.mode = '3';
    constexpr std::string_view Start = "Till 7\x7F\x1F~\xFF";
    std::ranges::copy(Start, state.flash.begin());
    std::ranges::fill(state.flash.begin() + 10, state.flash.begin() + 16, std::uint8_t{32});
    return state;
}

std::string Replaced(std::string text, std::string_view from, std::string_view to)
{
    return text.replace(text.find(from), from.size(), to);
}

}  // namespace

TEST(StateText, ReadsBackWhatItWrites)
{
    const std::string text = FormatState(Sample());
    constexpr std::string_view Head =
        "'Mode: 3\r\n"
        "'Module 0: AA 55 BF 00 00 00 00 00\r\n"
        "'Module 1: AA 55 00 00 08 00 00 00\r\n"
        "0000:00 54 69 6C 6C 20 37 7F 1F 7E FF 20 20 20 20 20 20 Till 7..~.      \r\n"
        "0000:10 ";
    EXPECT_EQ(text.substr(0, Head.size()), Head);
    EXPECT_NE(text.find("\r\n001F:F0 "), std::string::npos);
    EXPECT_EQ(ReadState(text), Sample());

    std::string bare = text;
    std::erase(bare, '\r');
    EXPECT_EQ(ReadState(bare), Sample());
}

TEST(StateText, BrokenFileNamesItsLineAndStays)
{
    const std::string whole = FormatState(Sample());
    const std::vector<std::pair<std::string, std::string>> broken{
        {"", "line 1: \"'Mode: \""},
        {Replaced(whole, "'Mode: 3", "'Mode: 4"), "line 1: "},
        {Replaced(whole, "'Module 1", "'Module 2"), "line 3: "},
        {Replaced(whole, "AA 55 BF", "AA 55 bf"), "line 2: two hexadecimal digits in column 18"},
        {Replaced(whole, "'Module 1: AA 55 00 00 08 00 00 00\r\n", "'Module 1: AA\r\n"), "line 3: "},
        {Replaced(whole, "20 Till", "21 Till"), "line 4: "},
        {Replaced(whole, "0000:10", "0000:20"), "line 5: the flash at \"0000:10 \""},
        {whole.substr(0, whole.size() - 1), "line 515: a line end"},
        {whole.substr(0, whole.size() - 80), "line 514: "},
        {whole + "\r\n", "line 516: the end"},
    };
    for (const auto& [text, message] : broken)
        EXPECT_THAT([&state = text] { ReadState(state); },
                    testing::ThrowsMessage<StateError>(testing::StartsWith(message)));
}
