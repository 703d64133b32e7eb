// Tagged replies: what a wait on a line gives back. The first two characters are the tag, "§" and a letter;
// an answer to the command that was waited for has none and begins with the command's name, behind which its
// fields stand. A field is a character whose code is 32 + the field's length, then that many characters; the
// first one is the status of the command.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

namespace ReplyTag {
inline constexpr char Mark = '\xA7';  ///< "§"

inline constexpr std::string_view Reply = "\xA7m";  ///< a reply of the terminal
inline constexpr std::string_view Failed =
    "\xA7"
    "e";                                                ///< the command or the line failed
inline constexpr std::string_view Rejected = "\xA7r";   ///< the terminal refused the command; status "2"
inline constexpr std::string_view GaveUp = "\xA7t";     ///< the control gave up waiting
inline constexpr std::string_view Undefined = "\xA7u";  ///< undefined failure
inline constexpr std::string_view DefaultTime =
    "\xA7"
    "c";                                                ///< no reply in the default time
inline constexpr std::string_view GivenTime = "\xA7w";  ///< no reply in the time that the caller gave
inline constexpr std::string_view Status999 = "\xA7l";  ///< status "999"
inline constexpr std::string_view Status3 = "\xA7s";    ///< status "3"
inline constexpr std::string_view Status5 = "\xA7i";    ///< status "5"
inline constexpr std::string_view Malformed = "\xA7x";  ///< its fields do not match its length
}  // namespace ReplyTag

/// Numbers of the errors that replies raise: the object-error base plus an offset, under which the message
/// catalogue has the message.
namespace ReplyErrorNumber {
inline constexpr std::uint32_t Base = 0x80040000;
inline constexpr std::uint32_t Failed = Base + 220;
inline constexpr std::uint32_t NoDevices = Base + 221;  ///< the device map's status is "1"
inline constexpr std::uint32_t Malformed = Base + 223;
inline constexpr std::uint32_t GaveUp = Base + 224;
inline constexpr std::uint32_t GivenTime = Base + 225;
inline constexpr std::uint32_t Status999 = Base + 226;
inline constexpr std::uint32_t Rejected = Base + 227;
inline constexpr std::uint32_t Status5 = Base + 228;
inline constexpr std::uint32_t Status3 = Base + 229;
inline constexpr std::uint32_t Undefined = Base + 290;
}  // namespace ReplyErrorNumber

class ReplyError : public std::runtime_error {
public:
    /// `description` says more than the number; it may be empty.
    ReplyError(std::uint32_t number, const std::string& description)
        : std::runtime_error(description), number_(number)
    {
    }

    std::uint32_t Number() const { return number_; }  ///< one of ReplyErrorNumber

private:
    std::uint32_t number_;
};

/// Throws the ReplyError of a failure's tag; does nothing for any other reply unless it is shorter than
/// `minimumLength`.
void RaiseForReply(std::string_view reply, std::size_t minimumLength);

/// What a command's replies begin with: the command without its parameters ("$9904" of "$9904!3").
std::string_view CommandName(std::string_view command);

/// The fields of a reply to the command of that name; nothing when a count runs past the reply's end.
std::optional<std::vector<std::string>> ReplyFields(std::string_view reply, std::string_view name);

/// A field as it stands in a reply; at most MaximumField characters.
inline constexpr std::size_t MaximumField = 223;
std::string CountedField(std::string_view content);

}  // namespace kelvora
