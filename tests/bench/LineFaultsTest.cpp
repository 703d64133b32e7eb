#include "bench/LineFaults.h"

#include <gtest/gtest.h>

using namespace kelvora::bench;

TEST(LineFaults, SeedMeansTheSameEverywhere)
{
    LineFaults faults({.seed = 7, .drop = 0.1, .flip = 0.1, .duplicate = 0.1});
    constexpr std::string_view Sent = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    EXPECT_EQ(faults.Distort(Direction::ToDevice, Sent), "AB\x03TEFGGHIJKLMNOPQRRSTTGXYZ");
    EXPECT_EQ(faults.Distort(Direction::ToHost, Sent.substr(0, 13)), "AJADEFFG\xC8IJKM");
    EXPECT_EQ(faults.Distort(Direction::ToHost, Sent.substr(13)), "OOPQRSTUVWXXZZ");
}
