#include "keymap/KeyMapSession.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using Flags = std::array<bool, 4>;

constexpr Flags None{};
constexpr Flags All{true, true, true, true};

KeyMapSession Keypad(const std::string& map = "1111111111111111XX")
{
    KeyMapSession session(ModuleKind::ICCR);
    session.Load(map + '\x61');
    return session;
}

TEST(KeyMapSession, LoadsMapAndFirstNumber)
{
    KeyMapSession session(ModuleKind::ICCR);
    session.Load("1111111111111111XX\xC8");
    EXPECT_EQ(session.FirstKeyNumber(), 200);
    EXPECT_EQ(session.Map(), "1111111111111111XX");
    EXPECT_TRUE(session.IsEditable());
    session.Choose(1);
    session.SetType(3);
    EXPECT_TRUE(session.IsChanged());
    session.Load("11111111111111111\x01");
    EXPECT_EQ(session.Map(), "11111111111111111");
    EXPECT_FALSE(session.IsChanged() || session.IsEditable() || session.CanUndo());
    session.Choose(1);
    EXPECT_EQ(session.Selected(), 0);
    session.Load("");
    EXPECT_EQ(session.Map(), "");
}

TEST(KeyMapSession, ChoiceControls)
{
    KeyMapSession session = Keypad("3011111111111110XX");
    EXPECT_EQ(session.Choices(), KeyChoices{});
    session.Choose(1);
    EXPECT_EQ(session.Choices(), (KeyChoices{97, 1, true, false, false, {false, false, true, false}, All}));
    session.Choose(16);
    EXPECT_EQ(session.Choices(), (KeyChoices{112, 1, true, true, false, None, None}));
    session.Choose(1, Choosing::Add);
    EXPECT_EQ(session.Choices(), (KeyChoices{97, 2, true, false, true, None, All}));
    // The box holds the choices back only while it can be used.
    EXPECT_EQ(ShowKeyControls(false, 5, '0', 15).enabled, All);
    EXPECT_EQ(ShowKeyControls(true, 5, '0', 15).enabled, None);
}

TEST(KeyMapSession, SeveralKeysAtOnce)
{
    KeyMapSession session = Keypad();
    session.Choose(1);
    session.Choose(8, Choosing::Extend);
    EXPECT_EQ(session.Choices().count, 8);
    EXPECT_TRUE(session.SetType(2));
    EXPECT_EQ(session.Map(), "3030303011111111XX") << "each at its turn, where the mask allows it";
    EXPECT_EQ(session.Choices().count, 4);
    EXPECT_EQ(session.Selected(), 7) << "the key that has swallowed the selected one";
    session.Choose(3, Choosing::Toggle);
    session.ToggleUnused();
    EXPECT_EQ(session.Map(), "0030000011111111XX") << "with the cells that they covered";
    session.ToggleUnused();
    EXPECT_EQ(session.Map(), "1130111111111111XX");
    for (int step = 0; step < 3; ++step)
        session.Undo();
    EXPECT_EQ(session.Map(), "1111111111111111XX");
    EXPECT_EQ(session.Choices().count, 8) << "undo brings the selection back";
    session.Redo();
    EXPECT_EQ(session.Map(), "3030303011111111XX");
    session.Choose(16);
    session.ToggleUnused();
    EXPECT_FALSE(session.CanRedo());
    session.ChooseAll();
    EXPECT_EQ(session.Choices().count, 12);
    for (const int key : {16, 1})
        session.Choose(key, Choosing::Toggle);
    EXPECT_FALSE(session.IsChosen(16) || session.IsChosen(1));
    EXPECT_EQ(session.Selected(), 3);
}

TEST(KeyMapSession, ArrowsMoveOverKeys)
{
    KeyMapSession session(ModuleKind::KM096);
    session.Load(std::string(FindModel(ModuleKind::KM096)->defaultMap) + '\x01');
    const auto after = [&](int from, Direction direction) {
        session.Choose(from);
        session.Move(direction);
        return session.Selected();
    };
    EXPECT_EQ(after(2, Direction::Right), 11) << "past the gap in the upper rows";
    EXPECT_EQ(after(39, Direction::Up), 39) << "no key above";
    EXPECT_EQ(after(12, Direction::Right), 12) << "edge";
    EXPECT_EQ(after(83, Direction::Right), 83) << "past its own covered cell";
    EXPECT_EQ(after(72, Direction::Down), 83) << "to the key over a covered cell";
    session.Choose(13);
    session.SetType(3);
    EXPECT_EQ(after(13, Direction::Down), 37);
    EXPECT_EQ(after(38, Direction::Up), 13);
    EXPECT_EQ(after(13, Direction::Right), 23);
    for (const Choosing choosing : {Choosing::Only, Choosing::Toggle})
        session.Choose(13, choosing);
    EXPECT_EQ(session.Selected(), 0);
    EXPECT_EQ(session.Ring(), 13) << "stays on the key let go";
    session.Move(Direction::Right);
    EXPECT_EQ(session.Selected(), 23);
    session.Load(session.Map() + '\x01');
    session.Move(Direction::Left);
    EXPECT_EQ(session.Selected(), 1);
}

TEST(KeyMapSession, DefaultsNumberTheKeysAnew)
{
    const auto check = [&](ModuleKind kind, int first) {
        const std::string defaults(FindModel(kind)->defaultMap);
        KeyMapSession session(kind);
        session.Load(defaults + '\x61');
        session.Choose(1);
        session.ToggleUnused();
        const std::string mine = session.Map();
        session.ShowDefaults(defaults);
        EXPECT_EQ(session.Map(), defaults);
        EXPECT_EQ(session.FirstKeyNumber(), first);
        EXPECT_EQ(session.Selected(), 0);
        session.Undo();
        EXPECT_EQ(session.Map(), mine);
        EXPECT_EQ(session.FirstKeyNumber(), 97);
        session.ShowDefaults(mine);
        EXPECT_EQ(session.FirstKeyNumber(), first) << "numbered anew though the question was refused";
        while (session.CanUndo())
            session.Undo();
        EXPECT_EQ(session.FirstKeyNumber(), first) << "which is no step that undo takes back";
    };
    check(ModuleKind::KM096, 1);
    check(ModuleKind::KM064, 97);
    check(ModuleKind::ICCR, 1);
}

}  // namespace
}  // namespace kelvora
