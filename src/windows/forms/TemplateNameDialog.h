// Asks what a template is to be called.
#pragma once

#include <optional>
#include <string>

#include "catalogue/Texts.h"

class QWidget;

namespace kelvora {

/// Asks until the name can be a template's; nothing when none is given. `offered` and the answer are bytes,
/// as file names are.
std::optional<std::string> AskTemplateName(const Texts& texts, const MessageId& title,
                                           const std::string& offered, QWidget& parent);

}  // namespace kelvora
