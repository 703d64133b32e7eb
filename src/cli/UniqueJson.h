// JSON whose objects have each member once: of two of one name nobody knows which is meant.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace kelvora {

/// A text is not the JSON that is wanted; `what()` says what was expected, in UTF-8.
class JsonError : public std::runtime_error {
public:
    JsonError(std::string pointer, const std::string& expected)
        : std::runtime_error(expected), pointer_(std::move(pointer))
    {
    }

    /// The JSON pointer to the value that is wrong; empty for the whole.
    const std::string& Pointer() const { return pointer_; }

private:
    std::string pointer_;
};

/// Throws JsonError for what is no JSON, and for a member that stands there twice.
nlohmann::json ParseUniqueJson(std::string_view text);

}  // namespace kelvora
