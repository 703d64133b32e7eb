#include "eeprom/WriteQuestion.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "eeprom/IdentityChoices.h"
#include "eeprom/IdentityCopy.h"
#include "platform/TextLines.h"

namespace kelvora {

namespace {

constexpr std::string_view Indent = "    ";
constexpr std::string_view AfterLabel = "  ";
constexpr std::string_view Mark = "^^";

using Blocks = std::array<std::optional<IdentityBlock>, ModuleAddresses>;

Blocks BlocksNow(const ModuleMemory& memory)
{
    Blocks blocks;
    for (std::size_t address = 0; address < blocks.size(); ++address)
        blocks.at(address) = memory.Rows().at(address).block;
    return blocks;
}

// "         ^^ ^^" below the bytes that differ; empty where none does.
std::string Marks(const IdentityBlock& now, const IdentityBlock& wanted)
{
    std::string marks;
    for (std::size_t i = 0; i < now.size(); ++i)
        marks.append(now.at(i) == wanted.at(i) ? std::string(Mark.size(), ' ') : Mark).append(" ");
    const std::size_t last = marks.find_last_not_of(' ');
    return last == std::string::npos ? std::string() : marks.substr(0, last + 1);
}

class Table {
public:
    Table(const ModuleMemory& memory, std::span<const AddressedBlock> blocks,
          const MessageCatalogue& catalogue)
        : catalogue_(catalogue),
          blocks_(blocks),
          now_(catalogue.Caption(Message::EepromNow)),
          wanted_(catalogue.Caption(Message::EepromToBeWritten))
    {
        const std::size_t width = std::max(now_.size(), wanted_.size());
        now_.resize(width, ' ');
        wanted_.resize(width, ' ');
        Blocks after = BlocksNow(memory);
        identitiesNow_ = DecodeIdentities(after);
        for (const auto& [address, block] : blocks)
            after.at(address) = block;
        identitiesAfter_ = DecodeIdentities(after);
    }

    std::string Rows(const AddressedBlock& now) const
    {
        const auto& [address, block] = now;
        const auto wanted = std::ranges::find(blocks_, address, &AddressedBlock::address);
        const bool isWritten = wanted != blocks_.end();
        const std::string marks = isWritten ? Marks(block, wanted->block) : std::string();
        std::string text(marks.empty() ? "  " : "* ");
        text.append(catalogue_.Word(Message::EepromAddressWord)).append(std::to_string(address)).append(": ");
        text.append(Names(address, isWritten)).append(", ");
        text.append(catalogue_.Caption(!isWritten      ? Message::EepromNotWritten
                                       : marks.empty() ? Message::EepromSameBytes
                                                       : Message::EepromChanged));
        text.append(LineEnd).append(BytesRow(now_, BlockText(block)));
        if (isWritten)
            text.append(LineEnd).append(BytesRow(wanted_, BlockText(wanted->block)));
        if (!marks.empty())
            text.append(LineEnd).append(BytesRow(std::string(now_.size(), ' '), marks));
        return text;
    }

private:
    std::string Names(std::size_t address, bool isWritten) const
    {
        const std::string_view now = identitiesNow_.at(address).name;
        const std::string_view after = identitiesAfter_.at(address).name;
        std::string names(now);
        if (isWritten && now != after)
            names.append(" >> ").append(after);
        return names;
    }

    static std::string BytesRow(const std::string& label, const std::string& bytes)
    {
        return std::string(Indent).append(label).append(AfterLabel).append(bytes);
    }

    const MessageCatalogue& catalogue_;
    std::span<const AddressedBlock> blocks_;
    std::string now_;
    std::string wanted_;
    std::vector<DecodedIdentity> identitiesNow_;
    std::vector<DecodedIdentity> identitiesAfter_;
};

}  // namespace

WriteQuestion AskAboutWrite(const ModuleMemory& memory, std::span<const AddressedBlock> blocks,
                            const MessageCatalogue& catalogue, std::span<const std::string> remarks)
{
    WriteQuestion question;
    for (const std::string& remark : remarks)
        if (!remark.empty())
            question.text.append(remark).append(LineEnd);
    question.text.append(catalogue.Caption(Message::EepromAskWriteMore)).append(LineEnd);
    question.text.append(catalogue.Caption(Message::EepromAskWrite));
    const Table table(memory, blocks, catalogue);
    for (const AddressedBlock& now : BlocksRead(memory))
        question.table.append(table.Rows(now)).append(LineEnd);
    question.table.append(LineEnd).append(catalogue.Caption(Message::EepromMarks));
    return question;
}

}  // namespace kelvora
