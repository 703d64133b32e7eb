// What a setup's values and the differences between two setups say to the user, in the catalogue's language.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "catalogue/MessageCatalogue.h"
#include "setup/SetupDifferences.h"

namespace kelvora {

/// The text of an enumerator; `texts` are in the order of its enum.
template <std::size_t Count, class Row>
const MessageId& RowOf(const std::array<MessageId, Count>& texts, Row row)
{
    return texts.at(static_cast<std::size_t>(row));
}

/// Stands between what was and what is.
inline constexpr std::string_view BecomesMark = " -> ";

/// The name of a module as its button bears it; empty for None.
std::string ModuleCaption(const MessageCatalogue& catalogue, ModuleKind kind);

/// What a module is, with the name that stands on it: "Extension Keyboard (KM064)". Empty for what has no
/// button of its own in the strip.
std::string ModuleName(const MessageCatalogue& catalogue, ModuleKind kind);

/// "Slave Keyboard: ", with `mark` behind the name; empty for None.
std::string ModuleHeading(const MessageCatalogue& catalogue, ModuleKind kind, std::string_view mark);

/// "double vertical key"; for one of KeyType.
std::string KeyTypeText(const MessageCatalogue& catalogue, char type);

/// "; (3B)": the character with its hexadecimal code, or the code alone where it cannot be shown.
std::string VisibleSeparator(char separator);

/// The same, or that there is none.
std::string SeparatorText(const MessageCatalogue& catalogue, char separator);

std::string YesOrNo(const MessageCatalogue& catalogue, bool yes);

/// A line: "MCR, tracks read: 1,2 -> 1,2,3".
std::string Describe(const MessageCatalogue& catalogue, const SetupDifference& difference);

/// "fiscal keyboard: yes".
std::string Describe(const MessageCatalogue& catalogue, const ModuleOption& option);

}  // namespace kelvora
