// A setup: the modules of one line and its device map, and the operations that keep the two in step.
//
// Between operations: records stand in the order of their positions, and the device map holds each record's
// device code at its position. A scanned line may have positions without a record (unknown codes).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "setup/ModuleRecord.h"

namespace kelvora {

struct SetupDocument {
    ModuleList Modules;
    std::string DeviceMap;  ///< one character per position on the line, whose code is the device code

    friend bool operator==(const SetupDocument&, const SetupDocument&) = default;
};

/// The index of the first record of that kind.
std::optional<std::size_t> FindModule(const ModuleList& modules, ModuleKind kind);

/// The device codes of the modules that a new module of that kind brings, itself first: a KM096 has its
/// backlight (on) and its code-4 part with it. Empty for what is never added alone (None, parts).
std::string NewDeviceCodes(ModuleKind kind);

/// Appends a module of that device code. False, and nothing changed, when the line is full or the code has
/// no kind.
bool AppendModule(SetupDocument& document, std::uint8_t deviceCode);

/// Inserts a module before the record at `index` (or at the end). A KM096 brings its parts. False,
/// and nothing changed, when they do not all fit or the kind cannot be inserted alone.
bool InsertModule(SetupDocument& document, ModuleKind kind, std::size_t index);

/// Deletes the record at `index`, which is one of them: later records move down one place and one position.
void DeleteRecord(SetupDocument& document, std::size_t index);

/// Removes the module of that kind, if there is one; a KM096 takes its backlight and code-4 part along.
void RemoveModule(SetupDocument& document, ModuleKind kind);

/// Takes the module of that kind out and puts it back before what is then the record at `index` (or at the
/// end), with its key map and options; a KM096 takes its parts along.
void MoveModule(SetupDocument& document, ModuleKind kind, std::size_t index);

/// Gives a record another device code of its kind (the MCR's tracks, the backlight's state) in the record,
/// its options and the device map. Nothing changes when the record's present code is not what the device map
/// first holds at the record's own position.
void ChangeDeviceCode(std::string& deviceMap, ModuleRecord& record, std::uint8_t newCode);

/// The device codes of a scanned line that stand for no kind, in their order.
std::string UnknownDeviceCodes(const SetupDocument& document);

/// The number of the first key of the first module of that kind: 1 + rows x columns of the keyboards
/// (KM096, KM064, ICCR) before it; after all of them when there is none of that kind.
std::int16_t FirstKeyNumber(ModuleKind kind, const ModuleList& modules);

}  // namespace kelvora
