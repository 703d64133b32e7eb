// Which setup a till of a series gets: one for all, or from a folder the file that bears the terminal's name.
#pragma once

#include <optional>
#include <string>

#include "platform/Files.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// A setup as its file has it; without a document `why` says what is wrong, in UTF-8.
struct ChosenSetup {
    std::string path;
    std::string content;
    std::optional<SetupDocument> document;
    std::string why;
};

/// The setup of that file.
ChosenSetup ReadChosenSetup(const Files& files, const std::string& path);

/// The setup of the file NAME.dat in that folder, whatever its letters' case. `terminalName` is a text of the
/// line; blanks around it do not count. No such file, or several, is no choice.
ChosenSetup ChooseByName(const Files& files, const std::string& folder, const std::string& terminalName);

}  // namespace kelvora
