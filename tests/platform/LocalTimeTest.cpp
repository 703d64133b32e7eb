#include "platform/LocalTime.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>

namespace kelvora {

TEST(LocalTime, MomentOfAZonedTime)
{
    using namespace std::chrono_literals;
    const std::chrono::sys_seconds moment =
        std::chrono::sys_days(std::chrono::year_month_day(2026y, std::chrono::March, 9d)) + 6h + 5min + 7s;
    for (const char* const text : {"2026-03-09T06:05:07+00:00", "2026-03-09T06:05:07Z",
                                   "2026-03-09T07:05:07+01:00", "2026-03-08T22:35:07-07:30"})
        EXPECT_EQ(MomentOf(text), moment) << text;
    for (const char* const text : {"", "2026-03-09", "2026-03-09T06:05:07", "2026-13-01T06:05:07Z",
                                   "2026-03-09T06:05:07*00:00", "2026-03-09T06:05:07+00:00 "})
        EXPECT_FALSE(MomentOf(text)) << text;
    const std::chrono::sys_days first(std::chrono::year_month_day(2026y, std::chrono::March, 1d));
    for (const auto& [zone, text] : {std::pair("XXX-5:30", "2026-03-01T05:33:07+05:30"),
                                     {"XXX7:30", "2026-02-28T16:33:07-07:30"},
                                     {"XXX0", "2026-03-01T00:03:07+00:00"}}) {
        setenv("TZ", zone, 1);
        tzset();
        EXPECT_EQ(ZonedTimeText(first + 3min + 7s), text);
    }
    EXPECT_EQ(LocalTimeText(std::chrono::local_days(1y / 1 / 1)), "0001-01-01 00:00:00");
    unsetenv("TZ");
    tzset();
}

}  // namespace kelvora
