#include "picture/PictureRecords.h"

#include <gtest/gtest.h>

namespace kelvora {

TEST(PictureRecords, ReadBackAndStopAtWhatIsNone)
{
    const std::vector<std::string> pages{"<svg/>", "", std::string("\0\n 3", 4)};
    const std::string picture = "PNG";
    const std::string stream = PictureRecord(pages) + PictureRecord({&picture, 1});
    EXPECT_EQ(stream.substr(0, 6), "6 0 4\n");
    std::string_view rest = stream;
    EXPECT_EQ(TakePictureRecord(rest), pages);
    EXPECT_EQ(TakePictureRecord(rest), std::vector{picture});
    EXPECT_TRUE(rest.empty());
    for (const char* const bad : {"", "\n", "3", "3 \nabc", "3\nab", "x\n", "-1\n", "1  1\nab", "1,1\nab",
                                  "99999999999999999999\na", "18446744073709551615 2\nab"}) {
        std::string_view text = bad;
        EXPECT_EQ(TakePictureRecord(text), std::nullopt) << bad;
        EXPECT_EQ(text, bad) << "nothing is lost";
    }
}

}  // namespace kelvora
