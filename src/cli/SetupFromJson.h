// A setup from the JSON that "show --json" prints. The shape is told in data/setup.schema.json; what may
// stand in it is what a setup file may hold, and judged by its reader.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "setup/SetupDocument.h"

namespace kelvora {

/// What the JSON of a setup calls its shape: where the schema is installed.
inline constexpr const char* SetupSchema = "file:///opt/kelvora/share/setup.schema.json";

/// A text is no setup; `what()` says what was expected, in UTF-8.
class SetupJsonError : public std::runtime_error {
public:
    SetupJsonError(std::string pointer, const std::string& expected)
        : std::runtime_error(expected), pointer_(std::move(pointer))
    {
    }

    /// The JSON pointer to the value that is wrong; empty for the whole.
    const std::string& Pointer() const { return pointer_; }

private:
    std::string pointer_;
};

/// Members that follow from others may be missing; those that are there must agree. Throws SetupJsonError.
SetupDocument SetupFromJson(std::string_view text);

}  // namespace kelvora
