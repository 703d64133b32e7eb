// The commands of the keyboard's flash, and its transfer over the line. Images are plain bytes here.
// Each throws what LineWork::Ask throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "comms/FlashSize.h"
#include "comms/LineWork.h"

namespace kelvora {

/// Bytes of an aligned block that is staged at once.
inline constexpr std::size_t StageBlockSize = 64;

/// Sets the address of the next block to 0 ("000").
void ResetBlockAddress(LineWork& work);

/// Opens the flash ("0FB0"); what was staged is discarded.
void OpenFlash(LineWork& work);

/// Reads the whole flash from the address 0 on ("20" again and again), telling of the progress.
std::string ReadFlash(LineWork& work);

/// The CRC-32 of the flash as it stands ("0F02").
std::uint32_t AskFlashCrc(LineWork& work);

/// Stages StageBlockSize bytes for an address that is a multiple of it ("0FB1" with address and data).
void StageBlock(LineWork& work, std::size_t address, std::string_view bytes);

/// Stages the aligned blocks of `wanted` that `held` has otherwise, telling of the progress. Both are
/// FlashSize bytes, and not the same.
void StageDifferences(LineWork& work, std::string_view held, std::string_view wanted);

/// No more blocks follow ("0FB1").
void EndStaging(LineWork& work);

/// Makes what is staged the flash's content when it then has that CRC-32, and closes the flash ("0FB3" with
/// the CRC); done as well when the flash has it already.
void CommitFlash(LineWork& work, std::uint32_t crc);

/// Closes the flash and discards what is staged ("0FB3").
void CloseFlash(LineWork& work);

}  // namespace kelvora
