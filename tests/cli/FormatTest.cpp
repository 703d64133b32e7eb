#include <nlohmann/json.hpp>

#include "CliFixture.h"

namespace kelvora {

class Format : public CliTest {
protected:
    const std::string saved =
        "[Kelvora]\r\nVersion = 2.0\r\n[MCR]\r\nTracks = 1,2  \r\nTrack1Sep = ;\r\nAutoread = ON \r\n\r\n";
    const std::string typed = "' by hand\n[mcr]\ntracks=1,2\ntrack1sep=;\n";
};

TEST_F(Format, GivesTheBytesThatASaveWrites)
{
    const CliResult result = Run({"format", Write("till.dat", typed)});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, saved);
    EXPECT_EQ(result.err, "");
}

TEST_F(Format, KeepsTheOldFileWhenItWrites)
{
    const std::string path = Write("till.dat", typed);
    const std::string elsewhere = folder + "/new.dat";
    EXPECT_EQ(Run({"format", path, "-o", elsewhere}).exitCode, 0);
    EXPECT_EQ(files.Read(elsewhere), saved);
    EXPECT_FALSE(files.Exists(folder + "/new.bak"));

    const CliResult result = Run({"format", path, "-o", path});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(files.Read(path), saved);
    EXPECT_EQ(files.Read(folder + "/till.bak"), typed);
}

TEST_F(Format, WritesNothingThatWouldBeRejected)
{
    const std::string kept = Write("kept.dat", saved);
    const std::string path = Write("till.dat", Rejected);
    const CliResult result = Run({"format", path, "-o", kept});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, testing::StartsWith(path + RejectedSays));
    EXPECT_EQ(files.Read(kept), saved);
    EXPECT_FALSE(files.Exists(folder + "/kept.bak"));
}

TEST_F(Format, JsonHoldsTheTextOrNamesTheFile)
{
    const std::string path = Write("till.dat", typed);
    auto object = nlohmann::json::parse(Run({"format", path, "--json"}).out);
    EXPECT_EQ(object["file"], path);
    EXPECT_EQ(object["text"], saved);
    EXPECT_EQ(object["output"], nullptr);
    object = nlohmann::json::parse(Run({"format", path, "--json", "-o", path}).out);
    EXPECT_EQ(object["text"], nullptr);
    EXPECT_EQ(object["output"], path);
    EXPECT_EQ(files.Read(path), saved);
    const CliResult rejected = Run({"format", Write("bad.dat", Rejected), "--json"});
    EXPECT_EQ(rejected.exitCode, 1);
    object = nlohmann::json::parse(rejected.out);
    EXPECT_EQ(object["ok"], false);
    EXPECT_EQ(object["line"], 3);
    EXPECT_EQ(object["text"], nullptr);
}

TEST_F(Format, TellsWhereItCannotWrite)
{
    const CliResult result = Run({"format", Write("till.dat", typed), "-o", folder});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, testing::StartsWith("kelvora-cli: " + folder + ": "));
    EXPECT_THAT(result.err, testing::EndsWith(": Is a directory\n"));
}

}  // namespace kelvora
