#include "comms/Reply.h"

#include <array>

namespace kelvora {

namespace {

struct TagError {
    std::string_view tag;
    std::uint32_t number;
};

constexpr std::array TagErrors{
    TagError{ReplyTag::Failed, ReplyErrorNumber::Failed},
    TagError{ReplyTag::Status999, ReplyErrorNumber::Status999},
    TagError{ReplyTag::Rejected, ReplyErrorNumber::Rejected},
    TagError{ReplyTag::Status5, ReplyErrorNumber::Status5},
    TagError{ReplyTag::Status3, ReplyErrorNumber::Status3},
    TagError{ReplyTag::DefaultTime, ReplyErrorNumber::Failed},
    TagError{ReplyTag::GaveUp, ReplyErrorNumber::GaveUp},
    TagError{ReplyTag::GivenTime, ReplyErrorNumber::GivenTime},
    TagError{ReplyTag::Malformed, ReplyErrorNumber::Malformed},
    TagError{ReplyTag::Undefined, ReplyErrorNumber::Undefined},
};

constexpr std::array<std::string_view, 6> FlashCommands{"000", "0FB0", "0FB1", "0FB3", "0F02", "20"};

/// "$" and four digits.
constexpr std::size_t LineCommandLength = 5;

constexpr unsigned FieldLengthBase = 32;

}  // namespace

void RaiseForReply(std::string_view reply, std::size_t minimumLength)
{
    if (reply.empty())
        throw ReplyError(ReplyErrorNumber::Undefined, {});
    for (const TagError& error : TagErrors)
        if (reply.starts_with(error.tag))
            throw ReplyError(error.number, std::string(reply.substr(error.tag.size())));
    if (reply.size() < minimumLength)
        throw ReplyError(ReplyErrorNumber::Failed, "the reply is too short");
}

std::string_view CommandName(std::string_view command)
{
    if (command.starts_with('$'))
        return command.substr(0, LineCommandLength);
    for (const std::string_view name : FlashCommands)
        if (command.starts_with(name))
            return name;
    return command;
}

std::optional<std::vector<std::string>> ReplyFields(std::string_view reply, std::string_view name)
{
    std::vector<std::string> fields;
    std::string_view rest = reply.substr(std::min(name.size(), reply.size()));
    while (!rest.empty()) {
        const unsigned code = static_cast<unsigned char>(rest.front());
        rest.remove_prefix(1);
        if (code < FieldLengthBase || code - FieldLengthBase > rest.size())
            return std::nullopt;
        fields.emplace_back(rest.substr(0, code - FieldLengthBase));
        rest.remove_prefix(code - FieldLengthBase);
    }
    return fields;
}

std::string CountedField(std::string_view content)
{
    return static_cast<char>(FieldLengthBase + content.size()) + std::string(content);
}

}  // namespace kelvora
