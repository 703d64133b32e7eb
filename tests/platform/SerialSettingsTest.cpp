#include "platform/SerialSettings.h"

#include <gtest/gtest.h>

namespace kelvora {

TEST(SerialSettings, ReadTheUsualNotationAndNothingElse)
{
    EXPECT_EQ(ParseSerialSettings("150,n,8,1"), (SerialSettings{150, 'n', 8, 1}));
    EXPECT_EQ(ParseSerialSettings("115200,E,7,2"), (SerialSettings{115200, 'e', 7, 2}));
    for (const char* text : {"", "9600", ",n,8,1", "9600,x,8,1", "9600,n,9,1", "9600,n,6,1", "9600,n,8,3",
                             "9600,n,8,0", "9600,n,8,1 ", "96 00,n,8,1", "149,n,8,1", "115201,n,8,1",
                             "99999999999,n,8,1", "9600;n,8,1", "9600,n;8,1", "9600,n,8;1"})
        EXPECT_EQ(ParseSerialSettings(text), std::nullopt) << text;
}

TEST(SerialSettings, CountEveryBitOfAByte)
{
    using std::chrono::microseconds;
    EXPECT_EQ((SerialSettings{9600, 'n', 8, 1}.TimeOf(960)), microseconds(1'000'000));
    EXPECT_EQ((SerialSettings{1200, 'e', 8, 2}.TimeOf(100)), microseconds(1'000'000));
    EXPECT_EQ((SerialSettings{2151, 'n', 8, 1}.TimeOf(1)), microseconds(4650)) << "4649 and a 2151th";
}

}  // namespace kelvora
