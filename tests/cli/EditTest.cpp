#include "CliFixture.h"

namespace kelvora {

class Edit : public CliTest {
protected:
    const std::string till = Write("shops/a.dat", "' by hand\n[KM096]\n[MCR]\nTracks = 1,2\n");
    const std::string plain = Write("shops/b.dat", "[KM096]\nFiscal = NO\n");
    const std::string reader = Write("shops/n/c.txt", "[MCR]\n");
    const std::string bad = Write("shops/n/d.dat", Rejected);
    const std::string shops = At("shops");
    const std::string differences = "--- " + till + "\n+++ " + till +
                                    "\nComposite Keyboard, fiscal keyboard: yes -> no\n"
                                    "MCR, separator after track 2: none -> | (7C)\n";
};

TEST_F(Edit, ChangesWhatIsChosenAndKeepsTheOldFile)
{
    const std::string before = files.Read(till);
    const std::string typed = files.Read(reader);
    const std::vector<std::string> arguments{
        "edit", shops, "--set", "fiscal=no", "--set", "mcr.separator2=|", "--where", "KM096"};
    const auto with = [&](std::vector<std::string> more) {
        more.insert(more.begin(), arguments.begin(), arguments.end());
        return more;
    };
    const std::string refused =
        "kelvora-cli: " + plain + ": mcr.separator2: the setup has no MCR\n" + bad + RejectedSays;
    EXPECT_THAT(
        Run(with({"--dry-run"})),
        Gives(1, differences, refused + "kelvora-cli: 4 files: 1 to be changed, 1 not chosen, 2 refused\n"));
    EXPECT_EQ(files.Read(till), before);
    EXPECT_EQ(Run(arguments).exitCode, 2) << "there is nobody to ask";

    access.answers = {false, true};
    EXPECT_THAT(Run(arguments), Gives(1, differences, EndsWith("kelvora-cli: nothing was changed\n")));
    EXPECT_EQ(files.Read(till), before);
    EXPECT_THAT(Run(arguments),
                Gives(1, differences, EndsWith("4 files: 1 changed, 1 not chosen, 2 refused\n")));
    EXPECT_EQ(access.questions.back(), "Change 1 setup? The old content of each is kept as \".bak\".");
    EXPECT_EQ(files.Read(shops + "/a.bak"), before);
    EXPECT_EQ(files.Read(till), Run({"format", till}).out);
    EXPECT_THAT(files.Read(till), HasSubstr("Track2Sep = |\r\n"));
    EXPECT_EQ(files.Read(reader), typed);
    EXPECT_EQ(files.List(shops + "/n"), (std::vector<std::string>{"c.txt", "d.dat"}));

    const CliResult again = Run(with({"--yes", "--json", "--where", "!fiscal=yes"}));
    std::vector<std::string> outcomes;
    for (const auto& object : JsonLines(again.out))
        outcomes.push_back(object["outcome"]);
    EXPECT_EQ(outcomes, (std::vector<std::string>{"asWanted", "refused", "notChosen", "refused"}));
    EXPECT_EQ(files.Read(shops + "/a.bak"), before) << "a file that is as wanted is left alone";
    EXPECT_EQ(Run({"edit", till, plain, "--set", "fiscal=no"}).exitCode, 2);
}

TEST_F(Edit, TakesKeysFromAStandard)
{
    const std::string standard =
        Write("standard.dat",
              "[KM064]\nKeyMap = QQSSSSSS _\nQQSSSSSS _\n"
              "SSSSSSSS _\nSSSSSSSS _\nSSSSSSSS _\nSSSSSSSS _\nSSSSSSSS _\nSSSSSSSS\n");
    const std::string path = Write("till.dat", "[KM096]\n[KM064]\n");
    const CliResult done = Run(
        {"edit", path, "--keys-from", standard, "km064", "--set", "KM064.99..100=vertical", "-y", "--json"});
    EXPECT_EQ(done.exitCode, 0);
    EXPECT_THAT(done.out, JsonWith({{"written", true}}));
    EXPECT_EQ(Json::parse(done.out)["differences"].size(), 8U);
    EXPECT_THAT(files.Read(path), HasSubstr("KeyMap = QQVVSSSS _\r\n         QQVVSSSS _\r\n"));
    EXPECT_EQ(Run({"edit", path, "--keys-from", standard, "ICCR", "-y"}).err,
              "kelvora-cli: " + standard + ": the setup has no ICCR\n");
}

TEST_F(Edit, LeavesWhatItCannotSaveAndWhatChangedMeanwhile)
{
    const std::string twin = Write("shops/a.txt", files.Read(till));
    const std::string dump = Write("shops/e.dat", "[MCR]\n");
    Write("shops/e.bak", "0000:00 \n");
    const std::string text = files.Read(dump);
    const CliResult result = Run({"edit", shops, "--set", "mcr.autoread=off", "--yes"});
    EXPECT_THAT(result.err, HasSubstr(twin + ": another setup's backup has the same name: "));
    EXPECT_THAT(result.err, HasSubstr(dump + ": its backup would replace another file's, "));
    EXPECT_EQ(files.Read(dump), text);
    EXPECT_EQ(Run({"edit", dump, "--set", "mcr.autoread=off", "-n"}).exitCode, 1) << "foreseen";

    // Somebody saves the file while the question is open. It is so large that the memory which it was read
    // into is not kept.
    const std::string padding(2 << 20, '\n');
    files.Write(reader, files.Read(reader) + padding);
    access.answer = true;
    access.whileAsked = [&] { files.Write(reader, "[ICCR]\n" + padding); };
    EXPECT_THAT(Run({"edit", reader, "--set", "mcr.tracks=1,2"}),
                Gives(1, _, HasSubstr(reader + ": it has changed since its differences were shown\n")));
    EXPECT_TRUE(files.Read(reader) == "[ICCR]\n" + padding);
    access.answer = false;
    access.whileAsked = [&] { access.stopAfter = 0; };
    EXPECT_EQ(Run({"edit", till, "--set", "mcr.tracks=2,3"}).exitCode, 3);
}

TEST_F(Edit, RefusesWrongUsage)
{
    access.answer = true;
    const std::string edit = "edit " + till + " ";
    ExpectUsage({edit, edit + "--set fiscal=maybe", edit + "--set mcr.separator1=\u0100",
                 edit + "--set fiscal=no --where code4", edit + "--set fiscal=no mcr.autoread=off --yes",
                 edit + "--keys-from " + till + " KM096 KM064 --yes", edit + "--keys-from " + till + " MCR",
                 edit + "--keys-from " + till, edit + "--set fiscal=no --json",
                 edit + "--set fiscal=no --yes --dry-run"});
    EXPECT_EQ(Run({"edit", At("none.dat"), "--set", "fiscal=no", "-y"}).exitCode, 1);
    EXPECT_EQ(Run({"edit", till, till, "--set", "fiscal=no", "-n"}).exitCode, 0) << "one file";
}

}  // namespace kelvora
