// The state of one key mapping form: the working map, the keys chosen in it, what the choice controls show,
// and undo. Positions count from 1, row by row. No window lives here; a form shows this and calls it.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"

namespace kelvora {

/// What the choice controls beside the grid show.
struct KeyChoices {
    int keyNumber = 0;  ///< the number on the key chosen last; 0 for none
    int count = 0;      ///< how many keys the choices hold for
    bool unusedEnabled = false;
    bool unusedChecked = false;
    bool unusedMixed = false;  ///< some of several keys are unused, some are not
    std::array<bool, 4> selected{};
    std::array<bool, 4> enabled{};

    friend bool operator==(const KeyChoices&, const KeyChoices&) = default;
};

enum class Direction { Left, Right, Up, Down };

/// What choosing a key does to the keys chosen before.
enum class Choosing {
    Only,    ///< they are let go
    Extend,  ///< all keys between the anchor and the key are chosen
    Add,     ///< they stay
    Toggle,  ///< they stay; the key is let go if it was one of them
};

class KeyMapSession {
public:
    /// `kind` has a model: KM096, KM064 or ICCR. The map is empty until Load.
    explicit KeyMapSession(ModuleKind kind);

    /// Starts from the map and, in the last character's code, the first key number; no key is chosen.
    void Load(std::string_view exchange);

    int Columns() const { return model_.columns; }
    int Positions() const { return model_.mapLength; }
    const std::string& Map() const { return state_.map; }
    int FirstKeyNumber() const { return state_.firstKeyNumber; }
    int KeyNumber(int position) const { return state_.firstKeyNumber + position - 1; }

    /// False for a map whose length is not the model's: it is kept as it is, and no key can be chosen.
    bool IsEditable() const { return state_.map.size() == model_.mapLength; }
    bool IsChanged() const { return state_.map != loaded_; }

    /// The key's character in the map; NoKey outside it.
    char Type(int position) const;

    /// Whether a key cap stands there: not where the device has no key, nor where a larger key covers.
    bool HasKey(int position) const;

    /// The key chosen last, which the controls name; 0 for none.
    int Selected() const { return state_.selected; }

    /// The key that the focus ring stands on and the arrows start from: the selected one, else the one let
    /// go last, else the grid's first; 0 in a grid without keys.
    int Ring() const;
    bool IsChosen(int position) const;

    /// A position without a key is left alone.
    void Choose(int position, Choosing choosing = Choosing::Only);
    void ChooseAll();

    /// Chooses the key with that number, or the one that covers its place. False when no key has it.
    bool ChooseNumber(int number);

    /// With no key selected, chooses the one that has the ring.
    void ChooseRing();

    /// Chooses the next key that way from the ring, past the cells that this key covers and those without a
    /// key; a covered cell leads to the key that covers it. Stays at the edge. Where no key has been chosen
    /// yet, the grid's first one.
    void Move(Direction direction, Choosing choosing = Choosing::Only);

    KeyChoices Choices() const;

    /// Gives key type `index` (0 single to 3 quadruple) to every chosen key that may take it at its turn, as
    /// one undo step. Returns whether the map changed.
    bool SetType(int index);

    /// Makes the chosen keys unused, or single keys again when all are unused, as one undo step. The cells
    /// that several keys free on the way become unused with them and are chosen too; a key alone frees
    /// single keys.
    void ToggleUnused();

    /// After the question is answered: `map` is the default map, or the present one when that was refused.
    /// Keys are numbered anew as the model does it, which is no step of its own; no key is chosen.
    void ShowDefaults(std::string map);

    bool CanUndo() const { return step_ > 0; }
    bool CanRedo() const { return step_ + 1 < history_.size(); }
    void Undo();
    void Redo();

private:
    struct State {
        std::string map;
        int firstKeyNumber = 1;
        int selected = 0;
        int anchor = 0;
        std::vector<int> chosen;  ///< ascending
    };

    void ChooseRange(int from, int to);
    int KeyAt(int position) const;
    std::vector<int> Keys() const;
    void DropCovered();
    void MakeUnused(std::span<const int> keys);
    bool Commit(State before);
    bool Allows(int position, int index) const;

    const Model& model_;
    std::string loaded_;
    State state_;
    std::vector<State> history_;  ///< the state at each step; `state_` is the newer one at `step_`
    std::size_t step_ = 0;
};

}  // namespace kelvora
