#include "layout/FlashTools.h"

#include <variant>

#include "app/FlashTexts.h"
#include "app/ShowMessage.h"
#include "app/TextFiles.h"
#include "app/TransferTexts.h"
#include "layout/LineScan.h"
#include "layout/SetupFileCommands.h"
#include "platform/Encoding.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

// The text writer ends the file with a line of its own.
void SaveDump(SetupSession& session, const FlashDump& dump)
{
    Program& program = session.Shared();
    PosCfg& settings = session.settings;
    const std::string folder = settings.OutInitDir;
    const auto file = GetSaveFlashDumpAs(program, settings, {});
    if (file && !SaveKeepingBackup(program, file->path, FormatFlashDump(dump)).value_or(false))
        settings.OutInitDir = folder;
}

}  // namespace

void DumpSetupImage(SetupSession& session)
{
    const Program& program = session.Shared();
    if (const auto refusal = RefusalFor(session.document)) {
        program.world.prompt.Show(ProductName, Describe(program.catalogue, *refusal), {BoxIcon::Exclamation});
        return;
    }
    const FlashImage* const base = session.BaseImage();
    const FlashImage image = std::get<FlashImage>(BuildSetupImage(session.document, base));
    const DumpSource source =
        session.SourceNow(session.document.DeviceMap, base ? session.deviceSource.terminal : std::string());
    SaveDump(session, DumpOfSetup(image, source, session.File().path));
}

void DumpDeviceImage(SetupSession& session)
{
    if (session.deviceImage)
        SaveDump(session, DumpOfDevice(*session.deviceImage, session.deviceSource));
    else
        session.Shared().Show(Message::NoImageRead, {BoxIcon::Information});
}

std::optional<OpenedDump> OpenDump(SetupSession& session)
{
    Program& program = session.Shared();
    PosCfg& settings = session.settings;
    const auto choice = program.world.fileDialogs.Open({program.catalogue.Caption(Message::RestoreTitle),
                                                        settings.OutInitDir,
                                                        {},
                                                        DumpFilters(program.catalogue),
                                                        settings.OutFilterIndex,
                                                        "cdgFlashDump"});
    if (!choice)
        return std::nullopt;
    settings.OutInitDir = choice->folder;
    settings.OutFilterIndex = static_cast<std::int16_t>(choice->filterIndex);
    const auto text = ReadTextFile(program, choice->path);
    if (!text)
        return std::nullopt;
    try {
        return OpenedDump{choice->path, ReadDump(*text)};
    } catch (const DumpError& error) {
        program.world.prompt.Show(ProductName,
                                  TextFromPath(choice->path) + "\r\n" + Describe(program.catalogue, error),
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
        const std::string text = session.Shared().world.files.Read(path);
        if (WriteSetup(ReadSetup(text).Modules) == WriteSetup(session.document.Modules))
            note.OfFile(path, text);
    } catch (const FileError&) {
        return;
    } catch (const SetupError&) {
        return;
    }
}

TransferResult DownloadFrom(SetupSession& session, const WantedContent& wanted, const LineHooks& hooks,
                            const TransferSteps& steps)
{
    TransferResult result =
        Download(session.Shared().comms, TargetOf(session.settings), hooks, wanted, steps);
    if (result.image)
        session.HoldAsBase(*result.image, result.line);
    return result;
}

VerifyResult VerifyAgainst(SetupSession& session, const LineHooks& hooks)
{
    VerifyResult result = Verify(session.Shared().comms, TargetOf(session.settings), hooks, session.document,
                                 session.BaseImage());
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
