#include "eeprom/IdentityBlock.h"

#include <gtest/gtest.h>

namespace kelvora {

TEST(IdentityBlock, EachIdentityHasItsBytes)
{
    const std::vector<std::pair<std::string_view, std::string_view>> rows{
        {"KM96CM", "AA 55 D6 17 00 00 04 00"},    {"LCD", "AA 55 D6 17 00 00 04 00"},
        {"KEYLOCK", "AA 55 D6 17 00 00 04 00"},   {"KM64", "AA 55 BF 00 00 00 00 00"},
        {"MCR 1+2", "AA 55 00 00 00 0B 00 00"},   {"MCR 2+3", "AA 55 00 00 00 02 00 00"},
        {"MCR 1+2+3", "AA 55 00 00 00 03 00 00"}, {"ICCR", "AA 55 00 00 08 00 00 00"}};
    ASSERT_EQ(rows.size(), OfferedIdentities.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(OfferedIdentities.at(i).name, rows[i].first);
        EXPECT_EQ(BlockText(OfferedIdentities.at(i).block), rows[i].second) << rows[i].first;
    }
}

TEST(IdentityBlock, DecodesALine)
{
    const std::string_view composite = "AA 55 D6 17 FF FF 04 00";
    const std::string_view unlit = "AA 55 D6 1F 00 00 04 00";
    const std::string_view badge = "AA 55 00 00 00 02 00 00";
    const auto check = [&](const std::string& reason, const std::vector<std::string_view>& texts,
                           const std::vector<std::string_view>& expected) {
        std::vector<std::optional<IdentityBlock>> blocks;
        for (const std::string_view text : texts)
            blocks.push_back(ParseBlock(text));
        std::vector<std::string_view> names;
        for (const DecodedIdentity& identity : DecodeIdentities(blocks)) {
            names.push_back(identity.name);
            EXPECT_EQ(identity.offered.has_value(),
                      identity.name != "UNKNOWN" && identity.name != "LCD (unlit)");
        }
        EXPECT_EQ(names, expected) << reason;
    };
    check("parts of one keyboard, and one too many", {composite, composite, composite, composite},
          {"KM96CM", "LCD", "KEYLOCK", "KM96CM"});
    check("a display without light", {unlit, unlit, unlit}, {"KM96CM", "LCD (unlit)", "KEYLOCK"});
    check("all kinds of a line",
          {"AA 55 BF 00 00 00 00 00", badge, "AA 55 FF FF FF 0B 00 00", "AA 55 00 00 00 03 00 00",
           "AA 55 FF FF 08 FF FF FF"},
          {"KM64", "MCR 2+3", "MCR 1+2", "MCR 1+2+3", "ICCR"});
    check("two readers alike", {composite, badge, badge}, {"KM96CM", "MCR 2+3", "MCR 2+3"});
    check("a freshly written reader stands first", {badge}, {"MCR 2+3"});
    check("an erased keyboard byte stands first", {"AA 55 FF FF 08 FF FF FF"}, {"UNKNOWN"});
    check("a value at another's offset", {"AA 55 08 00 00 00 00 00"}, {"UNKNOWN"});
    check("the first byte decides", {badge, "AA 55 1F 17 00 00 04 00"}, {"MCR 2+3", "UNKNOWN"});
    check("nothing says anything",
          {"AA 55 00 00 00 00 00 00", "AA 55 00 00 00 00 00 00", "FF FF FF FF FF FF FF FF"},
          {"UNKNOWN", "UNKNOWN", "UNKNOWN"});
    check("not read", {"", composite, "", composite}, {"UNKNOWN", "KM96CM", "UNKNOWN", "KM96CM"});
}

TEST(IdentityBlock, TextsOfOtherShapesAreRefused)
{
    EXPECT_EQ(ParseBlock("aa 55 d6 17 00 00 04 0f"), (IdentityBlock{0xAA, 0x55, 0xD6, 0x17, 0, 0, 4, 0x0F}));
    for (const std::string_view text :
         {"", "AA 55 D6 17 00 00 04", "AA 55 D6 17 00 00 04 00 ", "AA 55 D6 17 00 00 04 0G",
          "AA-55 D6 17 00 00 04 00", "AA55D61700000400", "AA 55 D6 17 00 00 04 0 "})
        EXPECT_EQ(ParseBlock(text), std::nullopt) << text;
}

}  // namespace kelvora
