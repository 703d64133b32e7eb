#include "series/VerdictSound.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <numbers>

namespace kelvora {

namespace {

constexpr std::uint32_t Rate = 22050;  // samples a second

struct Tone {
    double pitch;  ///< Hz; 0 for silence
    double seconds;
};

void Append(std::string& text, std::uint32_t number, int bytes)
{
    constexpr unsigned Byte = 8;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>((number >> (Byte * static_cast<unsigned>(i))) & 0xFFU);
}

// Soft at both ends: a tone that is cut clicks.
std::string Samples(const Tone& tone)
{
    constexpr double Loudness = 12000;
    constexpr double Fade = 0.01;
    std::string samples;
    const auto count = static_cast<std::uint32_t>(tone.seconds * Rate);
    for (std::uint32_t i = 0; i < count; ++i) {
        const double time = static_cast<double>(i) / Rate;
        const double soft = std::min({1.0, time / Fade, (tone.seconds - time) / Fade});
        const double value = Loudness * soft * std::sin(2 * std::numbers::pi * tone.pitch * time);
        Append(samples, static_cast<std::uint32_t>(static_cast<std::int32_t>(value)), 2);
    }
    return samples;
}

std::string WaveFile(std::initializer_list<Tone> tones)
{
    constexpr std::uint32_t FormatSize = 16;
    constexpr std::uint32_t HeaderSize = 36;
    constexpr std::uint32_t SampleSize = 2;
    std::string samples;
    for (const Tone& tone : tones)
        samples += Samples(tone);
    const auto size = static_cast<std::uint32_t>(samples.size());
    std::string file = "RIFF";
    Append(file, HeaderSize + size, 4);
    file += "WAVEfmt ";
    Append(file, FormatSize, 4);
    Append(file, 1, 2);  // plain samples
    Append(file, 1, 2);  // one channel
    Append(file, Rate, 4);
    Append(file, Rate * SampleSize, 4);
    Append(file, SampleSize, 2);
    Append(file, 8 * SampleSize, 2);
    file += "data";
    Append(file, size, 4);
    return file + samples;
}

}  // namespace

std::string VerdictSound(bool passed)
{
    constexpr double Low = 196;
    constexpr double Middle = 880;
    constexpr double High = 1319;
    if (passed)
        return WaveFile({{Middle, 0.12}, {0, 0.03}, {High, 0.2}});
    return WaveFile({{Low, 0.35}, {0, 0.1}, {Low, 0.35}, {0, 0.1}, {Low, 0.35}});
}

}  // namespace kelvora
