#include "app/TextFiles.h"

#include <new>

#include "app/ShowMessage.h"
#include "platform/Encoding.h"

namespace kelvora {

namespace {

// Which file, why, and what did not come of it.
void ShowFileError(const Program& program, const FileError& error, const MessageId& outcome)
{
    program.world.prompt.Show(ProductName,
                              "File " + TextFromPath(error.Path()) + "\r\n" + error.what() + "\r\n\r\n" +
                                  program.catalogue.Caption(outcome),
                              {BoxIcon::Exclamation});
}

}  // namespace

std::string BackupName(const std::string& path)
{
    // "\" and ":" part folders in names that come from the till's world.
    const std::size_t folderEnd = path.find_last_of("/\\:");
    const std::size_t nameStart = folderEnd == std::string::npos ? 0 : folderEnd + 1;
    const std::size_t dot = path.rfind('.');
    return (dot == std::string::npos || dot < nameStart ? path : path.substr(0, dot)) + ".bak";
}

std::optional<std::string> ReadTextFile(const Program& program, const std::string& path)
{
    try {
        return program.world.files.Read(path);
    } catch (const FileError& error) {
        ShowFileError(program, error, Message::FileNotOpened);
    } catch (const std::bad_alloc&) {
        ShowFileError(program, FileError(path, "Cannot allocate memory"), Message::FileNotOpened);
    }
    return std::nullopt;
}

void SaveTextFile(Files& files, const std::string& path, const std::string& text)
{
    const std::string backup = BackupName(path);
    if (backup != path && files.Exists(path)) {
        try {
            files.Copy(path, backup);
        } catch (const FileError& error) {
            if (error.Path() == path)
                throw;
            // The user has named the file, not its backup.
            throw FileError(path,
                            "its backup cannot be written, " + TextFromPath(backup) + ": " + error.what());
        }
    }
    files.Write(path, text + "\r\n");
}

bool WriteTextFileWithBackup(Program& program, const std::string& path, const std::string& text)
{
    try {
        SaveTextFile(program.world.files, path, text);
        return true;
    } catch (const FileError& error) {
        ShowFileError(program, error, Message::FileNotSaved);
        return false;
    }
}

}  // namespace kelvora
