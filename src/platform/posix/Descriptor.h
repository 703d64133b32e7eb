// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>
#include <utility>

namespace kelvora {

class Descriptor {
public:
    Descriptor() = default;
    /// Owns `number`; below 0 there is nothing to close.
    explicit Descriptor(int number) : number_(number) {}
    /// Owns `number`, the result of a call of that name; throws std::system_error when it is negative.
    Descriptor(int number, const char* call) : number_(number)
    {
        if (number < 0)
            throw std::system_error(errno, std::generic_category(), call);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }

    /// Writes all of it. False, with errno, when the system does not take it.
    bool Write(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t count = write(number_, bytes.data(), bytes.size());
            if (count < 0 && errno != EINTR)
                return false;
            bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
        }
        return true;
    }

    /// Closes it now; returns what close(2) does, 0 where there is nothing to close.
    int Close()
    {
        const int number = std::exchange(number_, -1);
        return number < 0 ? 0 : close(number);
    }

private:
    int number_ = -1;
};

}  // namespace kelvora
