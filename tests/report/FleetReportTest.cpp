#include "report/FleetReport.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "platform/LocalTime.h"
#include "report/ReportPage.h"
#include "setup/SetupReader.h"

namespace kelvora {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

const std::string Standard = "[Kelvora]\n[KM096]\n[MCR]\n";
const std::string Fiscal = "[Kelvora]\n[KM096]\nFiscal = NO\n[MCR]\nTracks = 1,2\n";

void AddTill(FleetReport& report, const std::string& name, const std::string& setup)
{
    const SetupDocument standard = ReadSetup(Standard);
    report.Add(FactsOf(name, "shop/" + name + ".dat", ReadSetup(setup), &standard));
}

const std::chrono::sys_seconds Noon = *MomentOf("2026-03-09T12:00:00Z");

TillResult ResultOf(const std::string& till, int minutes, bool failed = false)
{
    return {till, "verify", failed ? "failed" : "done", "", Noon + std::chrono::minutes(minutes), failed};
}

nlohmann::json DataOf(const std::string& page)
{
    const std::string begin = R"(id="data">)";
    const std::size_t at = page.find(begin) + begin.size();
    return nlohmann::json::parse(page.substr(at, page.find("</script>", at) - at));
}

}  // namespace

TEST(FleetReport, KeepsOnceWhatTillsHaveInCommon)
{
    FleetReport report;
    for (const char* const name : {"a", "b", "c"})
        AddTill(report, name, Standard);
    AddTill(report, "d", Fiscal);
    report.Add({"e", "shop/e.dat", "line 3: expected something"});
    EXPECT_EQ(report.Setups().size(), 2U);
    EXPECT_EQ(report.Setups()[1].names, "KM096, MCR");
    EXPECT_THAT(report.Setups()[1].options, HasSubstr("fiscal keyboard: no; "));
    EXPECT_EQ(report.Modules().at(report.Setups()[1].modules[0]).keyMap.size(), 96U);
    EXPECT_EQ(report.Tills()[3].setup, 1U);
    EXPECT_THAT(report.DeviationLists(), ElementsAre(ElementsAre(), ElementsAre(0U, 1U)));
    EXPECT_THAT(report.Deviations(),
                ElementsAre(HasSubstr("fiscal keyboard: yes -> no"), HasSubstr("tracks read: 1,2,3 -> 1,2")));
    report.AddPicture("a\nb\nc\n");
    report.AddPicture("a\nd\nb\nc\n");
    EXPECT_THAT(report.Pictures(),
                ElementsAre(ElementsAre(Pair(0, 3)), ElementsAre(Pair(0, 1), Pair(3, 1), Pair(1, 2))));
}

TEST(FleetReport, GivesEachTillItsLatestResult)
{
    FleetReport report;
    for (const char* const name : {"North/T1", "North/T2", "South/T2", "South/T3"})
        AddTill(report, name, Standard);
    report.AddResults(
        {ResultOf("T1", 1), ResultOf("t1", 0, true), ResultOf("T2", 0), ResultOf("t9", 0, true)});
    const auto& tills = report.Tills();
    ASSERT_EQ(tills.size(), 6U);
    EXPECT_FALSE(tills[0].result->failed);
    EXPECT_FALSE(tills[1].result || tills[2].result || tills[3].result);
    EXPECT_EQ(tills[4].why, "several setups of that name");
    EXPECT_EQ(tills[5].why, "no setup of that name");
    EXPECT_EQ(report.Counts().unread, 0U);
}

TEST(FleetReport, ShowsTheSetupThatAResultNames)
{
    FleetReport report;
    for (const char* const name : {"counter", "North/T2", "South/T2", "T3", "T4", "T5"})
        AddTill(report, name, name == std::string("counter") ? Fiscal : Standard);
    std::vector<TillResult> results;
    // A shared one, two tills of one name, one with the setup of another till and that one with its own.
    for (const auto& [till, setup] :
         {std::pair{"t7", "counter"}, {"t8", "counter"}, {"t2", "South/T2"}, {"t4", "T3"}, {"t3", "T3"}}) {
        results.push_back(ResultOf(till, 0));
        results.back().setup = std::string("shop/") + setup + ".dat";
    }
    report.AddResults(results);
    std::vector<std::string> told;
    for (const ReportTill& till : report.Tills())
        told.push_back(till.name + (till.result ? " has " : " of ") + till.file + till.why);
    EXPECT_THAT(told, ElementsAre("North/T2 of shop/North/T2.dat", "South/T2 has shop/South/T2.dat",
                                  "T3 has shop/T3.dat", "T4 has shop/T3.dat", "T5 of shop/T5.dat",
                                  "t7 has shop/counter.dat", "t8 has shop/counter.dat"));
    EXPECT_EQ(report.Tills().back().setup, 0U);
    EXPECT_EQ(report.Counts().deviating, 2U);
}

TEST(FleetReport, PageCarriesForeignTextsUnharmed)
{
    const std::string evil = "</script><b>\"&{{DATA}}";
    const std::string five =
        "[KM096]\nFiscal = NO\nBacklight = NO\n[MCR]\nTracks = 1,2\nTrack1Sep = ;\nAutoread = OFF\n";
    FleetReport report;
    AddTill(report, evil, Standard);
    AddTill(report, "\u00E9", five);
    AddTill(report, "six", five + "Track2Sep = ;\n");
    report.Add({"bad", "shop/bad.dat", evil});
    report.AddResults({{"\u00E9", "verify", "failed", evil + "\xFF", Noon, true}});
    const std::string page = ReportPage(report, {evil, "<i>", Noon});
    EXPECT_THAT(page, Not(HasSubstr(evil)));
    EXPECT_THAT(page, HasSubstr("&lt;/script&gt;&lt;b&gt;&quot;&amp;{{DATA}}"));
    EXPECT_THAT(page, HasSubstr("4 tills: 2 deviate, 1 failed, 1 could not be read. Made 2026-03-"));
    EXPECT_THAT(page, HasSubstr(". Standard: &lt;i&gt;<"));
    EXPECT_THAT(page, HasSubstr("(3B); MCR, auto-read: yes -&gt; no<td>"));
    EXPECT_THAT(page, HasSubstr("2: none -&gt; ; (3B); and 1 more<td>"));
    const auto data = DataOf(page);
    EXPECT_EQ(data["tills"][0]["name"], evil);
    EXPECT_EQ(data["tills"][1]["list"], 1);
    EXPECT_EQ(data["tills"][1]["result"]["failed"], true);
    EXPECT_EQ(data["tills"][1]["result"]["message"], evil + "\uFFFD");
    EXPECT_THAT(page, HasSubstr(R"({"name":"bad","file":"shop/bad.dat","why":"\u003c/script>)"));
    EXPECT_EQ(data["modules"][0]["first"], 1);
    EXPECT_EQ(data["compared"], true);
    EXPECT_EQ(data["keyTypes"]["3"], "double horizontal key");
}

}  // namespace kelvora
