// A window's content saved as a text file under a name that the user chooses.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "app/Program.h"

namespace kelvora {

/// Asks for a name, which gets ".txt" where it has no ending, and before another file is replaced; then
/// writes `text`. A file that cannot be written gives a message. `dialogName` names the dialog.
void SaveTextAs(Program& program, const MessageId& title, std::string_view dialogName,
                const std::function<std::string()>& text);

}  // namespace kelvora
