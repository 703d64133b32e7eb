// File dialogs that answer from a script and remember what was asked.
#pragma once

#include <deque>
#include <vector>

#include "platform/FileDialogs.h"

namespace kelvora {

class FakeFileDialogs final : public FileDialogs {
public:
    std::optional<FileDialogChoice> Open(const FileDialogRequest& request) override { return Ask(request); }
    std::optional<FileDialogChoice> Save(const FileDialogRequest& request) override { return Ask(request); }

    /// Given in turn; after them every dialog is cancelled.
    std::deque<FileDialogChoice> choices;
    std::vector<FileDialogRequest> asked;

private:
    std::optional<FileDialogChoice> Ask(const FileDialogRequest& request)
    {
        asked.push_back(request);
        if (choices.empty())
            return std::nullopt;
        FileDialogChoice choice = choices.front();
        choices.pop_front();
        return choice;
    }
};

}  // namespace kelvora
