// A command line as data: its commands, options and arguments with their texts. Taken from what the programs
// themselves parse, so that the manual pages and the completions made from it tell neither more nor less.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kelvora::manual {

/// What may stand for a value, so that a shell can offer it.
enum class ValueKind { Unknown, AnyFile, Folder, SetupFile, DumpFile, PictureFile, PageFile, Line, Choice };

/// An option, or an argument where it has no names.
struct OptionText {
    std::vector<std::string> names{};    ///< with their dashes, the short one first
    std::string value{};                 ///< what stands for the value in the help; empty for a flag
    std::string help{};                  ///< without a full stop at its end
    std::vector<std::string> choices{};  ///< all that the value may be, for a ValueKind::Choice
    ValueKind kind = ValueKind::Unknown;
    bool isRequired = false;
    bool isRepeated = false;  ///< may be given more than once
};

struct CommandText {
    std::string path{};     ///< "kelvora-cli identity read"
    std::string summary{};  ///< what it does, without a full stop at its end
    std::vector<OptionText> options{};
    std::vector<OptionText> arguments{};
    std::vector<CommandText> commands{};  ///< below this one

    /// The last word of the path.
    std::string Name() const;
};

/// `app` with all its commands, in their order; hidden options are left out.
CommandText Describe(const CLI::App& app);

/// The program with the windows; its options stand in ports/StartOptions.h.
CommandText DescribeWindows();

}  // namespace kelvora::manual
