// A model's list of matrix codes as indices into its key table: each code is the letter of a matrix line and
// the number of a matrix column ("b12"), and names the contact of one grid position.
#pragma once

#include <string>
#include <string_view>

namespace kelvora {

/// Stands in a position text for a grid position without a contact.
inline constexpr char NoContact = '\xFF';

/// One character per entry of the comma-separated list, whose code is the byte offset of that key in the key
/// table: a block of 16 bytes for each column, 2 for each line in it. An entry of blanks gives NoContact.
/// The text is filled up with NoContact to a multiple of 16 characters. An entry of another form, or one
/// whose offset is not below 255, ends the text before it.
std::string ParseMatrixCodes(std::string_view list);

}  // namespace kelvora
