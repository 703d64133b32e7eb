#include "flash/OwnBackup.h"

#include "flash/DumpText.h"
#include "platform/Encoding.h"
#include "platform/TextFiles.h"

namespace kelvora {

namespace {

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

bool ReplacesOtherBackup(const Files& files, const std::string& path)
{
    try {
        const TextKind kept = WhatIs(files.Read(BackupName(path)));
        const TextKind old = WhatIs(files.Read(path));
        return kept != TextKind::Other && old != TextKind::Other && kept != old;
    } catch (const FileError&) {
        // One of them is not there, or what keeps it from being read will keep it from being replaced.
        return false;
    }
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

}  // namespace kelvora
