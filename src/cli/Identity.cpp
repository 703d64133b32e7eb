#include "cli/Identity.h"

#include <algorithm>
#include <functional>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/Texts.h"
#include "cli/FlashJson.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "cli/SetupJson.h"
#include "comms/PortTrial.h"
#include "eeprom/IdentityChoices.h"
#include "eeprom/IdentityTexts.h"
#include "eeprom/IdentityWrite.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "platform/Prompt.h"

namespace kelvora {

namespace {

std::string ModuleLine(std::size_t address, const ModuleRow& row, bool json)
{
    const std::string bytes = row.block ? BlockText(*row.block) : std::string();
    if (!json)
        return std::to_string(address) + ": " + (row.block ? bytes : "not read") + "  " +
               std::string(row.identity.name) + "\n";
    nlohmann::ordered_json object;
    object["address"] = address;
    object["identity"] = row.identity.name;
    object["block"] = nullptr;
    if (row.block)
        object["block"] = bytes;
    return object.dump() + "\n";
}

// Message boxes of commands: notices are diagnostics, questions are answered on the terminal.
class ConsolePrompt final : public Prompt {
public:
    // `ask` puts a question to the user, true being Yes; while it is empty every question is answered so.
    ConsolePrompt(Console& console, std::function<bool(const std::string&)> ask)
        : console_(console), ask_(std::move(ask))
    {
    }

    // Any answer but Yes is the box's default.
    Answer Show(std::string_view /*title*/, std::string_view body, BoxStyle style) override
    {
        std::string text = Utf8FromText(body);
        std::erase(text, '\r');
        const bool isQuestion = style.buttons != BoxButtons::Ok;
        if (isQuestion && ask_)
            return ask_(text) ? Answer::Yes : style.defaultAnswer;
        console_.err << DiagnosticLine(text);
        return isQuestion ? Answer::Yes : Answer::Ok;
    }

private:
    Console& console_;
    std::function<bool(const std::string&)> ask_;
};

// One run of the command over an open line.
class IdentityRun {
public:
    IdentityRun(const IdentityRequest& request, const IdentityLine& line, Console& console)
        : request_(request),
          line_(line),
          console_(console),
          prompt_(console, line.ask),
          protocol_(line.port, line.loop, prompt_)
    {
        memory_.isInterrupted = line.stopRequested;
    }
    IdentityRun(const IdentityRun&) = delete;
    IdentityRun& operator=(const IdentityRun&) = delete;
    ~IdentityRun() { protocol_.Close(); }

    int Read() { return Finish(ReadLine()); }

    /// `copy` is the one that the blocks come from, if any: what the line does not hold of it is left out.
    int Write(const std::vector<AddressedBlock>& wanted, const IdentityCopy* copy = nullptr)
    {
        return Finish(WriteLine(wanted, copy));
    }

private:
    // Who reads results is told of a failure there too.
    int Finish(int exitCode)
    {
        if (line_.note) {
            FillEntry(line_.note->Entry(), exitCode);
            EndNote(*line_.note, console_);
        }
        if (request_.json && !isPrinted_)
            Emit(console_, UnreadJson(request_.port, request_.file, why_));
        return exitCode;
    }

    void FillEntry(JournalEntry& entry, int exitCode) const
    {
        using Result = JournalEntry::Result;
        entry.result = exitCode == ExitCode::Done ? Result::Done : Result::Failed;
        if (isStopped_)
            entry.result = Result::Stopped;
        else if (isDeclined_)
            entry.result = Result::Declined;
        entry.message = why_;
        entry.backup = Utf8FromPath(copyPath_);
        entry.modules = IdentityList(memory_);
    }

    int ReadLine()
    {
        if (!Find())
            return ExitCode::Line;
        const bool complete = ReadModules(ReadStops::WhenAsked);
        PrintModules();
        return complete ? ExitCode::Done : ExitCode::Line;
    }

    int WriteLine(const std::vector<AddressedBlock>& wanted, const IdentityCopy* copy)
    {
        if (!Find())
            return ExitCode::Line;
        ReadModules(ReadStops::WhenAsked);
        if (IsStopped())
            return Fail("the work was stopped; nothing was written");
        const auto missing = AddressesNotRead(memory_, wanted);
        const auto blocks = BlocksForTheLine(memory_, wanted);
        if (blocks.empty())
            return Fail((copy ? English(Message::EepromNotOnLine)
                              : "nothing was written: these addresses were not read from this line: ") +
                        AddressList(missing));
        WriteSurroundings surroundings{prompt_,       catalogue_,           line_.files, request_.folder,
                                       request_.port, protocol_.Settings(), LocalTime(), {}};
        surroundings.ask = [this](const WriteQuestion& question) { return Ask(question); };
        if (copy)
            surroundings.remarks = {DescribeCopy(catalogue_, *copy), DescribeLeftOut(catalogue_, missing)};
        const WriteResult result = WriteIdentities(memory_, blocks, surroundings);
        copyPath_ = result.copyPath;
        isDeclined_ = result.outcome == WriteOutcome::Declined;
        if (isDeclined_) {
            const int exitCode =
                Fail(isStopped_ ? "the work was stopped; nothing was written" : "nothing was written");
            return isStopped_ ? exitCode : ExitCode::Rejected;
        }
        if (result.outcome == WriteOutcome::NotSaved) {
            Remember("the copy of the blocks could not be saved; nothing was written");
            return ExitCode::Rejected;
        }
        const int exitCode = TellWritten(result, blocks);
        return missing.empty() ? exitCode : Fail(DescribeLeftOut(catalogue_, missing));
    }

    std::string English(const MessageId& message) const { return catalogue_.Word(message); }

    // The last moment at which a stop is heard: modules that are written are written all.
    bool Ask(const WriteQuestion& question)
    {
        const bool isWanted =
            line_.ask ? prompt_.Show(ProductName, question.table + "\r\n\r\n" + question.text,
                                     {BoxIcon::Exclamation, BoxButtons::YesNo, Answer::No}) == Answer::Yes
                      : Tell(question);
        isStopped_ = IsStopped();
        return isWanted && !isStopped_;
    }

    // Where nobody is asked it still says what it writes: all but the question.
    bool Tell(const WriteQuestion& question)
    {
        const std::size_t end = question.text.rfind("\r\n");
        std::string text = end == std::string::npos ? std::string() : question.text.substr(0, end + 2);
        text = Utf8FromText(text + question.table);
        std::erase(text, '\r');
        console_.err << text << "\n";
        return true;
    }

    int Fail(std::string_view reason)
    {
        console_.err << DiagnosticLine(reason);
        Remember(reason);
        return ExitCode::Line;
    }

    void Remember(std::string_view reason) { why_ += (why_.empty() ? "" : "; ") + std::string(reason); }

    bool Find()
    {
        if (!protocol_.OpenCommsLine()) {
            PortTrial trial = OutcomeOf(line_.port);
            trial.failure = protocol_.Failure();
            Fail(trial.device + ": " + OneLineText(DescribeTrial(catalogue_, trial)));
            return false;
        }
        const SearchOutcome outcome = memory_.FindModules(SearchRepeats::Never);
        if (outcome == SearchOutcome::LineLost)
            TellLost();
        else if (outcome == SearchOutcome::Interrupted)
            isStopped_ = Fail("the search was stopped") != ExitCode::Done;
        else if (outcome == SearchOutcome::NotFound)
            Fail(English(Message::EepromNoModules));
        return outcome == SearchOutcome::Found;
    }

    void TellLost() { Fail(line_.port.Device() + ": " + line_.port.LastError()); }

    bool IsStopped() const { return line_.stopRequested && line_.stopRequested(); }

    bool ReadModules(ReadStops stops)
    {
        const bool complete = memory_.ReadEeprom(stops);
        if (!memory_.HasLine())
            TellLost();
        else if (!complete && stops == ReadStops::WhenAsked && IsStopped())
            Fail("the reading was stopped");
        else if (!complete)
            Fail(English(Message::EepromReadFailed));
        return complete;
    }

    void PrintModules()
    {
        isPrinted_ = true;
        std::string text;
        for (std::size_t address = 0; address < memory_.Count(); ++address)
            text += ModuleLine(address, memory_.Rows().at(address), request_.json);
        Emit(console_, text);
    }

    int TellWritten(const WriteResult& result, const std::vector<AddressedBlock>& blocks)
    {
        console_.err << DiagnosticLine(English(Message::EepromSaved) + " " + result.copyPath);
        if (!result.failed.empty())
            Fail(English(Message::EepromWriteFailed) + ". " + English(Message::EepromFailedAddresses) +
                 AddressList(result.failed));
        ReadModules(ReadStops::Never);
        PrintModules();
        const auto unread = AddressesNotRead(memory_, blocks);
        if (!unread.empty())
            Fail(English(Message::EepromNotReadAgain) + AddressList(unread));
        const auto differ = AddressesThatDiffer(memory_, blocks);
        if (!differ.empty())
            Fail(English(Message::EepromDiffers) + AddressList(differ));
        if (!differ.empty() || !unread.empty())
            return ExitCode::Line;
        if (!result.failed.empty())
            console_.err << DiagnosticLine("read again, the modules hold what was to be written");
        return ExitCode::Done;
    }

    const IdentityRequest& request_;
    const IdentityLine& line_;
    Console& console_;
    // Without texts of its own it speaks English, as all commands do.
    MessageCatalogue catalogue_;
    ConsolePrompt prompt_;
    ModuleProtocol protocol_;
    ModuleMemory memory_{protocol_};
    bool isStopped_ = false;
    bool isDeclined_ = false;
    bool isPrinted_ = false;
    std::string why_;       ///< what has failed so far
    std::string copyPath_;  ///< of the saved copy, where there is one
};

int WriteIdentity(const IdentityRequest& request, const IdentityLine& line, Console& console)
{
    const auto* const identity = std::ranges::find_if(OfferedIdentities, [&](const DeviceIdentity& each) {
        return IsSameButCase(each.name, request.name);
    });
    if (identity == OfferedIdentities.end() || request.address >= WritableAddresses) {
        console.err << DiagnosticLine("expected an address from 0 to 5 and one of " +
                                      NamesThatCanBeWritten());
        return ExitCode::Usage;
    }
    return IdentityRun(request, line, console).Write({{request.address, identity->block}});
}

int RestoreIdentities(const IdentityRequest& request, const IdentityLine& line, Console& console)
{
    std::string why;
    try {
        const IdentityCopy copy = ReadIdentityCopy(line.files.Read(request.file));
        return IdentityRun(request, line, console).Write(copy.blocks, &copy);
    } catch (const FileError& error) {
        why = error.what();
    } catch (const IdentityCopyError& error) {
        why = OneLineText(DescribeCopyError({}, error));
    }
    return Refuse(request.json, request.file, why, console);
}

}  // namespace

std::string NamesThatCanBeWritten()
{
    std::string names;
    for (const DeviceIdentity& identity : OfferedIdentities)
        names.append(names.empty() ? "\"" : ", \"").append(identity.name).append("\"");
    return names;
}

int Identity(const IdentityRequest& request, const IdentityLine& line, Console& console)
{
    switch (request.action) {
        case IdentityRequest::Action::Write:
            return WriteIdentity(request, line, console);
        case IdentityRequest::Action::Restore:
            return RestoreIdentities(request, line, console);
        case IdentityRequest::Action::Read:
            break;
    }
    return IdentityRun(request, line, console).Read();
}

}  // namespace kelvora
