// What a card shows of a setup file: its modules and their picture, or why it cannot be shown.
#pragma once

#include <string>

#include "catalogue/MessageCatalogue.h"
#include "platform/Files.h"

namespace kelvora {

struct SetupCard {
    enum class State { Whole, Gone, NotRead };

    State state = State::Whole;
    std::string reason{};   ///< why it was not read: the system's words, or what is wrong with its text
    std::string modules{};  ///< "KM096, MCR"; empty for none
    std::string picture{};  ///< of the strip, as SVG text; empty for none
};

/// Looks at the file. What is wrong with it is told in the catalogue's language.
SetupCard ReadSetupCard(const Files& files, const std::string& path, const MessageCatalogue& catalogue);

}  // namespace kelvora
