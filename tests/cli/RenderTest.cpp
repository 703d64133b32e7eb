#include "cli/Render.h"

#include "CliFixture.h"
#include "picture/Svg.h"

namespace kelvora {

class RenderTest : public CliTest {
protected:
#ifdef KELVORA_PICTURE
    // With the program that makes pictures, which the tests do not stand beside.
    CliResult Draw(RenderRequest request)
    {
        request.program = KELVORA_PICTURE;
        return OnConsole([&](Console& console) { return Render(request, console); });
    }
#endif

    const std::string till = Write("till.dat", "[Kelvora]\n[KM096]\n[MCR]\n");
    const std::string bad = Write("bad.dat", Rejected);
};

TEST_F(RenderTest, WritesADrawingAndKeepsWhatItReplaces)
{
    const std::string output = At("till.svg");
    EXPECT_THAT(Run({"render", till}),
                Gives(0, AllOf(StartsWith("<svg "), HasSubstr(">" + till + "</text>"))));
    Write("till.svg", "old");
    Write("till.bak", "the setup before");
    EXPECT_EQ(Run({"render", till, "-o", output}).exitCode, 0);
    EXPECT_THAT(files.Read(output), StartsWith("<svg "));
    EXPECT_EQ(files.Read(output + ".bak"), "old");
    EXPECT_EQ(files.Read(At("till.bak")), "the setup before");

    const std::string before = files.Read(output);
    EXPECT_EQ(Run({"render", bad, "-o", output}).exitCode, 1);
    EXPECT_EQ(files.Read(output), before);
    EXPECT_THAT(Run({"render", till, "-o", At("none/till.svg")}),
                Gives(1, _, HasSubstr("/none/till.svg: No such file or directory")));
}

TEST_F(RenderTest, RefusesWhatMakesNoSense)
{
    const std::string svg = At("a.svg");
    const std::string render = "render " + till;
    ExpectUsage({"render", render + " -o a.gif", render + " -o " + till,
                 render + " -o " + svg + " --output-folder " + folder, render + " -o " + svg + " --type png",
                 render + " --type gif", render + " " + till + " -o " + svg, render + " --json"});
    files.MakeFolder(At("empty"));
    for (const char* const option : {"-o", "--output-folder"})
        EXPECT_EQ(Run({"render", At("empty"), option, svg}).err, "kelvora-cli: no setup files were found\n");
    EXPECT_FALSE(files.Exists(svg));
    EXPECT_THAT(files.Read(till), StartsWith("[Kelvora]"));
}

TEST_F(RenderTest, FillsAFolderWithThePicturesOfMany)
{
    for (int number = 0; number < 20; ++number)
        Write("shops/n" + std::to_string(number % 2) + "/t" + std::to_string(number) + ".dat", Accepted);
    Write("shops/x.txt", Rejected);
    const std::string out = At("out");
    const CliResult result = Run({"render", At("shops"), "--output-folder", out, "--json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(Count(result.out, "\"ok\":true"), 20U);
    EXPECT_THAT(result.out.substr(result.out.rfind("{\"file\"")),
                JsonWith({{"file", At("shops/x.txt")}, {"line", 3}, {"output", nullptr}}));
    EXPECT_THAT(files.Read(out + "/n1/t19.svg"), HasSubstr(">t19</text>"));
    EXPECT_EQ(files.List(out), (std::vector<std::string>{"n0", "n1"}));

    EXPECT_THAT(Run({"render", At("shops/n0/t0.dat"), Write("other/t0.txt", Accepted), "--output-folder",
                     At("flat")}),
                Gives(1, _, HasSubstr("other/t0.txt: what becomes of another setup has the same name")));
    EXPECT_EQ(files.List(At("flat")), std::vector<std::string>{"t0.svg"});
}

TEST_F(RenderTest, SaysWhatIsMissingForPictures)
{
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"render", till, "-o", At("till.png")},
          {"render", till, "--type", "pdf", "--output-folder", At("out")}}) {
        EXPECT_THAT(Run(arguments), Gives(1, _, HasSubstr("kelvora-picture, which is not there")));
    }
    EXPECT_FALSE(files.Exists(At("till.png")));
}

#ifdef KELVORA_PICTURE
TEST_F(RenderTest, MakesPicturesAndDocuments)
{
    const std::string png = At("till.png");
    EXPECT_EQ(Draw({{till}, png, {}, {}, false, {}, {}}).exitCode, 0);
    // A4 at 150 dots an inch.
    const std::string picture = files.Read(png);
    ASSERT_THAT(picture, StartsWith("\x89PNG\r\n"));
    const auto number = [&](std::size_t at) {
        return static_cast<unsigned char>(picture[at]) * 256 + static_cast<unsigned char>(picture[at + 1]);
    };
    EXPECT_EQ(number(18), 1240);
    EXPECT_EQ(number(22), 1754);

    const std::string pdf = At("tills.pdf");
    const CliResult several = Draw({{till, bad, till}, pdf, {}, {}, true, {}, {}});
    EXPECT_EQ(several.exitCode, 1);
    EXPECT_EQ(Count(several.out, "\"ok\":true"), 2U);
    const std::string document = files.Read(pdf);
    ASSERT_THAT(document, StartsWith("%PDF-"));
    EXPECT_EQ(Count(document, "/Type /Page\n"), 2U);
    EXPECT_THAT(document, HasSubstr("/MediaBox [0 0 595"));
    EXPECT_THAT(document, HasSubstr("/FontName")) << "letters, not outlines";
}
#endif

}  // namespace kelvora
