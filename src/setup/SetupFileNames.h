// Asking for the file of a setup or of a dump: filters, folders that are remembered, and the names of files.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/UserFiles.h"
#include "setup/PosCfg.h"

namespace kelvora {

/// The filters of the setup dialogs and of the flash dump dialogs: three pairs of text and pattern.
std::string SetupFilters(const MessageCatalogue& catalogue);
std::string DumpFilters(const MessageCatalogue& catalogue);

/// A file as a window holds it: the path that is opened and written, and the lower-cased FileName.
struct SetupFile {
    std::string path;
    std::string fileName;
};

/// `path` as a window's file.
SetupFile MakeSetupFile(std::string path);

/// The display name of a file: without folder, lower-cased, cut before its first ".".
std::string DisplayName(std::string_view path);

/// Asks for a setup file to open; folder and filter are remembered in `settings`. Nothing on Cancel.
/// `current` is offered unless it is empty.
std::optional<SetupFile> GetConfigFileName(const UserFiles& files, PosCfg& settings, std::string_view current,
                                           const MessageId& title = Message::OpenSetupTitle);

/// Whether a window other than the one of the file `current` holds that file; may be empty.
using OpenElsewhere = std::function<bool(std::string_view path, std::string_view current)>;

/// Ask for a name to save under, in the same way; `current` is the window's file, or the name that it may
/// get. A name that is typed for a new file is lower-cased and gets the filter's ending unless it has one
/// that the dialog knows; replacing another file is asked first, and one that is open elsewhere is refused.
std::optional<SetupFile> GetSaveConfigFileAs(const UserFiles& files, PosCfg& settings,
                                             std::string_view current, const OpenElsewhere& isOpenElsewhere);
std::optional<SetupFile> GetSaveFlashDumpAs(const UserFiles& files, PosCfg& settings,
                                            std::string_view current, const OpenElsewhere& isOpenElsewhere);

/// Copies what the dialogs remember from one settings object to another.
void CopyDialogFolders(const PosCfg& from, PosCfg& to);

}  // namespace kelvora
