#include "catalogue/UserFiles.h"

#include <new>

#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "platform/TextFiles.h"

namespace kelvora {

namespace {

constexpr int TextFilter = 1;
constexpr std::string_view TextEnding = ".txt";

// With all files to choose from, what stands behind a dot may be any ending.
std::string WithEnding(std::string path, int filterIndex)
{
    const bool hasOne = filterIndex == TextFilter ? LowerCase(path).ends_with(TextEnding)
                                                  : path.find('.', path.rfind('/') + 1) != std::string::npos;
    return hasOne ? path : path.append(TextEnding);
}

}  // namespace

// Which file, why, and what did not come of it.
void UserFiles::TellOf(const FileError& error, const MessageId& outcome) const
{
    texts_.Tell(
        "File " + TextFromPath(error.Path()) + "\r\n" + error.what() + "\r\n\r\n" + texts_.Caption(outcome),
        {BoxIcon::Exclamation});
}

std::optional<std::string> UserFiles::Read(const std::string& path) const
{
    try {
        return files_.Read(path);
    } catch (const FileError& error) {
        TellOf(error, Message::FileNotOpened);
    } catch (const std::bad_alloc&) {
        TellOf(FileError(path, "Cannot allocate memory"), Message::FileNotOpened);
    }
    return std::nullopt;
}

bool UserFiles::MayWrite(const std::string& path) const
{
    return !files_.Exists(path) ||
           texts_.Show(Message::Overwrite, YesNoStyle, TextFromPath(path)) == Answer::Yes;
}

void UserFiles::Write(const std::string& path, const std::string& content) const
{
    try {
        files_.Write(path, content);
    } catch (const FileError& error) {
        texts_.TellOf(Message::FileNotWritten, error);
    }
}

bool UserFiles::WriteKeepingBackup(const std::string& path, const std::string& text) const
{
    try {
        SaveTextFile(files_, path, text);
        return true;
    } catch (const FileError& error) {
        TellOf(error, Message::FileNotSaved);
        return false;
    }
}

void UserFiles::SaveTextAs(const MessageId& title, const std::string& dialogName,
                           const std::function<std::string()>& text) const
{
    const std::string filters = texts_.Caption(Message::FilterText) + " (*.txt)|*.txt|" +
                                texts_.Caption(Message::FilterAll) + " (*.*)|*.*";
    const auto choice = dialogs_.Save({texts_.Caption(title), folder_, {}, filters, 1, dialogName});
    if (!choice)
        return;
    const std::string path = WithEnding(choice->path, choice->filterIndex);
    if (MayWrite(path))
        Write(path, text());
}

}  // namespace kelvora
