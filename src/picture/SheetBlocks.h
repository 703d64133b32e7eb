// What a setup's sheet says of each module, as blocks that are set one after the other.
#pragma once

#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// A module with what rides on it. Texts are UTF-8.
struct SheetBlock {
    std::string title;
    std::vector<std::string> facts;      ///< its key numbers and options
    const ModuleRecord* grid = nullptr;  ///< of the document; null without keys
    int firstKeyNumber = 0;
};

/// The modules in line order, and a last block for unknown ones. Parts are told with the module before them.
std::vector<SheetBlock> SheetBlocks(const SetupDocument& document, const MessageCatalogue& catalogue);

}  // namespace kelvora
