#include "bench/LineFaults.h"

#include <algorithm>

namespace kelvora::bench {

namespace {

/// Tells the noise of the one direction from that of the other.
constexpr std::uint64_t OtherDirection = 0x9E3779B97F4A7C15U;
/// Tells stray bytes from both.
constexpr std::uint64_t OfNobody = 0xD1B54A32D192ED03U;

/// A number from 0 up to 1, made here because the library's distributions differ from machine to machine.
double Chance(std::mt19937_64& noise)
{
    return static_cast<double>(noise() >> 11) * 0x1.0p-53;
}

bool TakeOne(unsigned& count)
{
    if (count == 0)
        return false;
    --count;
    return true;
}

}  // namespace

LineFaults::LineFaults(const FaultPlan& plan)
    : plan_(plan),
      commands_(plan.commands),
      stray_(plan.seed ^ OfNobody),
      ways_{
          Way{std::mt19937_64(plan.seed), 0, plan.silentAfter.toDevice, plan.awayAfter.toDevice},
          Way{std::mt19937_64(plan.seed ^ OtherDirection), 0, plan.silentAfter.toHost, plan.awayAfter.toHost}}
{
}

std::string LineFaults::Distort(Direction direction, std::string_view bytes)
{
    if (plan_.drop + plan_.flip + plan_.duplicate <= 0)
        return std::string(bytes);
    std::mt19937_64& noise = WayOf(direction).noise;
    std::string heard;
    for (const char byte : bytes) {
        const double chance = Chance(noise);
        if (chance < plan_.drop)
            continue;
        if (chance < plan_.drop + plan_.flip)
            heard += static_cast<char>(byte ^ (1 << (noise() & 7U)));
        else if (chance < plan_.drop + plan_.flip + plan_.duplicate)
            heard.append(2, byte);
        else
            heard += byte;
    }
    return heard;
}

std::size_t LineFaults::Pass(Direction direction, std::size_t bytes)
{
    if (isSilent_ || isAway_)
        return 0;
    Way& way = WayOf(direction);
    constexpr std::uint64_t Never = ~std::uint64_t{0};
    const std::uint64_t silence = way.silentAfter.value_or(Never);
    const std::uint64_t absence = way.awayAfter.value_or(Never);
    const std::uint64_t cut = std::min(silence, absence);
    const std::uint64_t passing = std::min<std::uint64_t>(bytes, cut - std::min(cut, way.passed));
    way.passed += passing;
    isAway_ = way.passed >= absence;
    isSilent_ = way.passed >= silence;
    return static_cast<std::size_t>(passing);
}

bool LineFaults::TakeNak()
{
    return TakeOne(plan_.naks);
}

std::chrono::milliseconds LineFaults::TakeDelay(std::string_view command)
{
    const CommandFault* const fault = commands_.Take(CommandFault::Kind::Late, command);
    return plan_.delay + (fault == nullptr ? std::chrono::milliseconds(0) : fault->late);
}

bool LineFaults::TakeWrongReply(std::string_view command)
{
    return commands_.Take(CommandFault::Kind::WrongReply, command) != nullptr;
}

std::string LineFaults::TakeStatus(std::string_view command)
{
    const CommandFault* const fault = commands_.Take(CommandFault::Kind::Status, command);
    return fault == nullptr ? std::string() : fault->status;
}

bool LineFaults::TakeSilence(std::string_view command)
{
    // A line that was cut still brings the command that ended with its last byte.
    const bool isTaken = commands_.Take(CommandFault::Kind::Silent, command) != nullptr;
    isSilent_ |= isTaken;
    return isTaken;
}

std::string LineFaults::Spoil(std::string frame)
{
    if (frame.empty())
        return frame;
    if (TakeOne(plan_.wrongLrcs))
        frame[frame.size() - 2] ^= 1;
    else if (TakeOne(plan_.wrongLengths))
        ++frame[1];
    return frame;
}

}  // namespace kelvora::bench
