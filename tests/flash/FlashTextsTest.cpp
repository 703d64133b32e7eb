#include "flash/FlashTexts.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using enum ModuleKind;

template <class Finding>
void ExpectText(const Finding& finding, const std::string& text)
{
    EXPECT_EQ(Describe(MessageCatalogue(), finding), text);
}

TEST(FlashTexts, NameWhatTheyMean)
{
    ExpectText(BuildRefusal{BuildRefusal::Reason::UnknownModule, 2, None},
               "The flash image cannot be built: an unknown module stands on the line at position 3");
    ExpectText(TakeNotice{TakeNotice::What::SeparatorNotCarried, MCR, 2},
               "MCR: this separator was read as none, because a setup file cannot carry it: track 2");
    ExpectText(UnheldSetting{UnheldSetting::What::Key, KM096, 4, '2'},
               "Composite Keyboard, Key 4: the keyboard cannot hold this key type: double vertical key");
    ExpectText(
        UnheldSetting{UnheldSetting::What::Separator, MCR, 1, '\xFF'},
        "MCR, separator after track 1: the reader cannot hold this separator, it would be none: \xFF (FF)");
    const std::string noDump = "The file is not a whole flash dump.\r\nLine ";
    ExpectText(
        DumpError(12, DumpFault::Address, 0x200),
        noDump + "12: a line is missing, repeated or out of order. The address that belongs here is 0002:00");
    ExpectText(DumpError(2, DumpFault::MissingEnd, 16),
               noDump + "2: the dump ends too early. The address that belongs here is 0000:10");
    ExpectText(DumpError(1, DumpFault::Form, 0),
               noDump + "1: this is not a dump line of an address, 16 numbers and 16 characters.");
}

TEST(FlashTexts, OfImageDifferences)
{
    using What = ImageDifference::What;
    const auto row = [](What what, std::size_t first, std::size_t last, ModuleKind kind, int number,
                        char before, char after) {
        return ImageDifference{what, first, last, std::nullopt, kind, number, before, after};
    };
    ExpectText(row(What::Autoread, 131, 131, MCR, 2, '1', '1'), "0083: MCR, auto-read: yes, other bits");
    ExpectText(row(What::Key, 256, 257, KM096, 7, ' ', '4'),
               "0100-0101: Composite Keyboard, Key 7: erased -> quadruple key");
    ExpectText(row(What::Key, 256, 257, KM096, 7, '1', '1'),
               "0100-0101: Composite Keyboard, Key 7: single key, another key code");
    ExpectText(row(What::Separator, 1024, 1024, MCR, 1, '\xFF', '\t'),
               "0400: MCR, separator after track 1: none -> 09");
}

}  // namespace
}  // namespace kelvora
