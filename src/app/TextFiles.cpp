#include "app/TextFiles.h"

#include <new>

#include "app/ShowMessage.h"
#include "flash/DumpText.h"
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

enum class TextKind { Setup, Dump, Other };

// What a text is, by its first line that is no comment; it need not be whole.
TextKind WhatIs(std::string_view text)
{
    while (!text.empty() && std::string_view("':\r\n").find(text.front()) != std::string_view::npos) {
        const std::size_t end = text.find('\n');
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    if (text.starts_with(DumpAddress(0)))
        return TextKind::Dump;
    return text.starts_with('[') ? TextKind::Setup : TextKind::Other;
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

bool ReplacesOtherBackup(const Files& files, const std::string& path)
{
    const std::string backup = BackupName(path);
    if (backup == path || !files.Exists(path) || !files.Exists(backup))
        return false;
    try {
        const TextKind kept = WhatIs(files.Read(backup));
        const TextKind old = WhatIs(files.Read(path));
        return kept != TextKind::Other && old != TextKind::Other && kept != old;
    } catch (const FileError&) {
        // What keeps it from being read will keep it from being replaced, or it is no text.
        return false;
    }
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

void RequireOwnBackup(const Files& files, const std::string& path)
{
    if (ReplacesOtherBackup(files, path))
        throw FileError(path, "its backup would replace another file's, " + TextFromPath(BackupName(path)) +
                                  ": move that away, or choose another name");
}

void SaveTextFileUnasked(Files& files, const std::string& path, const std::string& text)
{
    RequireOwnBackup(files, path);
    SaveTextFile(files, path, text);
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
