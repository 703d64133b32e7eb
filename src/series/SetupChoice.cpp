#include "series/SetupChoice.h"

#include <vector>

#include "catalogue/OneLineText.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "setup/SetupError.h"
#include "setup/SetupErrorText.h"
#include "setup/SetupReader.h"

namespace kelvora {

namespace {

constexpr std::string_view Extension = ".dat";

std::string WithoutBlanks(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    return text.erase(0, text.find_first_not_of(' '));
}

// In small letters, those of Western Europe too: that is what names have that terminals send.
std::string SmallLetters(std::string text)
{
    constexpr char LeadByte = '\xC3';
    constexpr unsigned TimesSign = 0x97;
    char before = 0;
    for (char& c : text = LowerCase(text)) {
        const unsigned code = static_cast<unsigned char>(c);
        if (before == LeadByte && code >= 0x80 && code <= 0x9E && code != TimesSign)
            c = static_cast<char>(code + 0x20);
        before = c;
    }
    return text;
}

ChosenSetup NoChoice(std::string why)
{
    return {{}, {}, std::nullopt, std::move(why)};
}

}  // namespace

ChosenSetup ReadChosenSetup(const Files& files, const std::string& path)
{
    ChosenSetup setup{path, {}, std::nullopt, {}};
    const std::string name = Utf8FromPath(path);
    try {
        setup.content = files.Read(path);
        setup.document = ReadSetup(setup.content);
    } catch (const FileError& error) {
        setup.why = name + ": " + error.what();
    } catch (const SetupError& error) {
        setup.why = name + ":" + std::to_string(error.Line()) + ": expected " +
                    OneLineText(ExpectedText(MessageCatalogue(), error));
    }
    return setup;
}

ChosenSetup ChooseByName(const Files& files, const std::string& folder, const std::string& terminalName)
{
    const std::string name = Utf8FromText(WithoutBlanks(terminalName));
    if (name.empty())
        return NoChoice("the terminal has no name");
    const std::string wanted = name + std::string(Extension);
    std::vector<std::string> found;
    try {
        found = files.List(folder);
    } catch (const FileError& error) {
        return NoChoice(Utf8FromPath(error.Path()) + ": " + error.what());
    }
    std::erase_if(found, [&](const std::string& file) { return SmallLetters(file) != SmallLetters(wanted); });
    const std::string where = Utf8FromPath(folder) + ": ";
    if (found.empty())
        return NoChoice(where + "no file is named " + wanted);
    if (found.size() > 1)
        return NoChoice(where + "several files are named " + wanted);
    return ReadChosenSetup(files, folder + "/" + found.front());
}

}  // namespace kelvora
