#include "keymap/KeyMapSession.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kelvora {

namespace {

struct Area {
    int top, left, bottom, right;  ///< rows and columns from 0, all inclusive
};

Area AreaOf(int position, char type, int columns)
{
    const int row = (position - 1) / columns;
    const int column = (position - 1) % columns;
    return {row, column, row + (KeyType::IsTall(type) ? 1 : 0), column + (KeyType::IsWide(type) ? 1 : 0)};
}

char TypeCharacter(int index)
{
    return static_cast<char>(KeyType::Single + index);
}

/// After a return to the default map the extension keyboard alone keeps the line's numbering.
bool RestartsNumbering(ModuleKind kind)
{
    return kind != ModuleKind::KM064;
}

}  // namespace

KeyMapSession::KeyMapSession(ModuleKind kind) : model_(*FindModel(kind)) {}

void KeyMapSession::Load(std::string_view exchange)
{
    state_ = {};
    if (!exchange.empty()) {
        state_.firstKeyNumber = static_cast<unsigned char>(exchange.back());
        exchange.remove_suffix(1);
    }
    state_.map = exchange;
    loaded_ = exchange;
    history_.clear();
    step_ = 0;
}

char KeyMapSession::Type(int position) const
{
    return position >= 1 && static_cast<std::size_t>(position) <= Map().size()
               ? Map()[static_cast<std::size_t>(position) - 1]
               : KeyType::NoKey;
}

bool KeyMapSession::HasKey(int position) const
{
    return IsEditable() && KeyType::HasKey(Type(position)) && !IsCovered(position, Columns(), Map());
}

bool KeyMapSession::IsChosen(int position) const
{
    return std::binary_search(state_.chosen.begin(), state_.chosen.end(), position);
}

void KeyMapSession::Choose(int position, Choosing choosing)
{
    if (!HasKey(position))
        return;
    if (choosing == Choosing::Extend && state_.anchor != 0) {
        ChooseRange(state_.anchor, position);
        state_.selected = position;
        return;
    }
    std::vector<int>& chosen = state_.chosen;
    state_.selected = position;
    state_.anchor = position;
    if (choosing == Choosing::Only || choosing == Choosing::Extend) {
        chosen = {position};
        return;
    }
    const auto place = std::lower_bound(chosen.begin(), chosen.end(), position);
    if (!IsChosen(position)) {
        chosen.insert(place, position);
    } else if (choosing == Choosing::Toggle) {
        const auto next = chosen.erase(place);
        state_.selected = chosen.empty() ? 0 : next != chosen.end() ? *next : chosen.back();
        state_.anchor = chosen.empty() ? position : state_.selected;
    }
}

void KeyMapSession::ChooseRange(int from, int to)
{
    const Area a = AreaOf(from, Type(from), Columns());
    const Area b = AreaOf(to, Type(to), Columns());
    const Area range{std::min(a.top, b.top), std::min(a.left, b.left), std::max(a.bottom, b.bottom),
                     std::max(a.right, b.right)};
    state_.chosen = Keys();
    std::erase_if(state_.chosen, [&](int position) {
        const Area key = AreaOf(position, Type(position), Columns());
        return key.top > range.bottom || key.bottom < range.top || key.left > range.right ||
               key.right < range.left;
    });
}

bool KeyMapSession::ChooseNumber(int number)
{
    const int key = IsEditable() ? KeyAt(number - state_.firstKeyNumber + 1) : 0;
    Choose(key);
    return key != 0;
}

void KeyMapSession::ChooseAll()
{
    state_.chosen = Keys();
    if (state_.chosen.empty())
        return;
    if (state_.selected == 0)
        state_.selected = state_.chosen.front();
    state_.anchor = state_.chosen.front();
}

/// The key whose cap lies over the cell at that position; 0 for none.
int KeyMapSession::KeyAt(int position) const
{
    return HasKey(position) ? position : CoveringKey(position, Columns(), Map());
}

/// The positions that have a key, ascending.
std::vector<int> KeyMapSession::Keys() const
{
    std::vector<int> keys;
    for (int position = 1; position <= Positions(); ++position)
        if (HasKey(position))
            keys.push_back(position);
    return keys;
}

int KeyMapSession::Ring() const
{
    if (state_.selected != 0)
        return state_.selected;
    if (state_.anchor != 0)
        return state_.anchor;
    const std::vector<int> keys = Keys();
    return keys.empty() ? 0 : keys.front();
}

void KeyMapSession::ChooseRing()
{
    if (state_.selected == 0)
        Choose(Ring());
}

void KeyMapSession::Move(Direction direction, Choosing choosing)
{
    if (state_.anchor == 0)
        return ChooseRing();
    const int start = Ring();
    const Area from = AreaOf(start, Type(start), Columns());
    int row = direction == Direction::Down ? from.bottom : from.top;
    int column = direction == Direction::Right ? from.right : from.left;
    while (true) {
        row += direction == Direction::Down ? 1 : direction == Direction::Up ? -1 : 0;
        column += direction == Direction::Right ? 1 : direction == Direction::Left ? -1 : 0;
        const int cell = row * Columns() + column + 1;
        if (row < 0 || cell > Positions() || column < 0 || column >= Columns())
            return;
        if (const int key = KeyAt(cell); key != 0)
            return Choose(key, choosing);
    }
}

KeyChoices KeyMapSession::Choices() const
{
    const std::vector<int>& chosen = state_.chosen;
    KeyChoices choices;
    if (chosen.empty())
        return choices;
    const auto has = [&](char type) { return [&, type](int position) { return Type(position) == type; }; };
    choices.keyNumber = KeyNumber(state_.selected);
    choices.count = static_cast<int>(chosen.size());
    choices.unusedEnabled = true;
    choices.unusedChecked = std::ranges::all_of(chosen, has(KeyType::Unused));
    choices.unusedMixed = !choices.unusedChecked && std::ranges::any_of(chosen, has(KeyType::Unused));
    for (int i = 0; i < std::ssize(KeyTypeBits); ++i) {
        const auto place = static_cast<std::size_t>(i);
        choices.selected.at(place) = std::ranges::all_of(chosen, has(TypeCharacter(i)));
        choices.enabled.at(place) =
            std::ranges::any_of(chosen, [&](int position) { return Allows(position, i); });
    }
    return choices;
}

bool KeyMapSession::SetType(int index)
{
    State before = state_;
    for (const int position : state_.chosen)
        if (Allows(position, index))
            SetKeyType(position, TypeCharacter(index), Columns(), state_.map);
    return Commit(std::move(before));
}

bool KeyMapSession::Allows(int position, int index) const
{
    return (AllowedKeyTypes(position, Columns(), Map()) & KeyTypeBits.at(static_cast<std::size_t>(index))) !=
           0;
}

void KeyMapSession::ToggleUnused()
{
    const bool allUnused = Choices().unusedChecked;
    State before = state_;
    if (!allUnused && state_.chosen.size() > 1)
        MakeUnused(before.chosen);
    else
        for (const int position : state_.chosen)
            SetKeyType(position, allUnused ? KeyType::Single : KeyType::Unused, Columns(), state_.map);
    Commit(std::move(before));
}

/// Switches off whole keys: what they free is unused and chosen as well, so that the same command brings
/// all of their cells back.
void KeyMapSession::MakeUnused(std::span<const int> keys)
{
    state_.chosen.clear();
    for (const int position : keys) {
        const Area key = AreaOf(position, Type(position), Columns());
        SetKeyType(position, KeyType::Unused, Columns(), state_.map);
        for (int row = key.top; row <= key.bottom; ++row)
            for (int column = key.left; column <= key.right; ++column) {
                const int cell = row * Columns() + column + 1;
                SetKeyType(cell, KeyType::Unused, Columns(), state_.map);
                state_.chosen.push_back(cell);
            }
    }
    std::ranges::sort(state_.chosen);
    state_.chosen.erase(std::unique(state_.chosen.begin(), state_.chosen.end()), state_.chosen.end());
}

/// A chosen key that another one has swallowed is no key any more.
void KeyMapSession::DropCovered()
{
    std::erase_if(state_.chosen, [&](int position) { return !HasKey(position); });
    state_.selected = KeyAt(state_.selected);
    state_.anchor = KeyAt(state_.anchor);
    if (!IsChosen(state_.selected))
        state_.selected = state_.chosen.empty() ? 0 : state_.chosen.front();
}

bool KeyMapSession::Commit(State before)
{
    if (before.map == state_.map)
        return false;
    DropCovered();
    history_.resize(step_ + 1);
    history_[step_] = std::move(before);
    history_.push_back(state_);
    ++step_;
    return true;
}

void KeyMapSession::ShowDefaults(std::string map)
{
    State before = state_;
    state_ = {};
    state_.map = std::move(map);
    state_.firstKeyNumber = RestartsNumbering(model_.kind) ? 1 : before.firstKeyNumber;
    const int number = state_.firstKeyNumber;
    // Without a step that could take it back, the new number holds for every map that undo brings.
    if (!Commit(std::move(before)))
        for (State& step : history_)
            step.firstKeyNumber = number;
}

void KeyMapSession::Undo()
{
    if (!CanUndo())
        return;
    history_[step_] = state_;
    state_ = history_[--step_];
}

void KeyMapSession::Redo()
{
    if (!CanRedo())
        return;
    history_[step_] = state_;
    state_ = history_[++step_];
}

}  // namespace kelvora
