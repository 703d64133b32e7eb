#include "layout/SetupSession.h"

#include <utility>

#include "flash/KeyTables.h"
#include "picture/ModuleStrip.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

/// The name of a window that waits for its scan.
constexpr std::string_view ScanningName = "Scanning";

}  // namespace

SetupSession::SetupSession(SetupDesk& desk, SetupMode mode, const ModuleToolbar* toolbar)
    : settings(mode, desk.nextPanelIndex++, toolbar), desk_(desk)
{
    settings.CommsPort = desk.defaults.CommsPort;
    // The speed rewrites the port settings, which are therefore copied after it.
    settings.SetBaudRate(desk.defaults.BaudRate());
    settings.PortSettings = desk.defaults.PortSettings;
    settings.ConnectionMode = ConnectionMode::Pos;
    CopyDialogFolders(desk.defaults, settings);
}

void SetupSession::Load(std::optional<OpenedSetup> opened)
{
    if (opened) {
        document = std::move(opened->document);
        SetStripPlaces(document.Modules);
        SetFile(opened->file);
        saved_ = WriteSetup(document.Modules);
        settings.Name = opened->name;
    } else if (settings.SetupMode == SetupMode::Scan) {
        StartScanning();
    } else {
        settings.Name = "PosConfiguration" + std::to_string(settings.PanelIndex);
    }
}

bool SetupSession::IsScanning() const
{
    return settings.Name == ScanningName;
}

void SetupSession::StartScanning()
{
    settings.Name = ScanningName;
}

ScanOutcome SetupSession::Scan(const LineHooks& hooks)
{
    ScanOutcome outcome = ScanLine(desk_.lines.Terminals(), TargetOf(settings), hooks);
    HoldAs({{},
            "PosConfiguration " + std::to_string(settings.PanelIndex),
            outcome.image,
            SourceNow(outcome.line.deviceMap, outcome.line.terminalName),
            outcome.image});
    return outcome;
}

DumpSource SetupSession::SourceNow(std::string deviceMap, std::string terminal) const
{
    return {{settings.CommsPort, LocalTime()}, std::move(deviceMap), std::move(terminal)};
}

void SetupSession::HoldAsDevice(const FlashImage& image, const LineResult& line)
{
    DumpSource source = SourceNow(line.deviceMap, line.terminalName);
    // A line that was not asked for its modules is the one that it was, unless the image names others.
    const bool isSameLine =
        source.deviceMap.empty() && IsFromHere() &&
        (!NamesModules(image) || HaveSameMainModules(deviceSource_.deviceMap, DeviceCodesOf(image)));
    if (isSameLine) {
        source.deviceMap = deviceSource_.deviceMap;
        source.terminal = deviceSource_.terminal;
    }
    // Both images have one source.
    if (!IsFromHere())
        baseImage_.reset();
    deviceImage_ = image;
    deviceSource_ = std::move(source);
}

void SetupSession::HoldAsBase(const FlashImage& image, const LineResult& line)
{
    HoldAsDevice(image, line);
    baseImage_ = image;
}

void SetupSession::HoldAs(const WindowFile& file)
{
    SetFile(file.file);
    saved_ = file.saved;
    settings.Name = file.name;
    deviceImage_ = file.image;
    deviceSource_ = file.source;
    baseImage_ = file.base;
}

void SetupSession::SetFile(const SetupFile& file)
{
    file_ = file;
    settings.FileName = file.fileName;
}

std::optional<bool> SetupSession::SaveTo(const SetupFile& file)
{
    const auto written = SaveSetup(desk_.files, document, file.path);
    if (!written.value_or(false))
        return written;
    // Under a new name the window bears the file's own.
    if (file.path != file_.path)
        settings.Name = file.fileName.substr(file.fileName.rfind('/') + 1);
    SetFile(file);
    saved_ = WriteSetup(document.Modules);
    return written;
}

// Whether it was written; nothing when no name was given or its backup was not to be replaced.
std::optional<bool> SetupSession::Write(bool asksForName)
{
    if (!asksForName)
        return SaveTo(file_);
    const std::string folder = settings.OutInitDir;
    const auto file = GetSaveConfigFileAs(
        desk_.files, settings, file_.path.empty() ? settings.Name : file_.path, desk_.isOpenElsewhere);
    if (!file)
        return std::nullopt;
    const auto written = SaveTo(*file);
    // Where nothing can be written is no place to begin the next time.
    if (!written.value_or(false))
        settings.OutInitDir = folder;
    return written;
}

bool SetupSession::Save()
{
    return Write(settings.FileName.empty()).value_or(false);
}

bool SetupSession::SaveAs()
{
    return Write(true).value_or(false);
}

Closing SetupSession::AskToClose(bool changed)
{
    if (desk_.operation.IsBusy())
        return Closing::Stay;
    if (!changed)
        return Closing::Unsaved;
    switch (desk_.Words().Show(Message::SaveChanges, YesNoCancelStyle, TextFromPath(settings.Name))) {
        case Answer::No:
            return Closing::Unsaved;
        case Answer::Yes:
            break;
        default:
            return Closing::Stay;
    }
    const auto written = Write(settings.FileName.empty());
    if (!written)
        return Closing::Stay;
    if (*written)
        return Closing::Saved;
    return desk_.Words().Show(Message::CloseUnsaved, YesNoStyle) == Answer::Yes ? Closing::Unsaved
                                                                                : Closing::Stay;
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

std::optional<SetupDocument> SetupSession::WithKeyMap(ModuleKind kind, const std::string& map) const
{
    const auto index = FindModule(document.Modules, kind);
    if (!index || document.Modules[*index].KeyMap == map)
        return std::nullopt;
    SetupDocument changed = document;
    changed.Modules[*index].KeyMap = map;
    return changed;
}

}  // namespace kelvora
