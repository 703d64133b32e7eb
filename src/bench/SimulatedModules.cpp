#include "bench/SimulatedModules.h"

#include <algorithm>
#include <utility>

#include "bench/ControlBytes.h"

namespace kelvora::bench {

namespace {

constexpr char AskIdentity = '\xF7';
constexpr char Read = '\xF9';
constexpr char Write = '\xFA';

constexpr std::string_view Version = "1.00";

/// Where the identity block stands in the EEPROM. Nothing else of it is simulated: it reads as erased, and
/// what is written there is lost.
constexpr std::size_t BlockAddress = 0x00AA;
constexpr std::uint8_t Erased = 0xFF;

/// Address, command, and a place of two bytes in the EEPROM, high byte first.
constexpr std::size_t PlaceEnd = 4;
/// A frame's length byte counts 255 at most, two of which lead a reply.
constexpr std::size_t MostRead = 253;

/// From the ENQ on. The host waits 110 ms for acknowledgements and would take an earlier reply for one of
/// them.
constexpr std::chrono::milliseconds ReplyAfter(130);

/// The host waits before it sends an ENQ. One that directly follows other bytes is none: it is the rest of a
/// damaged terminal frame.
constexpr std::chrono::milliseconds QuietBeforeEnquiry(10);

/// At this speed a request and two acknowledgements fill the host's 110 ms.
constexpr int SlowBaud = 1200;

std::size_t ByteAt(std::string_view text, std::size_t index)
{
    return static_cast<unsigned char>(text[index]);
}

char LrcOf(std::string_view data)
{
    unsigned lrc = 0;
    for (const char byte : data)
        lrc ^= static_cast<unsigned char>(byte);
    return static_cast<char>(lrc);
}

std::string Frame(const std::string& data)
{
    return std::string{Stx, static_cast<char>(data.size())} + data + LrcOf(data) + Etx;
}

}  // namespace

ModuleLink ModuleLinkAt(const SerialSettings& settings)
{
    return {settings, settings.baud <= SlowBaud ? Acknowledgement::Once : Acknowledgement::Twice};
}

SimulatedModules::SimulatedModules(LineClock& clock, LineState& memory, LineFaults& faults,
                                   std::vector<ModuleLink> links)
    : clock_(clock),
      memory_(memory),
      faults_(faults),
      links_(std::move(links)),
      handshake_(clock),
      reply_(clock)
{
    if (links_.empty())
        links_.emplace_back();
}

bool SimulatedModules::Wants(char byte, std::chrono::microseconds quiet) const
{
    if (InFrame())
        return true;
    return byte == Enq ? quiet >= QuietBeforeEnquiry : part_ == Part::Announced && byte == Stx;
}

void SimulatedModules::Hear(char byte, const SerialSettings& settings)
{
    if (!Hears(settings))
        return;
    switch (part_) {
        case Part::Between:
        case Part::Announced:
            if (byte == Enq)
                HearEnquiry(settings);
            else
                part_ = Part::Length;
            break;
        case Part::Length:
            length_ = static_cast<unsigned char>(byte);
            data_.clear();
            part_ = length_ == 0 ? Part::Lrc : Part::Data;
            break;
        case Part::Data:
            data_ += byte;
            part_ = data_.size() == length_ ? Part::Lrc : Part::Data;
            break;
        case Part::Lrc:
            lrc_ = byte;
            part_ = Part::Ending;
            break;
        case Part::Ending:
            part_ = Part::Between;
            HearFrame(settings, byte == Etx);
            break;
    }
}

bool SimulatedModules::Hears(const SerialSettings& settings) const
{
    for (std::size_t address = 0; address < memory_.modules.size(); ++address)
        if (LinkOf(address).settings == settings)
            return true;
    return false;
}

const ModuleLink& SimulatedModules::LinkOf(std::size_t address) const
{
    return links_[std::min(address, links_.size() - 1)];
}

void SimulatedModules::HearEnquiry(const SerialSettings& settings)
{
    part_ = Part::Announced;
    enquiry_ = clock_.Now();
    reply_.Cancel();
    Send(handshake_, enquiry_ + faults_.Delay(), {Dc1}, settings);
}

void SimulatedModules::HearFrame(const SerialSettings& settings, bool isEtxRight)
{
    const std::size_t address = data_.empty() ? MostModules : ByteAt(data_, 0);
    if (address >= memory_.modules.size() || LinkOf(address).settings != settings)
        return;
    const LineClock::Time due = clock_.Now() + faults_.Delay();
    if (faults_.TakeNak() || LrcOf(data_) != lrc_)
        Send(handshake_, due, {Nak}, settings);
    else if (!isEtxRight)
        Send(handshake_, due, {Ack, Nak}, settings);
    else
        Acknowledge(LinkOf(address), faults_.Spoil(Run(address)));
}

std::string SimulatedModules::Run(std::size_t address)
{
    const char command = data_.size() > 1 ? data_[1] : '\0';
    const std::string lead = data_.substr(0, 2);
    if (command == AskIdentity && data_.size() == 2)
        return Frame(lead + std::string(Version));
    if (command == Read && data_.size() == PlaceEnd + 1 && ByteAt(data_, PlaceEnd) <= MostRead)
        return Frame(lead + ReadEeprom(address));
    if (command == Write && data_.size() > PlaceEnd)
        WriteEeprom(address);
    return {};
}

std::string SimulatedModules::ReadEeprom(std::size_t address) const
{
    const std::size_t place = ByteAt(data_, 2) << 8 | ByteAt(data_, 3);
    const IdentityBytes& block = memory_.modules[address];
    std::string bytes;
    for (std::size_t index = 0; index < ByteAt(data_, PlaceEnd); ++index) {
        const std::size_t offset = place + index - BlockAddress;
        bytes += static_cast<char>(offset < block.size() ? block[offset] : Erased);
    }
    return bytes;
}

void SimulatedModules::WriteEeprom(std::size_t address)
{
    const std::size_t place = ByteAt(data_, 2) << 8 | ByteAt(data_, 3);
    IdentityBytes block = memory_.modules[address];
    for (std::size_t index = 0; index + PlaceEnd < data_.size(); ++index) {
        const std::size_t offset = place + index - BlockAddress;
        if (offset < block.size())
            block[offset] = static_cast<std::uint8_t>(data_[PlaceEnd + index]);
    }
    if (std::exchange(memory_.modules[address], block) != block && onStored)
        onStored();
}

void SimulatedModules::Acknowledge(const ModuleLink& link, const std::string& reply)
{
    const LineClock::Time due = clock_.Now() + faults_.Delay();
    if (link.acknowledgement == Acknowledgement::Twice) {
        Send(handshake_, due, std::string{Ack, Ack} + reply, link.settings);
        return;
    }
    Send(handshake_, due, {Ack}, link.settings);
    if (!reply.empty())
        Send(reply_, std::max(due, enquiry_ + ReplyAfter), reply, link.settings);
}

void SimulatedModules::Send(Appointment& appointment, LineClock::Time due, std::string bytes,
                            const SerialSettings& settings)
{
    if (due > clock_.Now())
        appointment.Set(due, [this, bytes = std::move(bytes), settings] { onSend(bytes, settings); });
    else
        onSend(bytes, settings);
}

void SimulatedModules::Restart()
{
    part_ = Part::Between;
    handshake_.Cancel();
    reply_.Cancel();
}

}  // namespace kelvora::bench
