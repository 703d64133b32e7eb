// The dialogs that ask for a file to open or for a name to save under.
#pragma once

#include <optional>
#include <string>

namespace kelvora {

struct FileDialogRequest {
    std::string title;
    std::string folder;       ///< where to start; empty for the dialog's own choice
    std::string offeredName;  ///< name or path offered; empty for none
    std::string filters;      ///< "text (*.dat)|*.dat|text (*.txt)|*.txt|..."
    int filterIndex = 1;      ///< counts from 1
    std::string name{};       ///< of the dialog itself, for tests and assistive technology
};

struct FileDialogChoice {
    std::string path;     ///< as chosen or typed, with its folder; nothing appended yet
    std::string folder;   ///< the folder of `path`
    int filterIndex = 1;  ///< the filter that was in force at OK; counts from 1
};

class FileDialogs {
public:
    virtual ~FileDialogs() = default;

    /// Asks for an existing file; nothing on Cancel.
    virtual std::optional<FileDialogChoice> Open(const FileDialogRequest& request) = 0;

    /// Asks for a name to write to; nothing on Cancel. Does not ask about overwriting.
    virtual std::optional<FileDialogChoice> Save(const FileDialogRequest& request) = 0;
};

}  // namespace kelvora
