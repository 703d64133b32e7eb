#include "windows/forms/JournalForms.h"

#include "flash/FlashTexts.h"
#include "flash/TakeFromImage.h"
#include "flash/TransferPlan.h"
#include "layout/forms/frmConfig.h"
#include "platform/Encoding.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "setup/SetupError.h"
#include "setup/SetupErrorText.h"
#include "setup/SetupReader.h"

namespace kelvora {

JournalForms::JournalForms(const SetupDesk& desk, SetupWindows& setups, SetupComparisons& comparisons)
    : desk_(desk), setups_(setups), comparisons_(comparisons)
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
        window_ = new JournalWindow(desk_.notes, desk_.lines, desk_.Words());
        connect(window_, &JournalWindow::openRequested, this, [this](const JournalEntry& entry) {
            if (const auto backup = Read(entry))
                Open(entry, *backup);
        });
        connect(window_, &JournalWindow::comparisonRequested, this, &JournalForms::Compare);
        connect(window_, &JournalWindow::restoreRequested, this, &JournalForms::Restore);
    }
    Refresh();
    BringToFront(*window_);
}

void JournalForms::Refresh()
{
    if (window_)
        window_->ShowSituation(setups_.Active() != nullptr, desk_.operation.IsBusy());
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
        FlashDump dump = ReadDump(desk_.files.OnDisk().Read(path));
        SetupDocument document = ReadDeviceMap(ModulesFor(dump).Known());
        if (!document.Modules.empty())
            return Backup{path, dump, TakeFromImage(std::move(document), dump.image).document};
        why = desk_.Words().Caption(Message::SeriesNoBackup);
    } catch (const FileError& error) {
        why = error.what();
    } catch (const DumpError& error) {
        why = Describe(desk_.Catalogue(), error);
    } catch (const SetupError& error) {
        why = desk_.Words().Word(Message::ExpectedWord) + ExpectedText(desk_.Catalogue(), error);
    }
    desk_.Words().Tell(TextFromPath(path) + "\r\n" + why, {BoxIcon::Exclamation});
    return std::nullopt;
}

frmConfig* JournalForms::Open(const JournalEntry& entry, const Backup& backup)
{
    if (desk_.operation.IsBusy())
        return nullptr;
    frmConfig& setup = setups_.OpenBackup(DisplayName(backup.path), backup.document);
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
