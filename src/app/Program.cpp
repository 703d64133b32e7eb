#include "app/Program.h"

#include <utility>

#include "app/ShowMessage.h"

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
    catalogue = *std::move(loaded);
    idleText_ = catalogue.Lookup(static_cast<std::int16_t>(Message::Idle.id));
    return true;
}

Answer Program::Show(const MessageId& message, BoxStyle style, std::string_view extra) const
{
    return ShowMessage(catalogue, world.prompt, 0, static_cast<std::int16_t>(message.id), extra, style);
}

}  // namespace kelvora
