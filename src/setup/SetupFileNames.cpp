#include "setup/SetupFileNames.h"

#include <utility>

#include "platform/AsciiCase.h"
#include "platform/Encoding.h"

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
    // 0 where there is none.
    return path.rfind('/') + 1;
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

std::optional<SetupFile> AskForSaving(const UserFiles& user, PosCfg& settings, std::string_view current,
                                      const MessageId& title, const std::string& filters,
                                      std::string_view ending, const OpenElsewhere& isOpenElsewhere)
{
    FileDialogRequest request{user.Words().Caption(title), settings.OutInitDir,
                              std::string(current),        filters,
                              settings.OutFilterIndex,     std::string(DialogName(ending))};
    while (auto choice = user.Dialogs().Save(request)) {
        settings.OutInitDir = choice->folder;
        settings.OutFilterIndex = static_cast<std::int16_t>(choice->filterIndex);
        const Files& files = user.OnDisk();
        const std::string path =
            files.Exists(choice->path)
                ? choice->path
                : NameToWrite(files, WithEnding(choice->path, choice->filterIndex, ending));
        if (isOpenElsewhere && isOpenElsewhere(path, current))
            user.Words().Show(Message::OpenElsewhere, {BoxIcon::Exclamation}, TextFromPath(path));
        else if (user.MayWrite(path))
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

std::optional<SetupFile> GetConfigFileName(const UserFiles& files, PosCfg& settings, std::string_view current,
                                           const MessageId& title)
{
    const auto choice = files.Dialogs().Open({files.Words().Caption(title), settings.InInitDir,
                                              std::string(current), SetupFilters(files.Words().Catalogue()),
                                              settings.InFilterIndex, std::string(DialogName(SetupEnding))});
    if (!choice)
        return std::nullopt;
    settings.InInitDir = choice->folder;
    settings.InFilterIndex = static_cast<std::int16_t>(choice->filterIndex);
    return MakeSetupFile(choice->path);
}

std::optional<SetupFile> GetSaveConfigFileAs(const UserFiles& files, PosCfg& settings,
                                             std::string_view current, const OpenElsewhere& isOpenElsewhere)
{
    return AskForSaving(files, settings, current, Message::SaveSetupTitle,
                        SetupFilters(files.Words().Catalogue()), SetupEnding, isOpenElsewhere);
}

std::optional<SetupFile> GetSaveFlashDumpAs(const UserFiles& files, PosCfg& settings,
                                            std::string_view current, const OpenElsewhere& isOpenElsewhere)
{
    return AskForSaving(files, settings, current, Message::SaveDumpTitle,
                        DumpFilters(files.Words().Catalogue()), ".mem", isOpenElsewhere);
}

void CopyDialogFolders(const PosCfg& from, PosCfg& to)
{
    to.InInitDir = from.InInitDir;
    to.InFilterIndex = from.InFilterIndex;
    to.OutInitDir = from.OutInitDir;
    to.OutFilterIndex = from.OutFilterIndex;
}

}  // namespace kelvora
