// The texts of Qt's own buttons and dialogs.
#pragma once

#include <QTranslator>
#include <string>

namespace kelvora {

/// Lets Qt speak the language of that three-letter code (ISO 639-2) through `translator`, which outlives its
/// use; English where Qt does not know it or its texts are not installed.
void TranslateQt(QTranslator& translator, const std::string& code);

}  // namespace kelvora
