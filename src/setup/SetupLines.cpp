#include "setup/SetupLines.h"

#include <algorithm>
#include <array>

#include "platform/AsciiCase.h"
#include "platform/Blanks.h"
#include "setup/SetupError.h"

namespace kelvora {

namespace {

// Editors and transfer programs of the till's world leave these at the end of a text.
constexpr std::string_view EndOfText("\x1A\x03\x00", 3);

// Ends a line that goes on in the next one.
constexpr std::string_view Continuation = " _";

// What each code is read as: capitals of the ASCII letters alone, tabs as blanks.
constexpr std::array<char, 256> ReadAs = [] {
    std::array<char, 256> codes{};
    for (std::size_t code = 0; code < codes.size(); ++code)
        codes[code] = AsciiUpper(static_cast<char>(code));
    codes['\t'] = ' ';
    return codes;
}();

void AppendCapitals(std::string& to, std::string_view text)
{
    const std::size_t old = to.size();
    to.resize(old + text.size());
    std::ranges::transform(text, to.begin() + static_cast<std::string::difference_type>(old),
                           [](char c) { return ReadAs[static_cast<unsigned char>(c)]; });
}

}  // namespace

SetupLines::SetupLines(std::string_view text) : text_(text)
{
    const std::size_t last = text_.find_last_not_of(EndOfText);
    text_ = text_.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

bool SetupLines::ReadRawLine(std::string_view& line)
{
    if (at_ >= text_.size())
        return false;
    ++number_;
    const std::size_t end = std::min(text_.find('\n', at_), text_.size());
    line = text_.substr(at_, end - at_);
    at_ = end + 1;
    // The carriage return of the line's end belongs to no line; any other one has no line feed behind it.
    if (!line.empty() && line.back() == '\r' && end < text_.size())
        line.remove_suffix(1);
    if (line.find('\r') != std::string_view::npos)
        RejectLine(number_, Expected::LineFeed);
    return true;
}

SetupLine SetupLines::Head(std::string_view line)
{
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos)
        RejectLine(number_, Expected::SectionName);
    const std::string_view name = Trim(line.substr(1, close - 1));
    if (name.empty())
        RejectLine(number_, Expected::SectionName);
    AppendCapitals(assembled_, name);
    return {SetupLine::Type::Head, number_, assembled_, {}};
}

SetupLine SetupLines::Keyword()
{
    const std::string_view line = assembled_;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        RejectLine(firstNumber_, Expected::KeyAndValue);
    const std::string_view key = line.substr(0, equals);
    const std::string_view value = line.substr(equals + 1);
    return {SetupLine::Type::Keyword, firstNumber_, key.substr(0, key.find_last_not_of(' ') + 1),
            value.substr(std::min(value.find_first_not_of(' '), value.size()))};
}

SetupLine SetupLines::Next()
{
    assembled_.clear();
    bool continued = false;
    std::string_view line;
    while (ReadRawLine(line)) {
        if (line.empty() || line.front() == ':' || line.front() == '\'')
            continue;
        if (line.front() == '[') {
            if (continued)
                RejectLine(number_, Expected::Continuation);
            return Head(line);
        }
        if (!continued)
            firstNumber_ = number_;
        const std::size_t start = assembled_.size();
        AppendCapitals(assembled_, Trim(line));
        continued = std::string_view(assembled_).substr(start).ends_with(Continuation);
        if (!continued)
            return Keyword();
        assembled_.erase(assembled_.size() - Continuation.size());
    }
    if (continued)
        RejectLine(number_, Expected::Continuation);
    return {};
}

}  // namespace kelvora
