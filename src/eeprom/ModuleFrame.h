// Frames and answers of the module protocol: building and judging only; nothing here waits or sends.
//   frame, both ways   STX  LEN  DATA (LEN bytes)  LRC  ETX        LRC: exclusive or of DATA alone
//   handshake          host ENQ, module DC1, host frame, module ACK (a second ACK may follow) or NAK
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kelvora {

namespace ProtocolCharacter {
inline constexpr char STX = 0x02;  ///< start of frame
inline constexpr char ETX = 0x03;  ///< end of frame
inline constexpr char ENQ = 0x05;  ///< host: request to send
inline constexpr char ACK = 0x06;  ///< module: frame accepted
inline constexpr char DC1 = 0x11;  ///< module: ready for a frame
inline constexpr char NAK = 0x15;  ///< module: frame refused
}  // namespace ProtocolCharacter

/// What a frame adds to its data.
inline constexpr std::size_t ModuleFrameOverhead = 4;

/// The protocol's errors; 0 stands for none.
namespace CommsErrorCode {
inline constexpr std::int16_t None = 0;
inline constexpr std::int16_t NoResponse = -20;
inline constexpr std::int16_t CorruptedPacket = -21;
inline constexpr std::int16_t InvalidPacket = -22;  ///< never raised here
inline constexpr std::int16_t Checksum = -23;
inline constexpr std::int16_t NoResponseToFrame = -24;  ///< never raised here
inline constexpr std::int16_t NotReady = -25;           ///< the answer to ENQ was not DC1
inline constexpr std::int16_t IllegalCharacter = -26;
inline constexpr std::int16_t NakLrc = -40;   ///< NAK
inline constexpr std::int16_t NakEtx = -41;   ///< ACK NAK
inline constexpr std::int16_t NakSlow = -42;  ///< host too slow
}  // namespace CommsErrorCode

/// What an error says; these texts are English in every language.
std::string_view CommsErrorText(std::int16_t code);

/// The exclusive or of all bytes; 0 for none.
std::uint8_t LRC(std::string_view bytes);

/// The frame of at most 255 data bytes.
std::string BuildModuleFrame(std::string_view data);

/// Judges all that came after ENQ: ready only for exactly DC1.
std::int16_t JudgeHandshake(std::string_view answer);

/// Judges what came after the frame, its first two bytes at most.
std::int16_t JudgeAcknowledgement(std::string_view answer);

struct FramedReply {
    std::string data;  ///< with a checksum error too; empty for a corrupted packet
    std::int16_t error = CommsErrorCode::None;
};

/// Judges all that came as a reply, at least one byte.
FramedReply JudgeReply(std::string_view received);

}  // namespace kelvora
