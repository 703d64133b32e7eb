#include "layout/SetupSession.h"

#include <utility>

#include "app/ShowMessage.h"
#include "layout/ModuleStrip.h"
#include "platform/Encoding.h"

namespace kelvora {

SetupSession::SetupSession(Program& program, const ModuleToolbar* toolbar)
    : settings(program.setupMode, program.NextPanelIndex(), toolbar), program_(program)
{
    settings.CommsPort = program.main.CommsPort;
    // The speed rewrites the port settings, which are therefore copied after it.
    settings.SetBaudRate(program.main.BaudRate());
    settings.PortSettings = program.main.PortSettings;
    settings.ConnectionMode = ConnectionMode::Pos;
    settings.InInitDir = program.main.InInitDir;
    settings.InFilterIndex = program.main.InFilterIndex;
    settings.OutInitDir = program.main.OutInitDir;
    settings.OutFilterIndex = program.main.OutFilterIndex;
}

bool SetupSession::Load(const std::optional<std::string>& path)
{
    switch (settings.SetupMode) {
        case SetupMode::Open:
            return LoadFile(path);
        case SetupMode::Scan:
            settings.Name = "Scanning";
            return true;
        case SetupMode::New:
            break;
    }
    settings.Name = "PosConfiguration" + std::to_string(settings.PanelIndex);
    return true;
}

bool SetupSession::LoadFile(const std::optional<std::string>& path)
{
    const auto file = path ? MakeSetupFile(*path) : GetConfigFileName(program_, settings, file_.path);
    if (!file)
        return false;
    settings.Name = DisplayName(file->path);
    auto opened = OpenSetup(program_, *file);
    if (!opened)
        return false;
    document = std::move(opened->document);
    SetStripPlaces(document.Modules);
    SetFile(opened->file);
    return true;
}

void SetupSession::SetFile(const SetupFile& file)
{
    file_ = file;
    settings.FileName = file.fileName;
}

bool SetupSession::SaveTo(const SetupFile& file)
{
    if (!SaveSetup(program_, document, file.path))
        return false;
    SetFile(file);
    return true;
}

bool SetupSession::Save()
{
    return settings.FileName.empty() ? SaveAs() : SaveTo(file_);
}

bool SetupSession::SaveAs()
{
    const auto file = GetSaveConfigFileAs(program_, settings, file_.path);
    if (!file || !SaveTo(*file))
        return false;
    settings.Name = file->fileName.substr(file->fileName.rfind('/') + 1);
    return true;
}

bool SetupSession::MayClose(bool changed)
{
    if (program_.busy)
        return false;
    if (!changed)
        return true;
    switch (program_.Show(Message::SaveChanges, YesNoCancelStyle, TextFromPath(settings.Name))) {
        case Answer::No:
            return true;
        case Answer::Yes:
            break;
        default:
            return false;
    }
    const auto file = settings.FileName.empty() ? GetSaveConfigFileAs(program_, settings, file_.path)
                                                : std::optional<SetupFile>(file_);
    if (!file)
        return false;
    return SaveTo(*file) || program_.Show(Message::CloseUnsaved, YesNoStyle) == Answer::Yes;
}

bool SetupSession::HandOver(ModuleKind kind)
{
    const auto index = FindModule(document.Modules, kind);
    if (!index)
        return false;
    settings.Xchange =
        document.Modules[*index].KeyMap + static_cast<char>(FirstKeyNumber(kind, document.Modules));
    return true;
}

std::optional<SetupDocument> SetupSession::TakeBack(ModuleKind kind) const
{
    const auto index = FindModule(document.Modules, kind);
    if (!index)
        return std::nullopt;
    const std::string& present = document.Modules[*index].KeyMap;
    const std::string handedOver = present + static_cast<char>(FirstKeyNumber(kind, document.Modules));
    if (settings.Xchange == handedOver || settings.Xchange == present)
        return std::nullopt;
    SetupDocument changed = document;
    changed.Modules[*index].KeyMap = settings.Xchange;
    return changed;
}

}  // namespace kelvora
