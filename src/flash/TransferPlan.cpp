#include "flash/TransferPlan.h"

#include <algorithm>
#include <utility>

#include "flash/KeyTables.h"
#include "flash/TakeFromImage.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"

namespace kelvora {

namespace {

// Of the lines that the content is for, the one to tell people.
std::string KnownCodes(const WantedContent& wanted)
{
    if (const auto* const document = std::get_if<SetupDocument>(&wanted))
        return document->DeviceMap;
    return ModulesFor(std::get<FlashDump>(wanted)).Known();
}

// A backup belongs to the line that it comes from, whatever modules its image names.
bool IsForLine(const WantedContent& wanted, std::string_view deviceMap)
{
    if (const auto* const document = std::get_if<SetupDocument>(&wanted))
        return HaveSameMainModules(document->DeviceMap, deviceMap);
    const auto& dump = std::get<FlashDump>(wanted);
    const DumpModules modules = ModulesFor(dump);
    return (modules.Known().empty() && dump.isForTheLine) ||
           (!modules.line.empty() && HaveSameMainModules(modules.line, deviceMap)) ||
           (!modules.image.empty() && HaveSameMainModules(modules.image, deviceMap));
}

std::optional<BuildRefusal> BuildRefusalOf(const WantedContent& wanted)
{
    const auto* const document = std::get_if<SetupDocument>(&wanted);
    if (!document)
        return std::nullopt;
    const auto built = BuildSetupImage(*document, nullptr);
    const auto* const refusal = std::get_if<BuildRefusal>(&built);
    return refusal ? std::optional(*refusal) : std::nullopt;
}

std::optional<int> UnknownPosition(std::string_view deviceMap)
{
    const auto* const unknown = std::ranges::find_if(
        deviceMap, [](char code) { return KindOf(static_cast<std::uint8_t>(code)) == ModuleKind::None; });
    if (unknown == deviceMap.end())
        return std::nullopt;
    return static_cast<int>(unknown - deviceMap.begin());
}

// The setup that an image makes: of the modules that it names, of the line's where it names none. Nothing for
// modules that no setup has.
std::optional<TakenSetup> SetupOf(const FlashImage& image, const std::string& lineMap)
{
    try {
        return TakeFromImage(ReadDeviceMap(NamesModules(image) ? DeviceCodesOf(image) : lineMap), image);
    } catch (const SetupError&) {
        return std::nullopt;
    }
}

// Whether a difference of the images is the one of the setups, which have each kind of module once.
bool Says(const ImageDifference& image, const SetupDifference& setup)
{
    switch (image.what) {
        case ImageDifference::What::Fiscal:
            return setup.what == SetupDifference::What::Fiscal;
        case ImageDifference::What::Autoread:
            return setup.what == SetupDifference::What::Autoread;
        case ImageDifference::What::Separator:
            return setup.what == SetupDifference::What::Separator && image.number == setup.position;
        case ImageDifference::What::Key:
            return setup.what == SetupDifference::What::Key && image.number == setup.numberAfter;
        case ImageDifference::What::Module: {
            // Tracks and backlight are in the device code.
            const bool isOption =
                setup.what == SetupDifference::What::Tracks || setup.what == SetupDifference::What::Backlight;
            const ModuleKind kind = KindOf(static_cast<std::uint8_t>(image.after));
            return isOption && kind == setup.kind && kind == KindOf(static_cast<std::uint8_t>(image.before));
        }
        case ImageDifference::What::Bytes:
            break;
    }
    return false;
}

// Whether the setup's key map of that kind is the image's.
bool HasKeyMap(const TakenSetup& taken, ModuleKind kind)
{
    return std::ranges::none_of(taken.notices, [&](const TakeNotice& notice) {
        return notice.kind == ModuleKind::None || notice.kind == kind;
    });
}

std::vector<SetupDifference> SetupChanges(const TransferPlan& plan)
{
    // What an image without modules says of them would be a guess.
    if (!NamesModules(plan.wanted))
        return {};
    const auto held = SetupOf(plan.held, plan.deviceMap);
    const auto wanted = SetupOf(plan.wanted, plan.deviceMap);
    if (!held || !wanted)
        return {};
    std::vector<SetupDifference> changes = CompareSetups(held->document, wanted->document);
    std::erase_if(changes, [&](const SetupDifference& change) {
        const bool isGuess = change.what == SetupDifference::What::Key &&
                             !(HasKeyMap(*held, change.kind) && HasKeyMap(*wanted, change.kind));
        return isGuess || std::ranges::any_of(plan.imageChanges, [&](const ImageDifference& difference) {
                   return Says(difference, change);
               });
    });
    return changes;
}

// Bytes of key contents that are held and would be erased.
std::size_t ContentsLost(const FlashImage& held, const FlashImage& wanted)
{
    std::size_t count = 0;
    for (std::size_t address = FlashLayout::ContentsAt; address < FlashSize; ++address)
        count += held.at(address) != ErasedByte && wanted.at(address) == ErasedByte ? 1 : 0;
    return count;
}

}  // namespace

DumpModules ModulesFor(const FlashDump& dump)
{
    const auto& map = dump.head.deviceMap;
    return {map ? map->deviceMap : std::string(),
            NamesModules(dump.image) ? DeviceCodesOf(dump.image) : std::string()};
}

bool NeedsUsersWord(const FlashDump& dump)
{
    return ModulesFor(dump).Known().empty() && !dump.isForTheLine;
}

std::optional<TransferRefusal> RefusalFor(const WantedContent& wanted)
{
    const auto* const dump = std::get_if<FlashDump>(&wanted);
    if (dump ? NeedsUsersWord(*dump) : KnownCodes(wanted).empty())
        return TransferRefusal{TransferRefusal::Reason::NoModules, 0, std::nullopt, {}, {}};
    if (const auto build = BuildRefusalOf(wanted))
        return TransferRefusal{TransferRefusal::Reason::NotBuilt, 0, build, {}, {}};
    return std::nullopt;
}

std::optional<TransferRefusal> RefusalFor(const WantedContent& wanted, std::string_view deviceMap)
{
    if (auto refusal = RefusalFor(wanted))
        return refusal;
    if (const auto position = UnknownPosition(deviceMap))
        return TransferRefusal{TransferRefusal::Reason::UnknownModule, *position, std::nullopt, {}, {}};
    if (!IsForLine(wanted, deviceMap))
        return TransferRefusal{TransferRefusal::Reason::OtherModules, 0, std::nullopt, std::string(deviceMap),
                               KnownCodes(wanted)};
    return std::nullopt;
}

TransferPlan PlanTransfer(const WantedContent& wanted, std::string deviceMap, const FlashImage& held)
{
    TransferPlan plan;
    plan.deviceMap = std::move(deviceMap);
    plan.held = held;
    if (const auto* const document = std::get_if<SetupDocument>(&wanted)) {
        plan.wanted = std::get<FlashImage>(BuildSetupImage(*document, &held));
        plan.unheld = WhatTheDeviceCannotHold(*document);
    } else {
        const auto& dump = std::get<FlashDump>(wanted);
        plan.wanted = dump.image;
        plan.isOfSetup = dump.head.kind == DumpKind::Setup;
        plan.contentsLost = ContentsLost(held, plan.wanted);
    }
    plan.imageChanges =
        DescribeDifferences(held, plan.wanted, ModulesOf(NamesModules(plan.wanted) ? plan.wanted : held));
    plan.setupChanges = SetupChanges(plan);
    return plan;
}

}  // namespace kelvora
