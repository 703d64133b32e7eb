#include "layout/SetupFileCommands.h"

#include <algorithm>
#include <utility>

#include "app/SetupErrorText.h"
#include "app/ShowMessage.h"
#include "app/TextFiles.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

// The second pair of every filter list is the text files.
constexpr int TextFilter = 2;
constexpr std::string_view TextEnding = ".txt";
constexpr std::string_view SetupEnding = ".dat";

std::string_view DialogName(std::string_view ending)
{
    return ending == SetupEnding ? "cdgOpenConfig" : "cdgFlashDump";
}

std::string Filters(const MessageCatalogue& catalogue, const MessageId& first, std::string_view ending)
{
    const std::string own(ending);
    return catalogue.Caption(first) + " (*" + own + ")|*" + own + "|" +
           catalogue.Caption(Message::FilterText) + " (*.txt)|*.txt|" +
           catalogue.Caption(Message::FilterAll) + " (*.*)|*.*";
}

std::size_t NameStart(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? 0 : slash + 1;
}

// A dot in a name begins an ending only where the dialog knows it: "till 2.5" has none.
std::string WithEnding(std::string path, int filterIndex, std::string_view ending)
{
    const std::string name = LowerCase(std::string_view(path).substr(NameStart(path)));
    if (!name.ends_with(ending) && !name.ends_with(TextEnding))
        path += filterIndex == TextFilter ? TextEnding : ending;
    return path;
}

// A file that is there is meant as it is spelt; a new one gets a small-letter name in the folder as it
// stands.
std::string NameToWrite(const Files& files, std::string path)
{
    if (files.Exists(path))
        return path;
    const std::size_t start = NameStart(path);
    return path.substr(0, start) + LowerCase(std::string_view(path).substr(start));
}

std::optional<SetupFile> AskForSaving(Program& program, PosCfg& settings, std::string_view current,
                                      const MessageId& title, const std::string& filters,
                                      std::string_view ending)
{
    FileDialogRequest request{program.catalogue.Caption(title),
                              settings.OutInitDir,
                              std::string(current),
                              filters,
                              settings.OutFilterIndex,
                              std::string(DialogName(ending))};
    while (auto choice = program.world.fileDialogs.Save(request)) {
        settings.OutInitDir = choice->folder;
        settings.OutFilterIndex = static_cast<std::int16_t>(choice->filterIndex);
        const Files& files = program.world.files;
        const std::string path =
            files.Exists(choice->path)
                ? choice->path
                : NameToWrite(files, WithEnding(choice->path, choice->filterIndex, ending));
        if (program.isOpenElsewhere && program.isOpenElsewhere(path, current))
            program.Show(Message::OpenElsewhere, {BoxIcon::Exclamation}, TextFromPath(path));
        else if (!files.Exists(path) ||
                 program.Show(Message::Overwrite, YesNoStyle, TextFromPath(path)) == Answer::Yes)
            return MakeSetupFile(path);
        // Not that one: ask for another name.
        request.folder = choice->folder;
        request.offeredName = path;
        request.filterIndex = choice->filterIndex;
    }
    return std::nullopt;
}

}  // namespace

std::string SetupFilters(const MessageCatalogue& catalogue)
{
    return Filters(catalogue, Message::FilterSetup, ".dat");
}

std::string DumpFilters(const MessageCatalogue& catalogue)
{
    return Filters(catalogue, Message::FilterDump, ".mem");
}

SetupFile MakeSetupFile(std::string path)
{
    std::string fileName = LowerCase(path);
    return {std::move(path), std::move(fileName)};
}

std::string DisplayName(std::string_view path)
{
    const std::string name = LowerCase(path.substr(NameStart(path)));
    return name.substr(0, name.find('.'));
}

std::optional<SetupFile> GetConfigFileName(Program& program, PosCfg& settings, std::string_view current,
                                           const MessageId& title)
{
    const auto choice = program.world.fileDialogs.Open(
        {program.catalogue.Caption(title), settings.InInitDir, std::string(current),
         SetupFilters(program.catalogue), settings.InFilterIndex, std::string(DialogName(SetupEnding))});
    if (!choice)
        return std::nullopt;
    settings.InInitDir = choice->folder;
    settings.InFilterIndex = static_cast<std::int16_t>(choice->filterIndex);
    return MakeSetupFile(choice->path);
}

std::optional<SetupFile> GetSaveConfigFileAs(Program& program, PosCfg& settings, std::string_view current)
{
    return AskForSaving(program, settings, current, Message::SaveSetupTitle, SetupFilters(program.catalogue),
                        SetupEnding);
}

std::optional<SetupFile> GetSaveFlashDumpAs(Program& program, PosCfg& settings, std::string_view current)
{
    return AskForSaving(program, settings, current, Message::SaveDumpTitle, DumpFilters(program.catalogue),
                        ".mem");
}

void CopyDialogFolders(const PosCfg& from, PosCfg& to)
{
    to.InInitDir = from.InInitDir;
    to.InFilterIndex = from.InFilterIndex;
    to.OutInitDir = from.OutInitDir;
    to.OutFilterIndex = from.OutFilterIndex;
}

std::optional<OpenedSetup> OpenSetup(Program& program, const SetupFile& file)
{
    const auto text = ReadTextFile(program, file.path);
    if (!text)
        return std::nullopt;
    try {
        return OpenedSetup{ReadSetup(*text), file, DisplayName(file.path)};
    } catch (const SetupError& error) {
        const std::string reason =
            TextFromPath(file.path) + "\r\n" + DescribeSetupError(program.catalogue, error);
        if (program.Show(Message::RejectedFile, YesNoStyle, reason) != Answer::Yes)
            return std::nullopt;
        return OpenedSetup{{}, {}, DisplayName(file.path)};
    }
}

std::optional<SetupDocument> ReadOtherSetup(Program& program, const std::string& path)
{
    const auto text = ReadTextFile(program, path);
    if (!text)
        return std::nullopt;
    try {
        return ReadSetup(*text);
    } catch (const SetupError& error) {
        program.world.prompt.Show(ProductName,
                                  TextFromPath(path) + "\r\n" + DescribeSetupError(program.catalogue, error),
                                  {BoxIcon::Exclamation});
    }
    return std::nullopt;
}

std::optional<bool> SaveKeepingBackup(Program& program, const std::string& path, const std::string& text)
{
    const Platform& world = program.world;
    if (ReplacesOtherBackup(world.files, path) &&
        program.Show(Message::OverwriteBackup, YesNoStyle, TextFromPath(BackupName(path))) != Answer::Yes)
        return std::nullopt;
    return WriteTextFileWithBackup(program, path, text);
}

std::optional<bool> SaveSetup(Program& program, const SetupDocument& document, const std::string& path)
{
    return SaveKeepingBackup(program, path, WriteSetup(document.Modules));
}

}  // namespace kelvora
