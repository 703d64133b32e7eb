#include "series/Series.h"

#include <gmock/gmock.h>

#include "fakes/BenchLine.h"
#include "fakes/FakeFiles.h"
#include "fakes/MemoryJournal.h"
#include "flash/Backups.h"
#include "flash/Images.h"
#include "flash/TakeFromImage.h"
#include "setup/SetupWriter.h"

namespace kelvora {

using namespace std::chrono_literals;
using enum bench::Module;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;
using Kind = SeriesEvent::Kind;

/// A terminal of that name with its modules, which nothing is connected to.
struct Till {
    Till(std::string tillName, const std::vector<bench::Module>& modules, bench::FaultPlan itsFaults = {})
        : name(std::move(tillName)), memory(bench::FreshLine(modules)), faults(std::move(itsFaults))
    {
    }

    FlashImage Flash() const
    {
        const bench::LineState& now = line ? line->Memory() : memory;
        FlashImage image{};
        std::copy(now.flash.begin(), now.flash.end(), image.begin());
        return image;
    }

    std::string name;
    bench::LineState memory;
    bench::FaultPlan faults;
    const bench::SimulatedLine* line = nullptr;  ///< what has the memory while it is connected
};

/// The cable of a line, and the adapter that it hangs on: what is there can change while the port is open.
class Cable {
public:
    explicit Cable(BenchLine& bench) : bench_(bench) { bench_.line.TakeAway(); }

    /// Null for nothing.
    void Connect(Till* till)
    {
        if (till_) {
            till_->memory = bench_.line.Memory();
            till_->line = nullptr;
        }
        bench_.line.TakeAway();
        till_ = till;
        if (!till_)
            return;
        till_->line = &bench_.line;
        bench_.line.Put(till_->memory, till_->name, till_->faults);
    }

    /// The adapter is taken out of the machine, and comes back.
    void PullOut()
    {
        bench_.port.refusal = PortFailure::Missing;
        if (bench_.port.IsOpen())
            bench_.line.onAway();
    }
    void PutIn() { bench_.port.refusal = PortFailure::None; }

private:
    BenchLine& bench_;
    Till* till_ = nullptr;
};

const std::vector<bench::Module> Keyboards{KM096, KM064};

class SeriesTest : public testing::Test {
protected:
    SeriesTest() { files.content["/setups/fiscal.dat"] = WriteSetup(FiscalSetup().Modules); }

    /// What every till of two keyboards is to hold: as it comes from the factory, but fiscal.
    SetupDocument FiscalSetup()
    {
        const FlashImage fresh = Till("fresh", Keyboards).Flash();
        SetupDocument document = TakeFromImage(ReadDeviceMap("\xD6\x17\x04\xBF"), fresh).document;
        std::string& options = Module(document, ModuleKind::KM096).Options;
        options = options.substr(0, 3) == "YES" ? "NO " : "YES";
        return document;
    }

    void At(milliseconds time, std::function<void()> action) { loop.After(time, std::move(action)); }
    void Connect(milliseconds time, Till* till)
    {
        At(time, [this, till] { cable.Connect(till); });
    }

    SeriesCounts Run(int count, const std::string& folder = {})
    {
        SeriesWorld world;
        world.choose = [this, folder](const std::string& name) {
            return folder.empty() ? ReadChosenSetup(files, "/setups/fiscal.dat")
                                  : ChooseByName(files, folder, name);
        };
        world.keepBackup = [this](const TransferPlan& plan) {
            return backups.Keep({1, plan.deviceMap, plan.terminal, plan.held});
        };
        world.stops = [this] { return stops; };
        world.beginNote = [this] {
            return OperationNote(&kept.journal, JournalOperation::Download, 1, "/dev/till");
        };
        world.tell = [this](const SeriesEvent& event) {
            if (event.kind == Kind::Progress) {
                if (onProgress)
                    onProgress(event);
                return;
            }
            story.push_back(std::string(Names.at(static_cast<std::size_t>(event.kind))) +
                            (event.terminal.empty() ? "" : " " + event.terminal) +
                            (event.kind == Kind::Waiting && !event.message.empty() ? " damaged" : ""));
            if (event.kind == Kind::Result)
                story.back() += std::string(" ") + ResultName(event.entry.result);
            last = event;
            if (onEvent)
                onEvent(event);
        };
        const SeriesCounts counts = Series(comms, target, count, std::move(world)).Run();
        EXPECT_FALSE(bench.port.IsOpen());
        return counts;
    }

    static constexpr std::array Names{"waiting", "noPort", "found",   "progress",
                                      "result",  "gone",   "warning", "end"};

    FakeEventLoop loop;
    BenchLine bench{loop};
    Cable cable{bench};
    Comms comms{loop, {&bench.link, nullptr, nullptr, nullptr}};
    FakeFiles files;
    MemoryJournal kept;
    Backups backups{files, "/backups", [] { return std::chrono::local_seconds(0s); }};
    LineTarget target{1, "9600,n,8,1", 0};
    int stops = 0;
    std::vector<std::string> story;
    SeriesEvent last;
    std::function<void(const SeriesEvent&)> onEvent;
    std::function<void(const SeriesEvent&)> onProgress;
};

TEST_F(SeriesTest, EachTillHasItsVerdictOnce)
{
    Till first("ONE", Keyboards);
    Till again("ONE", Keyboards);
    Till wrong("TWO", {KM096, MCR12});
    const FlashImage fresh = again.Flash();
    Connect(5s, &first);
    Connect(60s, nullptr);
    Connect(65s, &first);  // has its setup by now
    Connect(130s, nullptr);
    Connect(135s, &wrong);
    Connect(160s, nullptr);
    Connect(170s, &again);
    // The clock goes while the first is worked on, and is set back with the last.
    onProgress = [&](const SeriesEvent& /*event*/) { kept.now += story.size() < 3 ? 1s : -1s; };
    EXPECT_EQ(Run(4), (SeriesCounts{2, 1, 1, 0}));
    EXPECT_THAT(story, ElementsAre("waiting", "found ONE", "result ONE done", "gone",    //
                                   "waiting", "found ONE", "result ONE same", "gone",    //
                                   "waiting", "found TWO", "result TWO failed", "gone",  //
                                   "waiting", "found ONE", "result ONE done", "end"));
    EXPECT_EQ(first.Flash(), again.Flash());
    EXPECT_NE(first.Flash(), fresh);

    const std::vector<JournalEntry> entries = kept.Entries();
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries[0].modules, "KM096, KM064");
    EXPECT_EQ(entries[0].file, "/setups/fiscal.dat");
    EXPECT_EQ(entries[0].sha256, "hash of " + std::to_string(files.content["/setups/fiscal.dat"].size()));
    EXPECT_EQ(entries[0].crcBefore, entries[3].crcBefore);
    EXPECT_EQ(entries[0].crcAfter, entries[1].crcAfter);
    EXPECT_NE(entries[0].crcAfter, entries[0].crcBefore);
    EXPECT_TRUE(files.Exists(entries[0].backup));
    EXPECT_THAT(entries[2].message, HasSubstr("On the line: "));
    EXPECT_TRUE(entries[0].seconds >= 1 && entries[3].seconds == 0);
    EXPECT_EQ(last.counts, (SeriesCounts{2, 1, 1, 0}));
}

TEST_F(SeriesTest, ATillIsNoticedWithinASecondWheneverItComes)
{
    for (int phase = 0; phase < 10; ++phase) {
        Till till("ONE", Keyboards);
        const auto connected = 10s + phase * 83ms;
        const EventLoop::Time start = loop.Now();
        EventLoop::Time found{};
        stops = 0;
        Connect(connected, &till);
        onEvent = [&](const SeriesEvent& event) {
            if (event.kind != Kind::Found)
                return;
            found = loop.Now();
            stops = 2;
        };
        Run(0);
        EXPECT_LE(found - start - connected, 1s) << phase;
        cable.Connect(nullptr);
    }
}

TEST_F(SeriesTest, NeitherNoiseNorAnAnswerThatNeverComesMakesTwoTillsOfOne)
{
    const bench::FaultPlan noisy{.drop = 0.004, .flip = 0.004};
    const bench::FaultPlan deaf{.commands = {{bench::CommandFault::Kind::Late, "0FB0", 0, 60s}}};
    for (const bench::FaultPlan& faults : {noisy, deaf}) {
        Till till("ONE", Keyboards, faults);
        stops = 0;
        cable.Connect(&till);
        At(900s, [this] { stops = 1; });
        EXPECT_EQ(Run(0).All(), 1) << testing::PrintToString(story);
        cable.Connect(nullptr);
    }
}

TEST_F(SeriesTest, DamageIsToldOnceForATill)
{
    Till garbled("ONE", Keyboards, {.flip = 0.3});
    Till till("ONE", Keyboards);
    Connect(5s, &garbled);
    Connect(60s, &till);
    EXPECT_EQ(Run(1).done, 1);
    EXPECT_THAT(story, ElementsAre("waiting", "waiting damaged", "found ONE", "result ONE done", "end"));
}

TEST_F(SeriesTest, ATillIsGoneAfterTwoCallsThatLastAsLongAsTheLineNeeds)
{
    const auto check = [this](const LineTarget& line, milliseconds least, milliseconds most) {
        Till till("ONE", Keyboards);
        EventLoop::Time pulled{};
        target = line;
        stops = 0;
        cable.Connect(&till);
        onEvent = [&](const SeriesEvent& event) {
            if (event.kind == Kind::Result)
                cable.Connect(nullptr), pulled = loop.Now();
            if (event.kind == Kind::Gone) {
                EXPECT_THAT(loop.Now() - pulled, testing::AllOf(testing::Ge(least), testing::Le(most)));
                stops = 1;
            }
        };
        Run(0);
    };
    // A call and its answer, of some length, or what the user waits for.
    check({1, "9600,n,8,1", 0}, 2500ms, 2700ms);
    check({1, "9600,n,8,1", 300}, 600ms, 800ms);
}

TEST_F(SeriesTest, AnotherNameIsAnotherTillHoweverQuicklyItComes)
{
    Till first("ONE", Keyboards);
    Till second("TWO", Keyboards);
    cable.Connect(&first);
    onEvent = [&](const SeriesEvent& event) {
        if (event.kind == Kind::Result && event.terminal == "ONE")
            cable.Connect(&second);
    };
    EXPECT_EQ(Run(2).done, 2);
    EXPECT_THAT(story, ElementsAre("waiting", "found ONE", "result ONE done", "gone", "found TWO",
                                   "result TWO done", "end"));
}

TEST_F(SeriesTest, AnAdapterMayGoAndComeBack)
{
    Till till("ONE", Keyboards);
    At(3s, [this] { cable.PullOut(); });
    At(20s, [this] { cable.PutIn(); });
    Connect(30s, &till);
    // With a till done, the adapter's absence counts as the till's own.
    At(90s, [this] { cable.PullOut(); });
    At(95s, [this] { cable.PutIn(); });
    // Nor is it missed where it comes back before anybody calls again.
    onProgress = [&](const SeriesEvent& /*event*/) { cable.PullOut(); };
    onEvent = [&](const SeriesEvent& event) {
        if (event.kind == Kind::Result)
            onProgress = nullptr, cable.PutIn();
    };
    EXPECT_EQ(Run(3), (SeriesCounts{1, 1, 1, 0}));
    EXPECT_THAT(story, ElementsAre("waiting", "noPort", "waiting", "found ONE", "result ONE failed", "gone",
                                   "waiting", "found ONE", "result ONE done", "gone",  //
                                   "waiting", "noPort", "waiting", "found ONE", "result ONE same", "end"));
}

TEST_F(SeriesTest, ByNameEachTerminalGetsItsOwnFileOrNone)
{
    files.content["/tills/Till01.DAT"] = files.content["/setups/fiscal.dat"];
    files.content["/tills/twice.dat"] = files.content["/tills/Twice.dat"] = "x";
    files.content["/tills/broken.dat"] = "[Kelvora]\r\noops\r\n";
    const auto check = [&](const char* terminal, const char* why) {
        EXPECT_THAT(ChooseByName(files, "/tills", terminal).why, HasSubstr(why));
    };
    check("TILL02", "/tills: no file is named TILL02.dat");
    check("TWICE", "several files");
    check("../setups/fiscal", "no file");
    check("  ", "no name");
    check("BROKEN", "broken.dat:2: expected");
    // Names of terminals have a byte a letter.
    const std::string small = "\xC3\xA0\xC3\xBE\xC3\xBF\xC3\xB7";
    files.content["/tills/" + small + ".dat"] = files.content["/tills/\xC3"] = "x";
    EXPECT_EQ(ChooseByName(files, "/tills", " \xC0\xDE\xFF\xF7 ").path, "/tills/" + small + ".dat");
    check("\xC0\xDE\xDF\xF7", "no file is named \xC3\x80\xC3\x9E\xC3\x9F\xC3\xB7.dat");
    check("\xC0\xDE\xFF\xD7", "no file");
    files.unreadable.insert("/tills/till01.dat");

    Till till("TILL01 ", Keyboards);
    Till other("OTHER", Keyboards);
    const FlashImage before = other.Flash();
    // Between the call that finds the till and the download another one takes its place.
    cable.Connect(&till);
    onEvent = [&](const SeriesEvent& event) {
        if (event.kind == Kind::Found && event.terminal == "TILL01 " && !files.Exists("/backups"))
            cable.Connect(&other);
        if (event.kind == Kind::Result && event.terminal == "OTHER")
            Connect(10s, nullptr), Connect(15s, &till), files.content["/backups"] = "";
    };
    EXPECT_EQ(Run(2, "/tills"), (SeriesCounts{1, 0, 1, 0}));
    EXPECT_EQ(other.Flash(), before);
    EXPECT_THAT(story,
                ElementsAre("waiting", "found TILL01 ", "waiting", "found OTHER", "result OTHER failed",
                            "gone", "waiting", "found TILL01 ", "result TILL01  done", "end"));
    EXPECT_EQ(kept.Last().file, "/tills/Till01.DAT");
    EXPECT_EQ(kept.Entries().size(), 2U);
}

TEST_F(SeriesTest, OneStopEndsItAfterTheTillAndTwoAtOnce)
{
    Till till("ONE", Keyboards);
    const FlashImage before = till.Flash();
    cable.Connect(&till);
    for (const int wanted : {2, 1}) {
        stops = 0;
        story.clear();
        onProgress = [&](const SeriesEvent& /*event*/) { stops = wanted; };
        const SeriesCounts counts = Run(0);
        EXPECT_EQ(counts, wanted == 1 ? (SeriesCounts{1, 0, 0, 0}) : (SeriesCounts{0, 0, 0, 1}));
        EXPECT_EQ(till.Flash() == before, wanted == 2);
    }
    // While it waits one is enough.
    At(2s, [this] { stops = 1; });
    stops = 0;
    cable.Connect(nullptr);
    EXPECT_EQ(Run(0).All(), 0);
}

}  // namespace kelvora
