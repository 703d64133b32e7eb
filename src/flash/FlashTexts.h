// What the flash image's findings say to the user, in the catalogue's language: each one a line.
#pragma once

#include <string>

#include "catalogue/MessageCatalogue.h"
#include "flash/DumpText.h"
#include "flash/ImageDifferences.h"
#include "flash/SetupImage.h"
#include "flash/TakeFromImage.h"

namespace kelvora {

std::string Describe(const MessageCatalogue& catalogue, const BuildRefusal& refusal);
std::string Describe(const MessageCatalogue& catalogue, const TakeNotice& notice);
std::string Describe(const MessageCatalogue& catalogue, const UnheldSetting& unheld);

/// On two lines: that the file is no dump, and which line is wrong.
std::string Describe(const MessageCatalogue& catalogue, const DumpError& error);

std::string Describe(const MessageCatalogue& catalogue, const ImageDifference& difference);

}  // namespace kelvora
