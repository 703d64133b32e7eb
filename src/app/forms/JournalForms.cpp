#include "app/forms/JournalForms.h"

#include "app/FlashTexts.h"
#include "app/SetupErrorText.h"
#include "app/ShowMessage.h"
#include "flash/TakeFromImage.h"
#include "flash/TransferPlan.h"
#include "layout/forms/frmConfig.h"
#include "platform/Encoding.h"
#include "platform/qt/Text.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"

namespace kelvora {

JournalForms::JournalForms(Program& program, SetupWindows& setups, SetupComparisons& comparisons)
    : program_(program), setups_(setups), comparisons_(comparisons)
{
}

JournalForms::~JournalForms()
{
    delete window_;
}

void JournalForms::Show()
{
    if (window_) {
        window_->Reload();
    } else {
        window_ = new JournalWindow(program_);
        window_->onOpen = [this](const JournalEntry& entry) {
            if (const auto backup = Read(entry))
                Open(entry, *backup);
        };
        window_->onCompare = [this](const JournalEntry& entry) { Compare(entry); };
        window_->onRestore = [this](const JournalEntry& entry) { Restore(entry); };
    }
    Refresh();
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void JournalForms::Refresh()
{
    if (window_)
        window_->ShowSituation(setups_.Active() != nullptr, program_.busy);
}

void JournalForms::Retranslate()
{
    if (window_)
        window_->Retranslate();
}

// As the setup that the device held. A message when the file is gone, damaged, or names no modules.
std::optional<JournalForms::Backup> JournalForms::Read(const JournalEntry& entry)
{
    const std::string& path = entry.backup;
    std::string why;
    try {
        FlashDump dump = ReadDump(program_.world.files.Read(path));
        SetupDocument document = ReadDeviceMap(ModulesFor(dump).Known());
        if (!document.Modules.empty())
            return Backup{path, dump, TakeFromImage(std::move(document), dump.image).document};
        why = program_.catalogue.Caption(Message::SeriesNoBackup);
    } catch (const FileError& error) {
        why = error.what();
    } catch (const DumpError& error) {
        why = Describe(program_.catalogue, error);
    } catch (const SetupError& error) {
        why = program_.catalogue.Word(Message::ExpectedWord) + ExpectedText(program_.catalogue, error);
    }
    program_.world.prompt.Show(ProductName, TextFromPath(path) + "\r\n" + why, {BoxIcon::Exclamation});
    return std::nullopt;
}

frmConfig* JournalForms::Open(const JournalEntry& entry, const Backup& backup)
{
    if (program_.busy)
        return nullptr;
    frmConfig& setup = setups_.OpenBackup(DisplayName(backup.path), backup.document, backup.dump.image);
    if (entry.line >= 1)
        setup.SelectPort(static_cast<std::int16_t>(entry.line));
    setup.window()->activateWindow();
    return &setup;
}

void JournalForms::Compare(const JournalEntry& entry)
{
    frmConfig* const setup = setups_.Active();
    const auto backup = Read(entry);
    if (setup && backup)
        comparisons_.Compare(*setup, {PathToQString(backup->path), backup->document});
}

// In a window of its own, so that what is written can be looked at, on the line that it came from.
void JournalForms::Restore(const JournalEntry& entry)
{
    const auto backup = Read(entry);
    if (frmConfig* const setup = backup ? Open(entry, *backup) : nullptr)
        setup->Flash().RestoreLater(backup->dump, TextFromPath(backup->path), backup->path);
}

}  // namespace kelvora
