#include "eeprom/IdentityTexts.h"

#include <array>

#include "platform/TextLines.h"

namespace kelvora {

namespace {

// In the order of CopyExpected.
constexpr std::array ExpectedTexts{Message::EepromCopyHeader, Message::EepromCopyDate,
                                   Message::EepromCopyLine, Message::EepromCopyBlock,
                                   Message::EepromCopyNextAddress};
static_assert(ExpectedTexts.size() == static_cast<std::size_t>(CopyExpected::NextAddress) + 1);

}  // namespace

std::string AddressList(std::span<const std::size_t> addresses)
{
    std::string text;
    for (const std::size_t address : addresses)
        text.append(text.empty() ? "" : ", ").append(std::to_string(address));
    return text;
}

std::string IdentityList(const ModuleMemory& memory)
{
    std::string names;
    for (std::size_t address = 0; address < memory.Count(); ++address)
        names.append(names.empty() ? "" : ", ").append(memory.Rows().at(address).identity.name);
    return names;
}

std::string DescribeCopy(const MessageCatalogue& catalogue, const IdentityCopy& copy)
{
    return catalogue.Word(Message::EepromCopyOf) + copy.date + ", " + copy.line;
}

std::string DescribeLeftOut(const MessageCatalogue& catalogue, std::span<const std::size_t> addresses)
{
    return addresses.empty() ? std::string()
                             : catalogue.Word(Message::EepromLeftOut) + AddressList(addresses);
}

std::string DescribeCopyError(const MessageCatalogue& catalogue, const IdentityCopyError& error)
{
    std::string text = catalogue.Caption(Message::EepromBadCopy);
    text.append(LineEnd).append(catalogue.Word(Message::LineWord)).append(std::to_string(error.Line()));
    text.append(": ").append(catalogue.Word(Message::ExpectedWord));
    return text + catalogue.Caption(ExpectedTexts.at(static_cast<std::size_t>(error.ExpectedHere())));
}

}  // namespace kelvora
