// What the tests of the setup formats share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "setup/SetupDocument.h"
#include "setup/SetupError.h"

namespace kelvora {

/// A setup in one line: each module's position, device code and options.
inline std::string Summary(const SetupDocument& document)
{
    std::string text;
    for (const ModuleRecord& record : document.Modules)
        text += std::to_string(record.Position) + ":" + std::to_string(record.DeviceCode) + "(" +
                record.Options + ")";
    return text;
}

struct Rejection {
    std::string reason, text;
    std::size_t line;
    Expected expected;
    std::uint32_t number = 0x80040107;
};

/// Fails unless `read` raises the error of the row for the row's text.
template <class Read>
void ExpectRejected(const Rejection& row, Read read)
{
    SCOPED_TRACE(row.reason);
    try {
        read(row.text);
        ADD_FAILURE() << "was accepted";
    } catch (const SetupError& error) {
        EXPECT_EQ(error.Number(), row.number);
        EXPECT_EQ(error.Line(), row.line);
        EXPECT_EQ(error.ExpectedHere(), row.expected);
    }
}

}  // namespace kelvora
