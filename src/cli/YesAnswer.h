// What counts as yes where a question is answered on the terminal.
#pragma once

#include <string_view>

namespace kelvora {

/// Whether the typed line, with its end or without, says yes: "y" or "yes", where `locale` is Italian also
/// "s" or "sì", where it is German "j" or "ja", in letters of any size. Blanks around it do not count.
bool IsYes(std::string_view line, std::string_view locale);

/// The person's locale, such as "it_IT.UTF-8"; empty when none is set.
std::string_view PersonsLocale();

}  // namespace kelvora
