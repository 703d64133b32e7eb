// Where the keys of a grid stand and how large a key of each type is, derived from a regular layout of
// single keys. Lengths are in whatever unit the layout is in.
#pragma once

#include <cstdint>
#include <span>

namespace kelvora {

struct KeyRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const KeyRect&, const KeyRect&) = default;
};

/// The four metrics of a grid of single keys.
struct KeyGridMetrics {
    std::int16_t keyHeight = 0;
    std::int16_t keyWidth = 0;
    std::int16_t horizontalGap = 0;
    std::int16_t verticalGap = 0;
};

/// Measures a grid of equal keys laid out row by row, `columns` (2 or more) a row; the last row may be short.
/// An empty grid gives zeros; a grid of one row has no vertical gap.
KeyGridMetrics MeasureKeyGrid(std::span<const KeyRect> keys, int columns);

/// The key at `place` resized for its type ("0" and the rest as single); its top left corner stays.
KeyRect SizeKey(KeyRect place, char type, const KeyGridMetrics& metrics);

}  // namespace kelvora
