#include "report/ResultFile.h"

#include <gmock/gmock.h>

#include "platform/LocalTime.h"

namespace kelvora {

namespace {

const std::chrono::sys_seconds Changed = *MomentOf("2026-03-09T07:05:00+01:00");

std::vector<TillResult> ResultsIn(const std::string& text)
{
    const auto results = ReadResults(text, Changed);
    EXPECT_TRUE(results) << text;
    return results.value_or(std::vector<TillResult>());
}

std::string EntryText(const std::string& operation, const std::string& terminal, const std::string& result)
{
    return R"({"time":"2026-03-09T08:00:00+01:00","operation":")" + operation + R"(","terminal":")" +
           terminal + R"(","file":"/shop/Till-9.dat","result":")" + result + R"(","message":"told"})";
}

}  // namespace

TEST(ResultFile, OfAFleet)
{
    const auto check = [&](const char* rest, const char* outcome, const char* message, bool failed) {
        const auto results =
            ResultsIn(std::string(R"({"till":"till-7","action":"download",)") + rest + "}\n");
        ASSERT_EQ(results.size(), 1U);
        EXPECT_EQ(results[0], (TillResult{"till-7", "download", outcome, message, Changed, failed}));
    };
    check(R"("exit":0,"result":{"device":"new","message":"written"})", "done", "written", false);
    check(R"("exit":0,"result":{"device":"same"})", "same", "", false);
    check(R"("exit":0,"diagnostics":[],"result":{"ok":true,"message":null})", "done", "", false);
    check(R"("exit":1,"result":{"outcome":"different"})", "different", "", true);
    check(R"("exit":3,"diagnostics":["no answer","twice"],"result":null)", "failed", "no answer", true);
    check(R"("exit":null,"diagnostics":["no route"],"result":null)",
          "not known: not reached, or the connection was lost", "no route", true);
    const TillResult told =
        ResultsIn(R"({"till":"a","exit":0,"time":"2026-03-09T06:06:00Z","setup":"/b.dat"})").at(0);
    EXPECT_EQ(told.time, Changed + std::chrono::minutes(1));
    EXPECT_EQ(told.setup, "/b.dat");
}

TEST(ResultFile, OfASeriesAndAJournal)
{
    const TillResult done{"T7", "download", "done", "told", Changed + std::chrono::minutes(55), false};
    const TillResult stopped{"Till-9", "verify", "stopped", "told", done.time, true};
    const std::string first = EntryText("download", "T7", "done");
    const std::string second = EntryText("verify", "", "stopped");
    EXPECT_EQ(ResultsIn("[" + first + ",\n" + second + "]"), (std::vector{done, stopped}));
    // What a series tells between its results, what only read a device, and a line that was torn.
    EXPECT_EQ(
        ResultsIn(R"({"event":"waiting","port":"COM1"})"
                  "\n" +
                  first + "\n" + EntryText("scan", "T7", "failed") + "\n" + second + "\n" + R"({"time":"20)"),
        (std::vector{done, stopped}));
    EXPECT_TRUE(ResultsIn("[]").empty());
    // More levels than a stack has room for.
    const std::string open(200'000, '[');
    const std::string nested = open + std::string(open.size(), ']');
    for (const std::string& text :
         {std::string("{}"), std::string("[{}]"), std::string("[1,[]]"), std::string("words\n"),
          std::string(R"({"till":"a"})"), std::string(R"({"till":7,"exit":0})"), open, nested})
        EXPECT_FALSE(ReadResults(text, Changed)) << text.substr(0, 99);
    EXPECT_EQ(ResultsIn(R"({"till":"a","exit":0,"result":)" + nested + "}").at(0).outcome, "done");
}

}  // namespace kelvora
