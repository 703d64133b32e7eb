// What the tests of the setup formats share.
#pragma once

#include <gmock/gmock.h>

#include <string>

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
    using testing::Property;
    EXPECT_THAT([&] { read(row.text); },
                testing::Throws<SetupError>(testing::AllOf(
                    Property(&SetupError::Number, row.number), Property(&SetupError::Line, row.line),
                    Property(&SetupError::ExpectedHere, row.expected))))
        << row.reason;
}

}  // namespace kelvora
