#include "CliFixture.h"

namespace kelvora {

class Make : public CliTest {
protected:
    const std::string till =
        Write("till.dat", "[KM096]\nFiscal = NO\n[ICCR]\n[MCR]\nTracks = 1,2\nTrack2Sep = \x80\n[KM064]\n");
    const std::string json = Run({"show", "--json", till}).out;
};

TEST_F(Make, GivesTheBytesOfFormatForWhatShowPrints)
{
    const std::string saved = Run({"format", till}).out;
    EXPECT_EQ(Run({"make", "-"}, json).out, saved);
    const std::string path = Write("till.json", json);
    const std::string old = Write("out.dat", "old");
    EXPECT_THAT(Run({"make", path, "-o", old}), Gives(0, "", ""));
    EXPECT_EQ(files.Read(old), saved);
    EXPECT_EQ(files.Read(At("out.bak")), "old");
    EXPECT_THAT(Run({"make", path, "--json"}).out,
                JsonWith({{"ok", true}, {"output", nullptr}, {"pointer", nullptr}}));
}

TEST_F(Make, NeedsOnlyWhatDoesNotFollow)
{
    auto setup = Json::parse(json);
    for (const char* const name : {"$schema", "file", "deviceMap"})
        setup.erase(name);
    for (auto& module : setup["modules"]) {
        module.erase("position");
        module.erase("firstKeyNumber");
        module["deviceCode"] = module["deviceCode"].get<double>();
    }
    EXPECT_EQ(Run({"make", "-"}, setup.dump(2)).out, Run({"format", till}).out);
    EXPECT_EQ(Run({"make", "-"}, R"({"modules": []})").out, "[Kelvora]\r\nVersion = 2.0\r\n\r\n");
}

TEST_F(Make, NamesTheValueThatIsWrong)
{
    const std::string path = At("out.dat");
    const std::string source = Write("own.json", "{}");
    EXPECT_EQ(Run({"make", source, "-o", source}).exitCode, 2) << "over its JSON";
    const auto check = [&](std::string_view op, const char* pointer, const char* value, const char* says) {
        Json change{{"op", op}, {"path", pointer}};
        if (op == "move" || op == "copy")
            change["from"] = value;
        else if (op != "remove")
            change["value"] = Json::parse(value);
        const auto changed = Json::parse(json).patch(Json::array({change}));
        EXPECT_THAT(Run({"make", "-", "-o", path}, changed.dump()),
                    Gives(1, _, StartsWith(std::string("kelvora-cli: standard input: ") + says)))
            << change;
        EXPECT_FALSE(files.Exists(path)) << change;
    };
    check("add", "/ok", "true", "/ok: expected no member but $schema, file, deviceMap, modules");
    check("add", "/modules/1/a~1b", "1", "/modules/1/a~1b: expected no member but position, kind, ");
    check("remove", "/modules", "", "expected the member \"modules\"");
    check("remove", "/modules/0/keyMap", "", "/modules/0: expected the member \"keyMap\"");
    check("replace", "/$schema", "\"other\"", "/$schema: expected \"file:///opt/kelvora/share/");
    check("replace", "/deviceMap/1", "31", "/deviceMap: expected [214,23,4,8,1,191]");
    check("replace", "/modules/1/position", "2", "/modules/1/position: expected 1");
    check("replace", "/modules/3/firstKeyNumber", "98", "/modules/3/firstKeyNumber: expected 97");
    check("replace", "/modules/3/kind", "\"iccr\"", "/modules/3/kind: expected one of KM096, BACKLIGHT, ");
    check("replace", "/modules/3/deviceCode", "1", "/modules/3/deviceCode: expected a device code of ICCR");
    check("replace", "/modules/4/deviceCode", "3", "/modules/4/deviceCode: expected 1 for these options");
    check("replace", "/modules/1/deviceCode", "31", "/modules/1/options: expected \"YES\" or \"NO \"");
    check("replace", "/modules/0/options", "\"YES\\r\\nBacklight = NO\"",
          "/modules/0/options: expected \"YES\"");
    check("replace", "/modules/3/options", "\"\u0100\"", "/modules/3/options: expected characters that");
    check("replace", "/modules/4/options", "\"1,2  ^_^ON \"", "/modules/4/options: expected \"1,2  \"");
    check("replace", "/modules/3/keyMap", "\"1111111111111111\"", "/modules/3/keyMap: expected 18 char");
    check("replace", "/modules/3/keyMap", "\"3111111111111111XX\"", "/modules/3/keyMap: expected key types");
    check("remove", "/modules/1", "", "/modules/1/kind: expected BACKLIGHT");
    check("move", "/modules/0", "/modules/5", "/modules/1/kind: expected ");
    check("copy", "/modules/-", "/modules/3", "/modules/6/kind: expected ");
    for (const auto& [text, says] : std::vector<std::pair<std::string, std::string>>{
             {"", "parse error at line 1, column 1"},
             {json + json, "parse error at line 2, column 1"},
             {"{\"modules\": [{\"kind\": 1, \"options\": [{}, {\"a\": [], \"a\": 2}]}]}",
              "/modules/0/options/1/a: expected this member once"},
             {R"({"modules": [{"kind":"BACKLIGHT","deviceCode":23,"keyMap":"","options":"YES"}]})",
              "/modules/0/kind: expected parts behind their main keyboard alone"},
             {std::string(100000, '['), "parse error"}}) {
        const auto object = Json::parse(Run({"make", "--json", "-"}, text).out);
        EXPECT_EQ(object["ok"], false);
        EXPECT_THAT(object["message"], StartsWith(says));
        EXPECT_EQ(object["pointer"], says.starts_with('/') ? says.substr(0, says.find(':')) : "");
    }
    EXPECT_EQ(Run({"make", At("none.json")}).err,
              "kelvora-cli: " + folder + "/none.json: No such file or directory\n");
}

}  // namespace kelvora
