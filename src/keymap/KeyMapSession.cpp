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

KeyChoices ShowKeyControls(bool unusedEnabled, int keyNumber, char type, std::uint8_t mask)
{
    KeyChoices choices;
    choices.keyNumber = std::max(keyNumber, 0);
    choices.count = keyNumber > 0 ? 1 : 0;
    choices.unusedEnabled = unusedEnabled;
    choices.unusedChecked = type == KeyType::Unused;
    const bool typesAllowed = !(choices.unusedEnabled && choices.unusedChecked);
    for (std::size_t i = 0; i < KeyTypeBits.size(); ++i) {
        choices.selected.at(i) = type == TypeCharacter(static_cast<int>(i));
        choices.enabled.at(i) = typesAllowed && (mask & (KeyTypeBits[i] - '0')) != 0;
    }
    return choices;
}

KeyMapSession::KeyMapSession(ModuleKind kind) : model_(*FindModel(kind)), history_(1) {}

void KeyMapSession::Load(std::string_view exchange)
{
    state_ = {};
    if (!exchange.empty()) {
        state_.firstKeyNumber = static_cast<unsigned char>(exchange.back());
        exchange.remove_suffix(1);
    }
    state_.map = exchange;
    loaded_ = exchange;
    history_.assign(1, state_);
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
    if (choosing == Choosing::Extend && state_.anchor > 0) {
        ChooseRange(state_.anchor, position);
        state_.selected = position;
        return;
    }
    std::vector<int>& chosen = state_.chosen;
    if (choosing == Choosing::Only || choosing == Choosing::Extend)
        chosen.clear();
    const auto place = std::lower_bound(chosen.begin(), chosen.end(), position);
    const bool wasChosen = place != chosen.end() && *place == position;
    state_.selected = position;
    state_.anchor = position;
    if (!wasChosen) {
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
    state_.chosen.clear();
    for (int position = 1; position <= Positions(); ++position) {
        const Area key = AreaOf(position, Type(position), Columns());
        const bool inside = key.top <= range.bottom && key.bottom >= range.top && key.left <= range.right &&
                            key.right >= range.left;
        if (inside && HasKey(position))
            state_.chosen.push_back(position);
    }
}

bool KeyMapSession::ChooseNumber(int number)
{
    const int cell = number - state_.firstKeyNumber;
    if (!IsEditable() || cell < 0 || cell >= Positions())
        return false;
    const int key = KeyAt(cell / Columns(), cell % Columns());
    if (key > 0)
        Choose(key);
    return key > 0;
}

void KeyMapSession::ChooseAll()
{
    state_.chosen.clear();
    for (int position = 1; position <= Positions(); ++position)
        if (HasKey(position))
            state_.chosen.push_back(position);
    if (state_.chosen.empty())
        return;
    if (state_.selected == 0)
        state_.selected = state_.chosen.front();
    state_.anchor = state_.chosen.front();
}

/// The key whose cap lies over that cell; 0 for none.
int KeyMapSession::KeyAt(int row, int column) const
{
    const int cell = row * Columns() + column + 1;
    for (const int position : {cell, cell - 1, cell - Columns(), cell - Columns() - 1}) {
        const Area key = AreaOf(std::max(position, 1), Type(position), Columns());
        if (HasKey(position) && key.top <= row && row <= key.bottom && key.left <= column &&
            column <= key.right)
            return position;
    }
    return 0;
}

int KeyMapSession::Ring() const
{
    if (state_.selected > 0 || state_.anchor > 0)
        return state_.selected > 0 ? state_.selected : state_.anchor;
    for (int position = 1; position <= Positions(); ++position)
        if (HasKey(position))
            return position;
    return 0;
}

void KeyMapSession::ChooseRing()
{
    if (state_.selected == 0)
        Choose(Ring());
}

void KeyMapSession::Move(Direction direction, Choosing choosing)
{
    if (state_.selected == 0 && state_.anchor == 0)
        return ChooseRing();
    const int start = Ring();
    const Area from = AreaOf(start, Type(start), Columns());
    const int rows = (Positions() + Columns() - 1) / Columns();
    int row = direction == Direction::Down ? from.bottom : from.top;
    int column = direction == Direction::Right ? from.right : from.left;
    while (true) {
        row += direction == Direction::Down ? 1 : direction == Direction::Up ? -1 : 0;
        column += direction == Direction::Right ? 1 : direction == Direction::Left ? -1 : 0;
        if (row < 0 || row >= rows || column < 0 || column >= Columns())
            return;
        if (const int key = KeyAt(row, column); key > 0)
            return Choose(key, choosing);
    }
}

KeyChoices KeyMapSession::Choices() const
{
    if (state_.selected == 0)
        return ShowKeyControls(false, 0, KeyType::NoKey, 0);
    KeyChoices choices =
        ShowKeyControls(true, KeyNumber(state_.selected), Type(state_.selected), Mask(state_.selected));
    choices.count = static_cast<int>(state_.chosen.size());
    for (const int position : state_.chosen) {
        const KeyChoices other = ShowKeyControls(true, KeyNumber(position), Type(position), Mask(position));
        choices.unusedMixed = choices.unusedMixed || other.unusedChecked != choices.unusedChecked;
        for (std::size_t i = 0; i < choices.enabled.size(); ++i) {
            choices.selected.at(i) = choices.selected.at(i) && other.selected.at(i);
            choices.enabled.at(i) = choices.enabled.at(i) || other.enabled.at(i);
        }
    }
    choices.unusedChecked = choices.unusedChecked && !choices.unusedMixed;
    return choices;
}

bool KeyMapSession::SetType(int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= KeyTypeBits.size())
        return false;
    const int bit = KeyTypeBits[static_cast<std::size_t>(index)] - '0';
    State before = state_;
    for (const int position : state_.chosen)
        if ((Mask(position) & bit) != 0)
            SetKeyType(position, TypeCharacter(index), Columns(), state_.map);
    return Commit(std::move(before));
}

void KeyMapSession::ToggleUnused()
{
    const bool allUnused =
        std::ranges::all_of(state_.chosen, [&](int position) { return Type(position) == KeyType::Unused; });
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
    const auto owner = [&](int position) {
        return position == 0 ? 0 : KeyAt((position - 1) / Columns(), (position - 1) % Columns());
    };
    state_.selected = owner(state_.selected);
    state_.anchor = owner(state_.anchor);
    if (state_.selected > 0 && !IsChosen(state_.selected))
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
