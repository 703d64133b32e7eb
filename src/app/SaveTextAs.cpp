#include "app/SaveTextAs.h"

#include "app/ShowMessage.h"
#include "platform/Encoding.h"

namespace kelvora {

namespace {

constexpr std::string_view TextEnding = ".txt";

std::string WithEnding(std::string path)
{
    const std::size_t name = path.rfind('/') + 1;
    return path.find('.', name) == std::string::npos ? path.append(TextEnding) : path;
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
    const std::string path = WithEnding(choice->path);
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
