#include "CliFixture.h"

namespace kelvora {

class Format : public CliTest {
protected:
    const std::string saved =
        "[Kelvora]\r\nVersion = 2.0\r\n[MCR]\r\nTracks = 1,2  \r\nTrack1Sep = ;\r\nAutoread = ON \r\n\r\n";
    const std::string typed = "' by hand\n[mcr]\ntracks=1,2\ntrack1sep=;\n";
};

TEST_F(Format, KeepsTheOldFileWhenItWrites)
{
    const std::string path = Write("till.dat", typed);
    const std::string elsewhere = At("new.dat");
    for (const std::string& output : {elsewhere, path}) {
        EXPECT_THAT(Run({"format", path, "-o", output}), Gives(0, ""));
        EXPECT_EQ(files.Read(output), saved);
    }
    EXPECT_FALSE(files.Exists(At("new.bak")));
    EXPECT_EQ(files.Read(At("till.bak")), typed);
}

TEST_F(Format, JsonHoldsTheTextOrNamesTheFileWhichARejectedOneLeaves)
{
    const std::string path = Write("till.dat", typed);
    EXPECT_THAT(Run({"format", path, "--json"}).out,
                JsonWith({{"file", path}, {"text", saved}, {"output", nullptr}}));
    EXPECT_EQ(Run({"format", path}).out, saved);
    EXPECT_THAT(Run({"format", path, "--json", "-o", path}).out,
                JsonWith({{"text", nullptr}, {"output", path}}));
    EXPECT_EQ(files.Read(path), saved);
    EXPECT_THAT(Run({"format", Write("bad.dat", Rejected), "--json", "-o", path}),
                Gives(1, JsonWith({{"ok", false}, {"line", 3}, {"text", nullptr}})));
    EXPECT_EQ(files.Read(path), saved);
}

TEST_F(Format, WritesTheFilesOfAFolderOverThemselvesOrIntoAnother)
{
    const std::string shops = At("shops");
    for (const char* name : {"shops/a.dat", "shops/n/b.txt", "shops/n/c.dat", "shops/n/c.txt"})
        Write(name, typed);
    const std::string bad = Write("shops/n/bad.dat", Rejected);
    const std::string lost = "kelvora-cli: " + shops +
                             "/n/c.txt: another setup's backup has the same name: " + shops + "/n/c.bak\n";
    for (const char* const time : {"first", "second"}) {
        EXPECT_THAT(Run({"format", "--in-place", shops, shops + "/n/../a.dat"}),
                    Gives(1, "", StartsWith(bad + RejectedSays + lost)))
            << time;
        for (const char* const name : {"/a", "/n/b", "/n/c"})
            EXPECT_EQ(files.Read(shops + name + ".bak"), typed) << time << name;
        EXPECT_EQ(files.Read(shops + "/n/b.txt"), saved);
        EXPECT_EQ(files.Read(shops + "/n/c.txt"), typed) << "the only copy of it";
        EXPECT_EQ(files.Read(bad), Rejected);
    }

    const std::string out = At("out");
    const CliResult result = Run({"format", "--json", shops + "/n", "--output-folder", out});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(JsonLines(result.out).at(0)["output"], out + "/b.txt");
    EXPECT_EQ(files.List(out), (std::vector<std::string>{"b.txt", "c.dat"}));
    EXPECT_EQ(files.Read(out + "/c.dat"), saved);

    const std::string format = "format " + shops;
    ExpectUsage({format, format + " -o " + out + "/x.dat", format + " -i --output-folder " + out,
                 format + " --output-folder " + shops + "/formatted"});
    EXPECT_EQ(Run({"format", shops, "--output-folder", ""}).exitCode, 2);
    EXPECT_EQ(files.List(out).size(), 2U);
    EXPECT_FALSE(files.Exists(shops + "/formatted"));
}

TEST_F(Format, ExamplesAreWhatASaveWrites)
{
    for (const auto& entry : std::filesystem::directory_iterator(KELVORA_EXAMPLES))
        if (const std::string path = entry.path(); path.ends_with(".dat")) {
            EXPECT_EQ(Run({"format", path}).out, files.Read(path)) << path;
        }
}

}  // namespace kelvora
