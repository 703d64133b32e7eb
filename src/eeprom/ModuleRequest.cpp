#include "eeprom/ModuleRequest.h"

namespace kelvora {

namespace {

std::string BlockRequest(std::size_t address, char command)
{
    return {static_cast<char>(address), command, static_cast<char>(IdentityBlockAddress >> 8U),
            static_cast<char>(IdentityBlockAddress)};
}

}  // namespace

std::string RequestToIdentify(std::size_t address)
{
    return {static_cast<char>(address), ModuleCommand::Identify};
}

std::string RequestToRead(std::size_t address)
{
    return BlockRequest(address, ModuleCommand::Read) + static_cast<char>(IdentityBlockSize);
}

std::string RequestToWrite(std::size_t address)
{
    return BlockRequest(address, ModuleCommand::Write);
}

}  // namespace kelvora
