#include "cli/Verdict.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <new>
#include <system_error>
#include <utility>

#include "platform/posix/PosixFiles.h"
#include "setup/SetupError.h"
#include "setup/SetupErrorText.h"
#include "setup/SetupReader.h"

namespace kelvora {

namespace {

std::string ExpectationText(const SetupError& error)
{
    // Without a message file: the results of a command read the same on every machine.
    static const MessageCatalogue English;
    return "expected " + ExpectedText(English, error);
}

Refusal RefusalOf(const std::string& path, const Verdict& verdict)
{
    if (verdict.outcome == Verdict::Outcome::Unreadable)
        return FailureOf(path, verdict.message);
    const std::string message = path + ":" + std::to_string(verdict.line) + ": " +
                                ErrorNumberText(verdict.number) + " " + verdict.message;
    return {message + "\n", message};
}

}  // namespace

Verdict CheckSetupFile(const std::string& path, std::string& text, SetupDocument* document)
{
    Verdict verdict;
    try {
        ReadWholeFile(path, text);
        SetupDocument read = ReadSetup(text);
        if (document)
            *document = std::move(read);
    } catch (const FileError& error) {
        verdict = Unusable(error.what());
    } catch (const SetupError& error) {
        verdict = {Verdict::Outcome::Rejected, error.Number(), error.Line(), ExpectationText(error)};
    } catch (const std::bad_alloc&) {
        verdict = Unusable(std::generic_category().message(ENOMEM));
    }
    return verdict;
}

Verdict CheckSetup(const FoundName& name, std::string& text, SetupDocument* document)
{
    return name.failure.empty() ? CheckSetupFile(name.path, text, document) : Unusable(name.failure);
}

Verdict Unusable(std::string why)
{
    return {Verdict::Outcome::Unreadable, 0, 0, std::move(why)};
}

Verdict NotWritten(const std::string& path, const FileError& error)
{
    return Unusable(error.Path() == path ? error.what() : error.Path() + ": " + error.what());
}

std::optional<SetupDocument> AcceptedSetup(const std::string& path, Refusal& why)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetupFile(path, text, &document);
    if (verdict.outcome == Verdict::Outcome::Accepted)
        return document;
    why = RefusalOf(path, verdict);
    return std::nullopt;
}

std::string ErrorNumberText(std::uint32_t number)
{
    std::array<char, sizeof "0x80040107"> text{};
    std::snprintf(text.data(), text.size(), "0x%08X", number);
    return text.data();
}

std::string VerdictLine(const std::string& path, const Verdict& verdict)
{
    return verdict.outcome == Verdict::Outcome::Accepted ? std::string() : RefusalOf(path, verdict).line;
}

}  // namespace kelvora
