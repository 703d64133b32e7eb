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
    session.ToggleUnused();
    EXPECT_EQ(session.Map(), "0111111111111111XX") << "a key alone frees single keys";
    session.Load("11111111111111111\x01");
    EXPECT_EQ(session.Map(), "11111111111111111");
    EXPECT_FALSE(session.IsChanged() || session.IsEditable() || session.CanUndo() || session.CanRedo());
    EXPECT_FALSE(session.ChooseNumber(1));
    session.Load("");
    EXPECT_TRUE(session.Map().empty() && session.Ring() == 0);
}

TEST(KeyMapSession, ChoiceControls)
{
    KeyMapSession session = Keypad("3011111111111110XX");
    EXPECT_EQ(session.Choices(), KeyChoices{});
    EXPECT_TRUE(session.ChooseNumber(98)) << "the key over its place";
    EXPECT_EQ(session.Choices(), (KeyChoices{97, 1, true, false, false, {false, false, true, false}, All}));
    EXPECT_TRUE(session.ChooseNumber(112));
    EXPECT_FALSE(session.ChooseNumber(113));
    EXPECT_EQ(session.Choices(), (KeyChoices{112, 1, true, true, false, None, None}));
    session.Choose(1, Choosing::Add);
    EXPECT_EQ(session.Choices(), (KeyChoices{97, 2, true, false, true, None, All}));
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
    for (const int key : {3, 7})
        session.Choose(key, Choosing::Toggle);
    session.ToggleUnused();
    EXPECT_EQ(session.Map(), "0030003011111111XX") << "with the cells that they covered";
    session.ToggleUnused();
    EXPECT_EQ(session.Map(), "1130113011111111XX");
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
    EXPECT_EQ(session.Selected(), 16);
    for (const int key : {16, 1})
        session.Choose(key, Choosing::Toggle);
    EXPECT_FALSE(session.IsChosen(16) || session.IsChosen(1));
    EXPECT_EQ(session.Selected(), 3);
}

TEST(KeyMapSession, WhatIsChosenAreKeys)
{
    KeyMapSession session = Keypad("331111111111111111");
    EXPECT_TRUE(session.HasKey(18) && !session.HasKey(0) && !session.HasKey(19));
    session.ChooseAll();
    EXPECT_EQ(session.Selected(), 1);
    EXPECT_EQ(session.Choices().count, 18) << "the short row's too";
    session.Load(session.Map() + '\x61');
    for (const auto& [key, count] : {std::pair{5, 1}, {10, 4}, {5, 1}}) {
        session.Choose(key, Choosing::Extend);
        EXPECT_EQ(session.Choices().count, count) << "from the first one, before which there is none";
    }
    session.Choose(2, Choosing::Add);
    session.ToggleUnused();
    EXPECT_EQ(session.Selected(), 3) << "of those left when another key takes the selected one";
}

TEST(KeyMapSession, ArrowsMoveOverKeys)
{
    KeyMapSession session(ModuleKind::KM096);
    session.Load(std::string(FindModel(ModuleKind::KM096)->defaultMap) + '\x01');
    session.Choose(13);
    session.SetType(3);
    using enum Direction;
    const auto check = [&](const char* why, int from, Direction direction, int to) {
        session.Choose(from);
        session.Move(direction);
        EXPECT_EQ(session.Selected(), to) << why;
    };
    check("past the gap in the upper rows", 2, Right, 11);
    check("no key above", 39, Up, 39);
    check("edge", 12, Right, 12);
    check("to the next", 12, Left, 11);
    check("past its own covered cell", 83, Right, 83);
    check("to the key over a covered cell", 72, Down, 83);
    check("past the covered row", 13, Down, 37);
    check("over the diagonal", 38, Up, 13);
    check("to the first row", 13, Up, 1);
    check("one row alone", 49, Up, 37);
    check("past the covered column", 13, Right, 23);
    for (const Choosing choosing : {Choosing::Only, Choosing::Toggle})
        session.Choose(13, choosing);
    EXPECT_EQ(session.Selected(), 0);
    EXPECT_EQ(session.Ring(), 13) << "stays on the key let go";
    session.Move(Right);
    EXPECT_EQ(session.Selected(), 23);
    session.Load(session.Map() + '\x01');
    session.Move(Left);
    EXPECT_EQ(session.Selected(), 1);
    session.Choose(2);
    session.Choose(1, Choosing::Extend);
    EXPECT_EQ(session.Ring(), 1) << "not where the choice began";
    KeyMapSession keypad = Keypad("111111111111111111");
    keypad.Choose(14);
    keypad.Move(Down);
    EXPECT_EQ(keypad.Selected(), 18) << "into the short row";
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
