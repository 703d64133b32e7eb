#include "keymap/KeyGrid.h"

#include <gtest/gtest.h>

#include <vector>

namespace kelvora {
namespace {

std::vector<KeyRect> Grid(int count, int columns)
{
    std::vector<KeyRect> keys;
    for (int i = 0; i < count; ++i)
        keys.push_back({10 + i % columns * 45, 20 + i / columns * 34, 40, 30});
    return keys;
}

void ExpectMetrics(const KeyGridMetrics& metrics, int height, int width, int horizontal, int vertical)
{
    EXPECT_EQ(metrics.keyHeight, height);
    EXPECT_EQ(metrics.keyWidth, width);
    EXPECT_EQ(metrics.horizontalGap, horizontal);
    EXPECT_EQ(metrics.verticalGap, vertical);
}

TEST(KeyGrid, Metrics)
{
    ExpectMetrics(MeasureKeyGrid(Grid(96, 12), 12), 30, 40, 5, 4);
    ExpectMetrics(MeasureKeyGrid(Grid(18, 4), 4), 30, 40, 5, 4);
    ExpectMetrics(MeasureKeyGrid(Grid(4, 4), 4), 30, 40, 5, 0);
    ExpectMetrics(MeasureKeyGrid({}, 4), 0, 0, 0, 0);
    auto uneven = Grid(8, 4);
    uneven[3].left += 2;
    ExpectMetrics(MeasureKeyGrid(uneven, 4), 30, 40, 5, 4);
}

TEST(KeyGrid, KeySizes)
{
    const KeyRect place{7, 9, 40, 30};
    const KeyGridMetrics metrics{30, 40, 5, 4};
    EXPECT_EQ(SizeKey(place, '0', metrics), place);
    EXPECT_EQ(SizeKey(place, '2', metrics), (KeyRect{7, 9, 40, 64}));
    EXPECT_EQ(SizeKey(place, '3', metrics), (KeyRect{7, 9, 85, 30}));
    EXPECT_EQ(SizeKey(place, '4', metrics), (KeyRect{7, 9, 85, 64}));
}

}  // namespace
}  // namespace kelvora
