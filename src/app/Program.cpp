#include "app/Program.h"

#include <utility>

#include "app/ShowMessage.h"
#include "platform/Encoding.h"

namespace kelvora {

Program::Program(Platform platform, LanguageFolders languageFolders)
    : world(platform), folders(std::move(languageFolders)), main(SetupMode::New, NextPanelIndex())
{
    main.FileName = "Kelvora.dat";
}

bool Program::Load()
{
    auto loaded = LoadLanguage(world.files, world.prompt, folders, main);
    if (!loaded)
        return false;
    TakeCatalogue(*std::move(loaded));
    return true;
}

void Program::TakeCatalogue(MessageCatalogue loaded)
{
    catalogue = std::move(loaded);
    idleText_ = catalogue.Lookup(static_cast<std::int16_t>(Message::Idle.id));
}

bool Program::ChangeLanguage(const std::string& language)
{
    auto loaded = LoadCatalogue(world.files, world.prompt, folders, language);
    if (!loaded)
        return false;
    TakeCatalogue(*std::move(loaded));
    try {
        world.files.Write(PersonalSelectionFile(folders), LanguageSelectionText(language));
    } catch (const FileError& error) {
        Show(Message::LanguageNotKept, {BoxIcon::Exclamation},
             TextFromPath(error.Path()) + "\r\n" + error.what());
    }
    return true;
}

std::vector<std::string> Program::Languages() const
{
    std::vector<std::string> found;
    for (const std::string_view language : {DefaultLanguage, Italian})
        if (world.files.Exists(MessageFile(folders, language)))
            found.emplace_back(language);
    return found;
}

bool Program::IsPortAvailable(int port) const
{
    if (port < 1 || static_cast<std::size_t>(port) > world.ports.size())
        return false;
    SerialPort* const channel = world.ports.at(static_cast<std::size_t>(port) - 1);
    if (!channel || channel->IsOpen())
        return channel != nullptr;
    // A port is there when it opens; trying is the only way to know.
    const bool opened = channel->Open();
    if (opened)
        channel->Close();
    return opened;
}

Answer Program::Show(const MessageId& message, BoxStyle style, std::string_view extra) const
{
    const auto id = static_cast<std::int16_t>(message.id);
    // An older catalogue may lack the program's own additions: a question that cannot be read must not be
    // asked.
    if (message.id >= FirstOwnMessage && !catalogue.Has(id)) {
        std::string body(message.fallback);
        if (!extra.empty())
            body.append("\r\n").append(extra);
        return world.prompt.Show(ProductName, body, style);
    }
    return ShowMessage(catalogue, world.prompt, 0, id, extra, style);
}

}  // namespace kelvora
