#include "keymap/KeyGrid.h"

#include <algorithm>

#include "keymap/Models.h"

namespace kelvora {

KeyGridMetrics MeasureKeyGrid(std::span<const KeyRect> keys, int columns)
{
    if (keys.empty())
        return {};
    const KeyRect& first = keys.front();
    const KeyRect& last = keys.back();
    const int count = static_cast<int>(keys.size());
    const int inFirstRow = std::min(columns, count);
    const int lastRow = (count - 1) / columns;

    KeyGridMetrics metrics;
    metrics.keyHeight = static_cast<std::int16_t>(last.height);
    metrics.keyWidth = static_cast<std::int16_t>(last.width);
    if (const int gaps = inFirstRow - 1; gaps > 0) {
        const int span = keys[static_cast<std::size_t>(gaps)].left - first.left;
        metrics.horizontalGap = static_cast<std::int16_t>((span - last.width * gaps) / gaps);
    }
    if (lastRow > 0)
        metrics.verticalGap =
            static_cast<std::int16_t>((last.top - first.top - last.height * lastRow) / lastRow);
    return metrics;
}

KeyRect SizeKey(KeyRect place, char type, const KeyGridMetrics& metrics)
{
    place.width = KeyType::IsWide(type) ? 2 * metrics.keyWidth + metrics.horizontalGap : metrics.keyWidth;
    place.height = KeyType::IsTall(type) ? 2 * metrics.keyHeight + metrics.verticalGap : metrics.keyHeight;
    return place;
}

}  // namespace kelvora
