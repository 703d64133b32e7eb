#include "layout/FlashTools.h"

#include <variant>

#include "flash/FlashTexts.h"
#include "flash/TransferTexts.h"
#include "layout/LineScan.h"
#include "layout/SetupFileCommands.h"
#include "platform/Encoding.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

// The text writer ends the file with a line of its own.
void SaveDump(SetupSession& session, const FlashDump& dump)
{
    const SetupDesk& desk = session.Desk();
    PosCfg& settings = session.settings;
    const std::string folder = settings.OutInitDir;
    const auto file = GetSaveFlashDumpAs(desk.files, settings, {}, desk.isOpenElsewhere);
    if (file && !SaveKeepingBackup(desk.files, file->path, FormatFlashDump(dump)).value_or(false))
        settings.OutInitDir = folder;
}

}  // namespace

void DumpSetupImage(SetupSession& session)
{
    if (const auto refusal = RefusalFor(session.document)) {
        session.Desk().Words().Tell(Describe(session.Desk().Catalogue(), *refusal), {BoxIcon::Exclamation});
        return;
    }
    const FlashImage* const base = session.BaseImage();
    const FlashImage image = std::get<FlashImage>(BuildSetupImage(session.document, base));
    const DumpSource source =
        session.SourceNow(session.document.DeviceMap, base ? session.DeviceSource().terminal : std::string());
    SaveDump(session, DumpOfSetup(image, source, session.File().path));
}

void DumpDeviceImage(SetupSession& session)
{
    if (const FlashImage* const image = session.DeviceImage())
        SaveDump(session, DumpOfDevice(*image, session.DeviceSource()));
    else
        session.Desk().Words().Show(Message::NoImageRead, {BoxIcon::Information});
}

std::optional<OpenedDump> OpenDump(SetupSession& session)
{
    const SetupDesk& desk = session.Desk();
    PosCfg& settings = session.settings;
    const auto choice = desk.files.Dialogs().Open({desk.Words().Caption(Message::RestoreTitle),
                                                   settings.OutInitDir,
                                                   {},
                                                   DumpFilters(desk.Catalogue()),
                                                   settings.OutFilterIndex,
                                                   "cdgFlashDump"});
    if (!choice)
        return std::nullopt;
    settings.OutInitDir = choice->folder;
    settings.OutFilterIndex = static_cast<std::int16_t>(choice->filterIndex);
    const auto text = desk.files.Read(choice->path);
    if (!text)
        return std::nullopt;
    try {
        return OpenedDump{choice->path, ReadDump(*text)};
    } catch (const DumpError& error) {
        desk.Words().Tell(TextFromPath(choice->path) + "\r\n" + Describe(desk.Catalogue(), error),
                          {BoxIcon::Exclamation});
        return std::nullopt;
    }
}

void NoteFile(OperationNote& note, const Files& files, const std::string& path)
{
    note.Entry().file = Utf8FromPath(path);
    try {
        note.OfFile(path, files.Read(path));
    } catch (const FileError&) {
        return;
    }
}

void NoteFile(OperationNote& note, const SetupSession& session)
{
    const std::string& path = session.File().path;
    if (path.empty())
        return;
    try {
        const std::string text = session.Desk().files.OnDisk().Read(path);
        if (const auto held = TryReadSetup(text);
            held && WriteSetup(held->Modules) == WriteSetup(session.document.Modules))
            note.OfFile(path, text);
    } catch (const FileError&) {
        return;
    }
}

TransferResult DownloadFrom(SetupSession& session, const WantedContent& wanted, const LineHooks& hooks,
                            const TransferSteps& steps)
{
    TransferResult result =
        Download(session.Desk().lines.Terminals(), TargetOf(session.settings), hooks, wanted, steps);
    if (result.image)
        session.HoldAsBase(*result.image, result.line);
    return result;
}

VerifyResult VerifyAgainst(SetupSession& session, const LineHooks& hooks)
{
    VerifyResult result = Verify(session.Desk().lines.Terminals(), TargetOf(session.settings), hooks,
                                 session.document, session.BaseImage());
    if (!result.deviceImage)
        return result;
    // A device that has changed is compared with what it held before once more the next time.
    if (result.outcome == VerifyResult::Outcome::Different && session.BaseImage())
        session.HoldAsDevice(*result.deviceImage, result.line);
    else
        session.HoldAsBase(*result.deviceImage, result.line);
    return result;
}

}  // namespace kelvora
