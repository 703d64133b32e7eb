// The file dialogs by Qt.
#pragma once

#include "platform/FileDialogs.h"

namespace kelvora {

class QtFileDialogs final : public FileDialogs {
public:
    std::optional<FileDialogChoice> Open(const FileDialogRequest& request) override;
    std::optional<FileDialogChoice> Save(const FileDialogRequest& request) override;
};

}  // namespace kelvora
