// What addresses and saved copies of identities say to the user, in the catalogue's language.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "catalogue/MessageCatalogue.h"
#include "eeprom/IdentityCopy.h"

namespace kelvora {

/// "0, 2, 3".
std::string AddressList(std::span<const std::size_t> addresses);

/// "KM96CM, LCD": the identities of the modules up to the highest address that answered, as last read.
std::string IdentityList(const ModuleMemory& memory);

/// When and where a copy was saved.
std::string DescribeCopy(const MessageCatalogue& catalogue, const IdentityCopy& copy);

/// The addresses of a copy that cannot be written; empty for none.
std::string DescribeLeftOut(const MessageCatalogue& catalogue, std::span<const std::size_t> addresses);

/// What a rejected copy says to the user: the line, and what was expected there.
std::string DescribeCopyError(const MessageCatalogue& catalogue, const IdentityCopyError& error);

}  // namespace kelvora
