// How large a key of each type is in a regular layout. Lengths are in whatever unit the layout is in.
#pragma once

namespace kelvora {

struct KeyRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const KeyRect&, const KeyRect&) = default;
};

/// A single key made as large as its type is ("0" and the rest as single), where `gap` lies between two keys;
/// its top left corner stays.
KeyRect SizeKey(KeyRect single, char type, int gap);

}  // namespace kelvora
