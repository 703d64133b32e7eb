#include "CliFixture.h"

namespace kelvora {

class Show : public CliTest {};

TEST_F(Show, DrawsTheKeysOfEachModule)
{
    const std::string path = Write("till.dat",
                                   "[ICCR]\nKeyMap = QQS= _\nQQVS _\nHHVS _\nSSSS\n"
                                   "[MCR]\nTracks = 1,2\nTrack1Sep = ;\nTrack3Sep = \x80\nAutoread = OFF\n");
    EXPECT_THAT(
        Run({"show", path}),
        Gives(0,
              path +
                  "\n"
                  "ICCR chip card unit (8)          keys 1 to 16\n"
                  "  +-----+-----+-----+-----+\n"
                  "  |  1        |  3  | (4) |\n"
                  "  +           +-----+-----+\n"
                  "  |           |  7  |  8  |\n"
                  "  +-----+-----+     +-----+\n"
                  "  |  9        |     | 12  |\n"
                  "  +-----+-----+-----+-----+\n"
                  "  | 13  | 14  | 15  | 16  |\n"
                  "  +-----+-----+-----+-----+\n"
                  "MCR badge reader (1)             tracks 1,2, separators ; none \u20AC, auto-read off\n"));
}

TEST_F(Show, JsonHoldsTheWholeSetup)
{
    const std::string path = Write("till.dat", "[KM096]\nBacklight = NO\n[ICCR]\n[MCR]\nTrack2Sep = \xA7\n");
    const CliResult result = Run({"show", "--json", path, At("missing.dat")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "kelvora-cli: " + folder + "/missing.dat: No such file or directory\n");
    const std::string keysKM096 =
        "11        1111        1111        11" + std::string(46, '1') + "30" + std::string(10, '1') + "30";
    const auto module = [](int position, const char* kind, int code, Json first, const std::string& keyMap,
                           const char* options) {
        return Json{{"position", position},    {"kind", kind},     {"deviceCode", code},
                    {"firstKeyNumber", first}, {"keyMap", keyMap}, {"options", options}};
    };
    const Json expected{
        {"$schema", "file:///opt/kelvora/share/setup.schema.json"},
        {"file", path},
        {"deviceMap", {214, 31, 4, 8, 3}},
        {"modules",
         {module(0, "KM096", 214, 1, keysKM096, "YES"), module(1, "BACKLIGHT", 31, nullptr, "", "NO "),
          module(2, "CODE4", 4, nullptr, std::string(11, 'X'), ""),
          module(3, "ICCR", 8, 97, "1111111111111111XX", ""),
          module(4, "MCR", 3, nullptr, std::string(11, 'X'), "1,2,3^\u00A7^ON ")}},
    };
    const std::size_t end = result.out.find('\n');
    EXPECT_EQ(Json::parse(result.out.substr(0, end)), expected);
    EXPECT_EQ(Json::parse(result.out.substr(end))["ok"], false);
}

TEST_F(Show, GoesOnAfterARejectedFile)
{
    const std::string rejected = Write("a.dat", Rejected);
    const std::string empty = Write("b.dat", "");
    const CliResult result = Run({"show", rejected, empty});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, rejected + RejectedSays);
    EXPECT_EQ(result.out, empty + "\nno modules\n");
    EXPECT_THAT(Run({"show", folder}), Gives(_, result.out, result.err));
    std::filesystem::create_directory(At("none"));
    EXPECT_EQ(Run({"show", At("none")}).err, "kelvora-cli: no setup files were found\n");
}

}  // namespace kelvora
