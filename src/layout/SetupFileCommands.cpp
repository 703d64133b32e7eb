#include "layout/SetupFileCommands.h"

#include "flash/OwnBackup.h"
#include "platform/Encoding.h"
#include "platform/TextFiles.h"
#include "setup/SetupError.h"
#include "setup/SetupErrorText.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

std::optional<OpenedSetup> OpenSetup(const UserFiles& files, const SetupFile& file)
{
    const auto text = files.Read(file.path);
    if (!text)
        return std::nullopt;
    try {
        return OpenedSetup{ReadSetup(*text), file, DisplayName(file.path)};
    } catch (const SetupError& error) {
        const std::string reason =
            TextFromPath(file.path) + "\r\n" + DescribeSetupError(files.Words().Catalogue(), error);
        if (files.Words().Show(Message::RejectedFile, YesNoStyle, reason) != Answer::Yes)
            return std::nullopt;
        return OpenedSetup{{}, {}, DisplayName(file.path)};
    }
}

std::optional<SetupDocument> ReadOtherSetup(const UserFiles& files, const std::string& path)
{
    const auto text = files.Read(path);
    if (!text)
        return std::nullopt;
    try {
        return ReadSetup(*text);
    } catch (const SetupError& error) {
        files.Words().Tell(TextFromPath(path) + "\r\n" + DescribeSetupError(files.Words().Catalogue(), error),
                           {BoxIcon::Exclamation});
    }
    return std::nullopt;
}

std::optional<bool> SaveKeepingBackup(const UserFiles& files, const std::string& path,
                                      const std::string& text)
{
    if (ReplacesOtherBackup(files.OnDisk(), path) &&
        files.Words().Show(Message::OverwriteBackup, YesNoStyle, TextFromPath(BackupName(path))) !=
            Answer::Yes)
        return std::nullopt;
    return files.WriteKeepingBackup(path, text);
}

std::optional<bool> SaveSetup(const UserFiles& files, const SetupDocument& document, const std::string& path)
{
    return SaveKeepingBackup(files, path, WriteSetup(document.Modules));
}

}  // namespace kelvora
