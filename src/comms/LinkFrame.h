// Frames of the terminal link:
//
//   SOH (01)  exchange: 4 hex digits  body  ETX (03)  CRC: 4 hex digits
//
// Digits are upper-case; the CRC-16 is of exchange and body as sent. NAK (15) between frames says that a
// frame came damaged. Block data inside a body is escaped, so that SOH, ETX, LF, CR and NAK never stand in
// it. Building and judging only: nothing here waits or sends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

namespace LinkByte {
inline constexpr char Soh = 0x01;
inline constexpr char Etx = 0x03;
inline constexpr char LineFeed = 0x0A;
inline constexpr char CarriageReturn = 0x0D;
inline constexpr char Nak = 0x15;
inline constexpr char Escape = 0x1B;  ///< before an escaped byte, which is XORed with 40
}  // namespace LinkByte

struct LinkFrame {
    std::uint16_t exchange = 0;  ///< number of the command, and of its answer
    std::string body;
};

/// A body is never longer. The longest answer, a flash block, takes 458 bytes.
inline constexpr std::size_t MaximumBody = 512;

/// Bytes of a frame that are not its body.
inline constexpr std::size_t FrameOverhead = 10;

inline constexpr std::size_t LongestFrame = MaximumBody + FrameOverhead;

std::string BuildFrame(const LinkFrame& frame);

/// Block data as it stands in a body, and back. Nothing for a text that no data has: a raw control byte, an
/// escape of what needs none, or half a pair.
std::string EscapeData(std::string_view data);
std::optional<std::string> UnescapeData(std::string_view escaped);

/// Finds the frames in what comes over a line, byte by byte.
class FrameReceiver {
public:
    enum class Event {
        None,
        Frame,   ///< a whole frame, see Frame()
        Damage,  ///< what came as a frame is none
        Nak,     ///< a NAK between frames
    };

    Event Take(char byte);

    /// Drops what has come of a frame.
    void Forget();

    const LinkFrame& Frame() const { return frame_; }

    /// What has come since the event before the last one, the last one's bytes included.
    const std::string& Bytes() const { return bytes_; }

    /// Whether Bytes() holds some that no event has told of.
    bool HasRest() const { return !reported_ && !bytes_.empty(); }

    bool InFrame() const { return state_ != State::Between; }

private:
    enum class State { Between, Body, Crc };

    Event Report(Event event);
    Event Judge();

    State state_ = State::Between;
    std::string bytes_;      ///< of this frame, or between frames
    bool reported_ = false;  ///< bytes_ is of the past
    bool damaged_ = false;   ///< a byte has come that no body has
    std::size_t etxAt_ = 0;
    LinkFrame frame_;
};

}  // namespace kelvora
