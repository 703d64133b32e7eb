// A file descriptor that is closed with its owner.
#pragma once

#include <unistd.h>

#include <utility>

namespace kelvora {

class Descriptor {
public:
    /// Owns `number`; below 0 there is nothing to close.
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    int Number() const { return number_; }

    /// Closes it now; returns what close(2) does, 0 where there is nothing to close.
    int Close()
    {
        const int number = std::exchange(number_, -1);
        return number < 0 ? 0 : close(number);
    }

private:
    int number_;
};

}  // namespace kelvora
