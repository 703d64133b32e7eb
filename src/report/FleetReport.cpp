#include "report/FleetReport.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <utility>

#include "catalogue/MessageCatalogue.h"
#include "picture/SheetBlocks.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "platform/Joined.h"
#include "setup/SetupDifferences.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

// What the tills are known by: the names of their files.
std::string KeyOf(const std::string& file)
{
    return LowerCase(std::filesystem::path(file).stem().string());
}

std::string NamesOf(const ModuleList& modules)
{
    std::vector<std::string> names;
    for (const ModuleRecord& record : modules)
        if (!IsPart(record.Kind))
            names.emplace_back(KindName(record.Kind));
    return Joined(names, ", ");
}

std::string OptionsText(const ModuleList& modules, const MessageCatalogue& english)
{
    std::vector<std::string> texts;
    for (const ModuleRecord& record : modules)
        for (const ModuleOption& option : OptionsOf(record))
            texts.push_back(Utf8FromText(Describe(english, option)));
    return Joined(texts, "; ");
}

// All that a picture shows of modules.
std::string SeenOf(const ModuleList& modules)
{
    std::string seen;
    for (const ModuleRecord& record : modules)
        seen += static_cast<char>(record.DeviceCode) + record.KeyMap + '|' + record.Options + '|';
    return seen;
}

std::map<std::string, TillResult> LatestOf(const std::vector<TillResult>& results)
{
    std::map<std::string, TillResult> latest;
    for (const TillResult& result : results) {
        const auto [at, isNew] = latest.try_emplace(LowerCase(result.till), result);
        if (!isNew && at->second.time <= result.time)
            at->second = result;
    }
    return latest;
}

// Where the tills stand that were found, by their files.
class FoundPlaces {
public:
    explicit FoundPlaces(const std::vector<ReportTill>& tills)
    {
        for (std::size_t i = 0; i < tills.size(); ++i) {
            files_.emplace(tills[i].file, i);
            tills_[KeyOf(tills[i].file)].push_back(i);
        }
    }

    std::optional<std::size_t> OfFile(const std::string& file) const
    {
        const auto at = files_.find(file);
        return at == files_.end() ? std::nullopt : std::optional(at->second);
    }

    std::vector<std::size_t> OfTill(const std::string& key) const
    {
        const auto at = tills_.find(key);
        return at == tills_.end() ? std::vector<std::size_t>() : at->second;
    }

private:
    std::map<std::string, std::size_t> files_;
    std::map<std::string, std::vector<std::size_t>> tills_;
};

}  // namespace

TillFacts FactsOf(std::string name, std::string file, SetupDocument document, const SetupDocument* standard)
{
    const MessageCatalogue english;
    TillFacts facts{std::move(name), std::move(file)};
    for (SheetBlock& block : SheetBlocks(document, english)) {
        ReportModule module{std::move(block.title), std::move(block.facts)};
        if (block.grid) {
            module.keyMap = block.grid->KeyMap;
            module.columns = block.grid->Columns;
            module.firstKeyNumber = block.firstKeyNumber;
        }
        facts.modules.push_back(std::move(module));
    }
    if (standard)
        for (const SetupDifference& difference : CompareSetups(*standard, document))
            facts.deviations.push_back(Utf8FromText(Describe(english, difference)));
    facts.options = OptionsText(document.Modules, english);
    facts.document = std::move(document);
    return facts;
}

std::size_t FleetReport::PictureOf(const ModuleList& modules)
{
    const auto [at, isNew] = looks_.try_emplace(SeenOf(modules), toDraw_.size());
    if (isNew)
        toDraw_.push_back(modules);
    return at->second;
}

void FleetReport::AddPicture(const std::string& svg)
{
    std::vector<PicturePart>& runs = pictures_.emplace_back();
    std::istringstream lines(svg);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t place = lines_.PlaceOf(line);
        if (runs.empty() || runs.back().first + runs.back().second != place)
            runs.emplace_back(place, 0);
        ++runs.back().second;
    }
}

std::size_t FleetReport::SetupOf(const TillFacts& facts)
{
    const ModuleList& modules = facts.document->Modules;
    ReportSetup setup{NamesOf(modules), facts.options, {}, PictureOf(modules)};
    for (const ReportModule& module : facts.modules)
        setup.modules.push_back(modules_.PlaceOf(module));
    return setups_.PlaceOf(setup);
}

std::size_t FleetReport::ListOf(const std::vector<std::string>& deviations)
{
    std::vector<std::size_t> list;
    list.reserve(deviations.size());
    for (const std::string& deviation : deviations)
        list.push_back(deviations_.PlaceOf(deviation));
    return lists_.PlaceOf(list);
}

void FleetReport::Add(TillFacts facts)
{
    // So that the place of "none" is known.
    lists_.PlaceOf({});
    ReportTill till{std::move(facts.name), std::move(facts.file), std::move(facts.why)};
    if (facts.document) {
        till.setup = SetupOf(facts);
        till.deviations = ListOf(facts.deviations);
    }
    tills_.push_back(std::move(till));
}

void FleetReport::AddResults(const std::vector<TillResult>& results)
{
    const std::vector<ReportTill> found = tills_;
    const FoundPlaces places(found);
    std::set<std::string> shownElsewhere;
    for (const auto& [key, result] : LatestOf(results)) {
        const auto setup = places.OfFile(result.setup);
        const bool isItsOwn = setup && KeyOf(result.setup) == key;
        const std::vector<std::size_t> named = isItsOwn ? std::vector{*setup} : places.OfTill(key);
        if (named.size() != 1)
            tills_.push_back(
                {result.till, {}, named.empty() ? "no setup of that name" : "several setups of that name"});
        ReportTill& till = named.size() == 1 ? tills_[named.front()] : tills_.back();
        if (setup && !isItsOwn) {
            const std::string name = till.name;
            till = found[*setup];
            till.name = name;
            shownElsewhere.insert(till.file);
        }
        till.result = result;
    }
    std::erase_if(tills_,
                  [&](const ReportTill& till) { return !till.result && shownElsewhere.contains(till.file); });
}

ReportCounts FleetReport::Counts() const
{
    const auto count = [&](auto isOne) {
        return static_cast<std::size_t>(std::ranges::count_if(tills_, isOne));
    };
    return {tills_.size(), count([](const ReportTill& till) { return till.deviations != 0; }),
            count([](const ReportTill& till) { return till.result && till.result->failed; }),
            count([](const ReportTill& till) { return !till.file.empty() && !till.why.empty(); })};
}

}  // namespace kelvora
