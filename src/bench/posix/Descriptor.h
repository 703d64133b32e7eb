// A file descriptor that is closed with its owner.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace kelvora::bench {

class Descriptor {
public:
    Descriptor() = default;
    /// Owns `number`, the result of a call of that name; throws std::system_error when it is negative.
    Descriptor(int number, const char* call) : number_(number)
    {
        if (number < 0)
            throw std::system_error(errno, std::generic_category(), call);
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Number() const { return number_; }
    void Close()
    {
        if (number_ >= 0)
            close(std::exchange(number_, -1));
    }

private:
    int number_ = -1;
};

}  // namespace kelvora::bench
