#include "app/Program.h"

#include <algorithm>
#include <utility>

#include "app/ShowMessage.h"
#include "platform/Encoding.h"
#include "platform/LineAddress.h"

namespace kelvora {

namespace {

/// Settings that every port takes.
constexpr std::string_view ProbeSettings = "9600,n,8,1";

std::array<std::unique_ptr<LineLink>, LineCount> MakeLinks(const Platform& world)
{
    std::array<std::unique_ptr<LineLink>, LineCount> links;
    for (std::size_t i = 0; i < links.size(); ++i)
        if (SerialPort* const port = world.ports.at(i))
            links.at(i) = std::make_unique<LineLink>(*port, world.eventLoop);
    return links;
}

}  // namespace

Program::Program(Platform platform, LanguageFolders languageFolders)
    : world(platform),
      folders(std::move(languageFolders)),
      main(SetupMode::New, NextPanelIndex()),
      channels(MakeLinks(platform)),
      comms(platform.eventLoop, {channels[0].get(), channels[1].get(), channels[2].get(), channels[3].get()})
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

bool Program::HasLink() const
{
    return std::ranges::any_of(channels, [](const auto& channel) { return channel != nullptr; });
}

bool Program::IsPortAvailable(int port) const
{
    if (port < 1 || static_cast<std::size_t>(port) > world.ports.size())
        return false;
    SerialPort* const channel = world.ports.at(static_cast<std::size_t>(port) - 1);
    if (!channel || channel->IsOpen() || ParseLineAddress(channel->Device()))
        return channel != nullptr;
    // A port is there when it opens; trying is the only way to know. Settings that it refuses are no reason.
    const std::string settings = channel->Settings();
    channel->SetSettings(ProbeSettings);
    const bool opened = channel->Open();
    if (opened)
        channel->Close();
    channel->SetSettings(settings);
    return opened;
}

OperationNote Program::Begin(const char* operation, int line) const
{
    const SerialPort* const port = world.ports.at(static_cast<std::size_t>(line) - 1);
    return {journal, operation, line, port ? port->Device() : std::string()};
}

void Program::Keep(OperationNote& note)
{
    const std::string problem = note.End();
    if (!problem.empty() && problem != journalProblem_)
        Show(Message::JournalNotKept, {BoxIcon::Exclamation}, problem);
    journalProblem_ = problem;
}

Answer Program::Show(const MessageId& message, BoxStyle style, std::string_view extra) const
{
    const auto id = static_cast<std::int16_t>(message.id);
    // An older catalogue may lack the program's own additions: a question that cannot be read must not be
    // asked.
    if (IsOwnMessage(message.id) && !catalogue.Has(id)) {
        std::string body(message.fallback);
        if (!extra.empty())
            body.append("\r\n").append(extra);
        return world.prompt.Show(ProductName, body, style);
    }
    return ShowMessage(catalogue, world.prompt, 0, id, extra, style);
}

}  // namespace kelvora
