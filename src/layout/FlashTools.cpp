#include "layout/FlashTools.h"

#include <variant>

#include "app/FlashTexts.h"
#include "app/ShowMessage.h"
#include "app/TextFiles.h"
#include "layout/LineScan.h"
#include "layout/SetupFileCommands.h"
#include "platform/Encoding.h"

namespace kelvora {

namespace {

// The text writer ends the file with a line of its own.
void SaveDump(SetupSession& session, const FlashImage& image)
{
    Program& program = session.Shared();
    PosCfg& settings = session.settings;
    const std::string folder = settings.OutInitDir;
    const auto file = GetSaveFlashDumpAs(program, settings, {});
    if (file && !WriteTextFileWithBackup(program, file->path, FormatDump(0, image)))
        settings.OutInitDir = folder;
}

}  // namespace

void DumpSetupImage(SetupSession& session)
{
    const Program& program = session.Shared();
    const auto built = BuildSetupImage(session.document, session.BaseImage());
    if (const auto* refusal = std::get_if<BuildRefusal>(&built))
        program.world.prompt.Show(ProductName, Describe(program.catalogue, *refusal), {BoxIcon::Exclamation});
    else
        SaveDump(session, std::get<FlashImage>(built));
}

void DumpDeviceImage(SetupSession& session)
{
    if (session.deviceImage)
        SaveDump(session, *session.deviceImage);
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

TransferResult DownloadFrom(SetupSession& session, const WantedContent& wanted, const LineHooks& hooks,
                            const TransferSteps& steps)
{
    TransferResult result =
        Download(session.Shared().comms, TargetOf(session.settings), hooks, wanted, steps);
    if (result.image)
        session.HoldAsBase(*result.image);
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
        session.deviceImage = result.deviceImage;
    else
        session.HoldAsBase(*result.deviceImage);
    return result;
}

}  // namespace kelvora
