#include "cli/FlashJson.h"

#include <array>
#include <nlohmann/json.hpp>

#include "cli/LineReport.h"
#include "cli/SetupJson.h"
#include "comms/Crc.h"
#include "comms/LineErrorText.h"
#include "flash/TransferTexts.h"
#include "platform/Encoding.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array OutcomeNames{"unread", "unbuilt", "different", "same"};
constexpr std::array StateNames{"old", "same", "new", "unknown", "foreign"};
constexpr std::array ReasonNames{"done", "line", "refused", "backup", "declined", "contents", "changed"};
static_assert(OutcomeNames.size() == static_cast<std::size_t>(VerifyResult::Outcome::Last) + 1);
static_assert(StateNames.size() == static_cast<std::size_t>(TransferResult::State::Last) + 1);
static_assert(ReasonNames.size() == static_cast<std::size_t>(TransferResult::Reason::Last) + 1);

Json FileOrNull(const std::string& path)
{
    return path.empty() ? Json() : Json(Utf8FromPath(path));
}

std::string MessageOf(const OutcomeText& outcome)
{
    return OneLineText(outcome.text + "\n" + outcome.extra);
}

Json ArrayOf(const std::vector<std::string>& lines)
{
    Json array = Json::array();
    for (const std::string& line : lines)
        array.push_back(OneLineText(line));
    return array;
}

// Null for a line that did not fail.
Json LineFailureOf(const LineTarget& target, const LineResult& line)
{
    return line.IsDone() ? Json() : Json(LineFailureText(target, line));
}

Json WarningsOf(const LineResult& line)
{
    return ArrayOf(WarningLines(MessageCatalogue(), line.warnings));
}

}  // namespace

std::string VerifyJson(const LineTarget& target, const std::string& file, const VerifyResult& result)
{
    const MessageCatalogue english;
    const bool isDifferent = result.outcome == VerifyResult::Outcome::Different;
    const OutcomeText text = DescribeVerify(english, target, result, 0);
    Json object;
    object["port"] = PortName(target.line);
    object["file"] = Utf8FromPath(file);
    object["outcome"] = OutcomeNames.at(static_cast<std::size_t>(result.outcome));
    object["message"] = isDifferent ? OneLineText(text.text) : MessageOf(text);
    object["firstDifference"] = isDifferent ? Json(HexText(result.firstDifference, 4)) : Json();
    object["differences"] = ArrayOf(DifferenceLines(english, result.differences));
    object["lineFailure"] = LineFailureOf(target, result.line);
    object["warnings"] = WarningsOf(result.line);
    return object.dump() + "\n";
}

std::string TransferJson(const LineTarget& target, const std::string& file, const TransferResult& result)
{
    const MessageCatalogue english;
    Json object;
    object["port"] = PortName(target.line);
    object["file"] = Utf8FromPath(file);
    object["device"] = StateNames.at(static_cast<std::size_t>(result.state));
    object["reason"] = ReasonNames.at(static_cast<std::size_t>(result.reason));
    object["message"] = MessageOf(DescribeTransfer(english, target, result));
    object["contentsLost"] = result.plan ? Json(result.plan->contentsLost) : Json();
    object["changes"] =
        ArrayOf(result.plan ? ChangeLines(english, *result.plan) : std::vector<std::string>());
    object["unheld"] = ArrayOf(result.plan ? UnheldLines(english, *result.plan) : std::vector<std::string>());
    object["backup"] = result.fileError.empty() ? FileOrNull(result.backup) : Json();
    object["lineFailure"] = LineFailureOf(target, result.line);
    object["warnings"] = WarningsOf(result.line);
    return object.dump() + "\n";
}

std::string DumpJson(const LineTarget& target, const LineResult& read, const std::string& file)
{
    Json object;
    object["port"] = PortName(target.line);
    object["file"] = FileOrNull(file);
    object["deviceMap"] = DeviceMapJson(read.deviceMap);
    object["crc32"] = read.image.empty() ? Json() : Json(HexText(Crc32(read.image), 8));
    object["message"] = LineFailureOf(target, read);
    object["lineFailure"] = LineFailureOf(target, read);
    object["warnings"] = WarningsOf(read);
    return object.dump() + "\n";
}

std::string UnscannedJson(int port, const std::string& message, const LineResult& read)
{
    Json object;
    object["port"] = PortName(port);
    object["file"] = nullptr;
    object["message"] = message;
    object["deviceMap"] = DeviceMapJson(read.deviceMap);
    object["warnings"] = WarningsOf(read);
    return object.dump() + "\n";
}

std::string UnreadJson(int port, const std::string& file, const std::string& message)
{
    Json object;
    object["port"] = PortName(port);
    object["file"] = FileOrNull(file);
    object["message"] = message;
    return object.dump() + "\n";
}

std::string ImageJson(const std::string& file, const std::string& output, const std::string& dump,
                      const std::vector<std::string>& unheld)
{
    Json object;
    object["file"] = Utf8FromPath(file);
    object["output"] = FileOrNull(output);
    object["dump"] = output.empty() ? Json(Utf8FromText(dump)) : Json();
    object["unheld"] = unheld;
    return object.dump() + "\n";
}

}  // namespace kelvora
