// What the page of the table does: writes the identities that are chosen there, or a saved copy.
#include <QPushButton>

#include "eeprom/IdentityChoices.h"
#include "eeprom/IdentityTexts.h"
#include "eeprom/forms/IdentityRows.h"
#include "eeprom/forms/SavedCopy.h"
#include "eeprom/forms/WizardStatus.h"
#include "eeprom/forms/WriteQuestionDialog.h"
#include "eeprom/forms/frmEeprom.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "platform/TextLines.h"
#include "platform/qt/Text.h"

namespace kelvora {

void frmEeprom::UpdateCommand_Click()
{
    Write(PlanChoices(memory_, rows_->Choices()));
}

void frmEeprom::WriteBackSavedCopy()
{
    if (working_)
        return;
    const auto choice = desk_.files.Dialogs().Open({Text(Message::EepromWriteBackTitle),
                                                    dataFolder_,
                                                    {},
                                                    Text(Message::EepromFilter) + " (*.txt)|*.txt",
                                                    1,
                                                    "cdgOpenIdentities"});
    if (!choice)
        return;
    const auto text = desk_.files.Read(choice->path);
    if (!text)
        return;
    try {
        WriteBack(ReadIdentityCopy(*text));
    } catch (const IdentityCopyError& error) {
        Tell(DescribeCopyError(Catalogue(), error), BoxIcon::Exclamation);
    }
}

void frmEeprom::WriteBack(const IdentityCopy& copy)
{
    const auto leftOut = AddressesNotRead(memory_, copy.blocks);
    const auto blocks = BlocksForTheLine(memory_, copy.blocks);
    if (blocks.empty())
        Tell(desk_.files.Words().Word(Message::EepromNotOnLine) + AddressList(leftOut), BoxIcon::Exclamation);
    else
        Write(blocks, &copy, leftOut);
}

void frmEeprom::Write(std::span<const AddressedBlock> blocks, const IdentityCopy* copy,
                      std::span<const std::size_t> leftOut)
{
    if (working_ || blocks.empty())
        return;
    QPushButton* const pressed = copy ? writeBack_ : update_;
    Ways ways{true, false};
    bool declined = false;
    {
        const Work work(*this);
        WriteSurroundings surroundings{desk_.files.Words().Boxes(),
                                       Catalogue(),
                                       desk_.files.OnDisk(),
                                       dataFolder_,
                                       settings_.CommsPort,
                                       protocol_.Settings(),
                                       LocalTime(),
                                       {},
                                       {},
                                       [this] { ShowCaption(Message::EepromWriting); }};
        surroundings.ask = [this](const WriteQuestion& question) { return Ask(question); };
        if (copy)
            surroundings.remarks = {DescribeCopy(Catalogue(), *copy), DescribeLeftOut(Catalogue(), leftOut)};
        OperationNote note =
            desk_.notes.Begin(copy ? JournalOperation::RestoreIdentities : JournalOperation::WriteIdentities,
                              settings_.CommsPort);
        const WriteResult result = WriteIdentities(memory_, blocks, surroundings);
        declined = result.outcome == WriteOutcome::Declined;
        if (result.outcome == WriteOutcome::Written || result.outcome == WriteOutcome::Failed) {
            saved_->Show(PathToQString(result.copyPath));
            status_->EndProgress();
            // Without the line there is nothing to read again: one message tells all of it.
            std::string lost;
            if (memory_.HasLine()) {
                TellWritten(result, leftOut);
                ReadAgain(blocks, Acknowledged(blocks, result));
            } else {
                if (!result.failed.empty())
                    lost = FailedText(result) + std::string(LineEnd);
                // What was read before the write holds no more.
                memory_.ReadEeprom();
            }
            if (!memory_.HasLine())
                ways =
                    LoseLine(lost + UnknownText(blocks) + std::string(LineEnd) + Text(Message::EepromSaved) +
                             std::string(LineEnd) + TextFromPath(result.copyPath));
        }
        NoteWritten(result, blocks, note);
        desk_.notes.Keep(note);
    }
    Open(ways);
    // After a No the work goes on where it was.
    if (declined)
        pressed->setFocus();
}

bool frmEeprom::Ask(const WriteQuestion& question)
{
    return WriteQuestionDialog(windowTitle(), question, this).exec() == QDialog::Accepted;
}

// What the modules hold counts, not what they have acknowledged.
void frmEeprom::NoteWritten(const WriteResult& result, std::span<const AddressedBlock> blocks,
                            OperationNote& note) const
{
    JournalEntry& entry = note.Entry();
    entry.modules = IdentityList(memory_);
    entry.backup = Utf8FromPath(result.copyPath);
    const bool isTried = result.outcome == WriteOutcome::Written || result.outcome == WriteOutcome::Failed;
    if (result.outcome == WriteOutcome::Declined)
        entry.result = JournalEntry::Result::Declined;
    else if (isTried && memory_.HasLine() && AddressesThatDiffer(memory_, blocks).empty() &&
             AddressesNotRead(memory_, blocks).empty())
        entry.result = JournalEntry::Result::Done;
    if (!result.failed.empty())
        entry.message = "addresses: " + AddressList(result.failed);
}

void frmEeprom::TellWritten(const WriteResult& result, std::span<const std::size_t> leftOut)
{
    const bool isWritten = result.outcome == WriteOutcome::Written;
    std::string text = Text(isWritten ? Message::EepromWritten : Message::EepromWriteFailed);
    text.append(Paragraph).append(Text(isWritten ? Message::EepromShowNew : Message::EepromCheck));
    if (!isWritten)
        text.append(LineEnd).append(FailedText(result));
    if (!leftOut.empty())
        text.append(LineEnd).append(DescribeLeftOut(Catalogue(), leftOut));
    Tell(text, isWritten ? BoxIcon::Information : BoxIcon::Exclamation);
}

std::string frmEeprom::FailedText(const WriteResult& result) const
{
    return desk_.files.Words().Word(Message::EepromFailedAddresses) + AddressList(result.failed);
}

// Of blocks that were to be written: the modules of which nobody knows what they hold now.
std::string frmEeprom::UnknownText(std::span<const AddressedBlock> blocks) const
{
    const auto unread = AddressesNotRead(memory_, blocks);
    return unread.empty() ? std::string()
                          : desk_.files.Words().Word(Message::EepromNotReadAgain) + AddressList(unread);
}

// Shows what the modules hold now, whatever they have acknowledged.
void frmEeprom::ReadAgain(std::span<const AddressedBlock> blocks,
                          std::span<const AddressedBlock> acknowledged)
{
    ReadModules(blocks);
    rows_->Show(memory_);
    if (const auto differ = AddressesThatDiffer(memory_, acknowledged); !differ.empty())
        Tell(desk_.files.Words().Word(Message::EepromDiffers) + AddressList(differ), BoxIcon::Exclamation);
}

}  // namespace kelvora
