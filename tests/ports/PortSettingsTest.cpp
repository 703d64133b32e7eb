#include <gtest/gtest.h>

#include "ports/PortSettingsText.h"

using namespace kelvora;

TEST(PortSettingsText, ShowsEachPlaceOrItsDefault)
{
    const auto check = [&](const std::string& reason, const std::string& text, const PortChoices& shown) {
        EXPECT_EQ(ReadPortChoices(text), shown) << reason << ": " << text;
    };
    check("capital even", "150,E,7,2", {7, 2, 7, 2});
    check("capital odd", "9600,O,8,1", {1, 1, 8, 1});
    check("small letters are not read", "9600,o,7,1", {1, 3, 7, 1});
    check("a speed outside the table", "38400,n,8,2", {1, 3, 8, 2});
    check("the beginning of a speed", "96,n,8,1", {1, 3, 8, 1});
    check("other characters", "300,x,9,3", {6, 3, 8, 1});
    check("places count, not commas", "300;1,E;7;2", {1, 2, 7, 2});
    check("cut short", "4800,E", {2, 2, 8, 1});
    check("no comma", "4800", {2, 3, 8, 1});
    check("nothing", "", {1, 3, 8, 1});
}

TEST(PortSettingsText, WritesOnePlaceAndKeepsTheRest)
{
    const auto check = [](const auto& with, const char* text, int option, const char* written) {
        EXPECT_EQ(with(text, option), written) << text << " with " << option;
    };
    check(WithBaud, "9600,n,8,1", 3, "2400,n,8,1");
    check(WithBaud, "38400,E,7,2", 7, "150,E,7,2");
    check(WithBaud, "9600,n", 0, "19200,n");
    check(WithBaud, "9600", 6, "300,n,8,1");
    check(WithBaud, "", 4, "1200,n,8,1");
    check(WithParity, "9600,E,7,2", 1, "9600,o,7,2");
    check(WithParity, "9600,o,7,2", 2, "9600,e,7,2");
    check(WithParity, "9600,E,7,2", 3, "9600,n,7,2");
    check(WithParity, "4800", 2, "4800,e,8,1");
    check(WithParity, "4800,", 1, "4800,o,8,1");
    check(WithDataBits, "300,E;8;2", 7, "300,E;7;2");
    check(WithStopBits, "9600,n,8,1", 2, "9600,n,8,2");
    check(WithStopBits, "9600,e,7", 1, "9600,e,7,1");
    check(WithDataBits, "9600", 7, "9600,n,7,1");
}
