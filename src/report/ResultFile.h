// What was done with the devices of tills, as files tell it that others have written: one object of a fleet's
// run ("till", "action", "exit", "result", ...), the list that a series saves, or lines of a series or of the
// journal.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

/// Texts are UTF-8.
struct TillResult {
    std::string till;     ///< what the till is called
    std::string action;   ///< "download", "verify", ...
    std::string outcome;  ///< "done", "same", "different", "declined", "stopped", "failed", "not known: ..."
    std::string message;  ///< what happened, in English
    std::chrono::sys_seconds time{};
    bool failed = false;  ///< somebody should look at it
    std::string setup{};  ///< the file that it was done with, where a fleet's run tells it

    friend bool operator==(const TillResult&, const TillResult&) = default;
};

/// The results that a file of that text holds; `changed` is when it was written, for a result that does not
/// say when it was. What only read a device is none. Nothing where no part of the text is of one of those
/// forms.
std::optional<std::vector<TillResult>> ReadResults(std::string_view text, std::chrono::sys_seconds changed);

}  // namespace kelvora
