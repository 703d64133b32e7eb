// The modules of a line by the protocol that reaches their EEPROM:
//
//   ENQ (05) -> DC1 (11), then a frame STX (02) LEN DATA LRC ETX (03) -> ACK (06) ACK
//
// DATA begins with the module's address and a command; the LRC is the XOR of DATA. NAK (15) refuses a wrong
// LRC, ACK NAK a wrong ETX. A module hears and answers at its own speed alone.
//
//   F7                         identify; replies address, F7, four characters of a version
//   F9 high low count          read EEPROM; replies address, F9, the bytes
//   FA high low bytes...       write EEPROM; no reply
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/LineClock.h"
#include "bench/LineFaults.h"
#include "bench/LineState.h"
#include "platform/SerialSettings.h"

namespace kelvora::bench {

/// What follows a frame that is accepted.
enum class Acknowledgement {
    Twice,  ///< ACK ACK and the reply at once
    Once,   ///< ACK; the reply only when the host has stopped waiting for a second one
};

struct ModuleLink {
    SerialSettings settings;
    Acknowledgement acknowledgement = Acknowledgement::Twice;
};

/// At that speed and as a module there acknowledges: at 1200 baud a second ACK would come too late.
ModuleLink ModuleLinkAt(const SerialSettings& settings);

class SimulatedModules {
public:
    /// References outlive this. `links` by address; those that are missing are as the last one.
    SimulatedModules(LineClock& clock, LineState& memory, LineFaults& faults, std::vector<ModuleLink> links);

    /// Whether a byte after so much quiet is for the modules: ENQ, or part of a frame that ENQ has announced.
    bool Wants(char byte, std::chrono::microseconds quiet) const;
    bool InFrame() const { return part_ > Part::Announced; }

    /// A byte on the line and the settings that it was sent at.
    void Hear(char byte, const SerialSettings& settings);

    /// The line was quiet for so long that a frame announced or begun is not coming.
    void Forget() { part_ = Part::Between; }
    /// As after a cut of the power: only the memory stays.
    void Restart();

    /// Called with what a module sends, and its settings.
    std::function<void(const std::string&, const SerialSettings&)> onSend;
    /// Called when the memory has changed.
    std::function<void()> onStored;

private:
    enum class Part { Between, Announced, Length, Data, Lrc, Ending };

    bool Hears(const SerialSettings& settings) const;
    const ModuleLink& LinkOf(std::size_t address) const;
    void HearEnquiry(const SerialSettings& settings);
    void HearFrame(const SerialSettings& settings, bool isEtxRight);
    std::string Run(std::size_t address);
    std::string ReadEeprom(std::size_t address) const;
    void WriteEeprom(std::size_t address);
    void Acknowledge(const ModuleLink& link, const std::string& reply);
    void Send(Appointment& appointment, LineClock::Time due, std::string bytes,
              const SerialSettings& settings);

    LineClock& clock_;
    LineState& memory_;
    LineFaults& faults_;
    std::vector<ModuleLink> links_;
    Part part_ = Part::Between;
    std::size_t length_ = 0;
    std::string data_;
    char lrc_ = 0;
    LineClock::Time enquiry_{};  ///< when ENQ was heard
    Appointment handshake_;
    Appointment reply_;
};

}  // namespace kelvora::bench
