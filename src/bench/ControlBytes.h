// The control bytes of what the simulated devices speak.
#pragma once

namespace kelvora::bench {

inline constexpr char Soh = '\x01';
inline constexpr char Stx = '\x02';
inline constexpr char Etx = '\x03';
inline constexpr char Enq = '\x05';
inline constexpr char Ack = '\x06';
inline constexpr char Dc1 = '\x11';
inline constexpr char Nak = '\x15';

}  // namespace kelvora::bench
