#include "app/SaveTextAs.h"

#include "app/ShowMessage.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"

namespace kelvora {

namespace {

constexpr int TextFilter = 1;
constexpr std::string_view TextEnding = ".txt";

// With all files to choose from, what stands behind a dot may be any ending.
std::string WithEnding(std::string path, int filterIndex)
{
    const bool hasOne = filterIndex == TextFilter ? LowerCase(path).ends_with(TextEnding)
                                                  : path.find('.', path.rfind('/') + 1) != std::string::npos;
    return hasOne ? path : path.append(TextEnding);
}

bool MayWrite(const Program& program, const std::string& path)
{
    return !program.world.files.Exists(path) ||
           program.Show(Message::Overwrite, YesNoStyle, TextFromPath(path)) == Answer::Yes;
}

}  // namespace

void SaveTextAs(Program& program, const MessageId& title, std::string_view dialogName,
                const std::function<std::string()>& text)
{
    const MessageCatalogue& catalogue = program.catalogue;
    const std::string filters = catalogue.Caption(Message::FilterText) + " (*.txt)|*.txt|" +
                                catalogue.Caption(Message::FilterAll) + " (*.*)|*.*";
    const auto choice = program.world.fileDialogs.Save(
        {catalogue.Caption(title), program.main.OutInitDir, {}, filters, 1, std::string(dialogName)});
    if (!choice)
        return;
    const std::string path = WithEnding(choice->path, choice->filterIndex);
    if (!MayWrite(program, path))
        return;
    try {
        program.world.files.Write(path, text());
    } catch (const FileError& error) {
        program.Show(Message::FileNotWritten, {BoxIcon::Exclamation},
                     TextFromPath(error.Path()) + "\r\n" + error.what());
    }
}

}  // namespace kelvora
