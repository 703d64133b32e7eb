// What counts as yes where a question is answered on the terminal.
#pragma once

#include <string_view>

namespace kelvora {

/// Whether the typed line, with its end or without, says yes: "y" or "yes", with `isItalian` also "s" or
/// "sì", in letters of any size. Blanks around it do not count.
bool IsYes(std::string_view line, bool isItalian);

/// Whether the person's locale is an Italian one.
bool HasItalianLocale();

}  // namespace kelvora
