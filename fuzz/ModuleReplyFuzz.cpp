// Any bytes as what a module replies and as a saved copy of identities: data or an error, and blocks that
// read back as they are.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Require.h"
#include "eeprom/IdentityBlock.h"
#include "eeprom/IdentityCopy.h"
#include "eeprom/ModuleFrame.h"

namespace {

using namespace kelvora;

void RequireReply(std::string_view received)
{
    const FramedReply reply = JudgeReply(received);
    if (reply.error == CommsErrorCode::CorruptedPacket) {
        Require(reply.data.empty(), "no data of a corrupted packet");
        return;
    }
    Require(received.size() == reply.data.size() + ModuleFrameOverhead, "the data without its frame");
    Require(received.substr(2, reply.data.size()) == reply.data, "the data as received");
    Require((reply.error == CommsErrorCode::None) == (BuildModuleFrame(reply.data) == received),
            "only a whole frame has no error");
}

// Random bytes are hardly ever a frame.
void RequireFramed(std::string_view data)
{
    if (data.empty())
        return;
    const FramedReply reply = JudgeReply(BuildModuleFrame(data.substr(0, 255)));
    Require(reply.error == CommsErrorCode::None && reply.data == data.substr(0, 255), "a frame reads back");
}

void RequireIdentities(std::string_view bytes)
{
    std::vector<std::optional<IdentityBlock>> blocks;
    for (; bytes.size() >= IdentityBlockSize; bytes.remove_prefix(IdentityBlockSize)) {
        IdentityBlock block{};
        std::copy_n(bytes.begin(), block.size(), block.begin());
        Require(ParseBlock(BlockText(block)) == block, "a block's text reads back");
        blocks.emplace_back(block);
    }
    const auto identities = DecodeIdentities(blocks);
    for (std::size_t i = 0; i < identities.size(); ++i) {
        if (!identities[i].offered)
            continue;
        const DeviceIdentity& identity = OfferedIdentities.at(*identities[i].offered);
        Require(blocks[i]->at(identity.offset) == identity.value, "the identity stands in its block");
    }
}

void RequireCopy(std::string_view text)
{
    try {
        const IdentityCopy copy = ReadIdentityCopy(text);
        Require(!copy.blocks.empty() && copy.blocks.back().address < WritableAddresses, "blocks to write");
        Require(ReadIdentityCopy(WriteIdentityCopy(copy)) == copy, "what is written reads back");
    } catch (const IdentityCopyError& error) {
        Require(error.Line() >= 1, "a line");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    JudgeHandshake(bytes);
    JudgeAcknowledgement(bytes);
    if (!bytes.empty())
        RequireReply(bytes);
    RequireFramed(bytes);
    RequireIdentities(bytes);
    RequireCopy(bytes);
    RequireCopy(std::string("Kelvora module identities\nDate d\nLine l\n0: ").append(bytes));
    return 0;
}
