// The person's files: asked for, read and written whole, with a message box when that fails.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "catalogue/Texts.h"
#include "platform/FileDialogs.h"
#include "platform/Files.h"

namespace kelvora {

class UserFiles {
public:
    /// All outlive the object. What is saved goes to `folder` unless the person says otherwise.
    UserFiles(const Texts& texts, Files& files, FileDialogs& dialogs, const std::string& folder)
        : texts_(texts), files_(files), dialogs_(dialogs), folder_(folder)
    {
    }

    const Texts& Words() const { return texts_; }
    Files& OnDisk() const { return files_; }
    FileDialogs& Dialogs() const { return dialogs_; }
    const std::string& Folder() const { return folder_; }

    /// The whole text of a file; nothing, after a message, when it cannot be read.
    std::optional<std::string> Read(const std::string& path) const;

    /// Whether that name may be written to: replacing another file is asked first.
    bool MayWrite(const std::string& path) const;

    /// Puts `content` in the place of the file; shows a message when it cannot be written.
    void Write(const std::string& path, const std::string& content) const;

    /// Writes `text` and a CR LF, and keeps the previous file as its backup; see platform/TextFiles.h. False,
    /// after a message, when it cannot be written.
    bool WriteKeepingBackup(const std::string& path, const std::string& text) const;

    /// Asks for a name, which gets ".txt" where it has no ending, and before another file is replaced; then
    /// writes `text`. `dialogName` names the dialog.
    void SaveTextAs(const MessageId& title, const std::string& dialogName,
                    const std::function<std::string()>& text) const;

private:
    void TellOf(const FileError& error, const MessageId& outcome) const;

    const Texts& texts_;
    Files& files_;
    FileDialogs& dialogs_;
    const std::string& folder_;
};

}  // namespace kelvora
