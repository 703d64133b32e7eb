#include "picture/SetupCard.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"

namespace kelvora {
namespace {

TEST(SetupCard, TellsModulesOrWhyItCannot)
{
    using State = SetupCard::State;
    FakeFiles files;
    files.content["till"] = "[Kelvora]\r\nVersion = 2.0\r\n[KM096]\r\nBacklight = NO\r\n[MCR]\r\n";
    files.content["empty"] = "[Kelvora]\r\nVersion = 2.0\r\n";
    files.content["broken"] = "[KM064]\r\n[KM096]\r\n";
    files.content["locked"] = "";
    files.unreadable.insert("locked");
    const struct {
        const char* path;
        State state;
        const char* modules;
        const char* reason;
    } rows[]{
        {"till", State::Whole, "KM096, MCR", ""},
        {"empty", State::Whole, "", ""},
        {"broken", State::NotRead, "", "Line 2"},
        {"locked", State::NotRead, "", "Permission denied"},
        {"gone", State::Gone, "", ""},
    };
    for (const auto& row : rows) {
        const SetupCard card = ReadSetupCard(files, row.path, MessageCatalogue());
        EXPECT_EQ(card.state, row.state) << row.path;
        EXPECT_EQ(card.modules, row.modules) << row.path;
        EXPECT_NE(card.reason.find(row.reason), std::string::npos) << row.path << card.reason;
        EXPECT_EQ(card.picture.empty(), card.modules.empty()) << row.path;
    }
}

}  // namespace
}  // namespace kelvora
