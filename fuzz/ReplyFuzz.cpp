// Any bytes as a terminal's answers: fields that are the reply's own, numbered errors, waits that end in
// their time, and drivers that take a whole flash or nothing.

#include <fuzzer/FuzzedDataProvider.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Require.h"
#include "comms/Crc.h"
#include "comms/FlashCommands.h"
#include "comms/LineCommands.h"
#include "comms/LineDrivers.h"
#include "comms/LinkFrame.h"
#include "comms/Reply.h"
#include "fakes/FakeEventLoop.h"
#include "platform/NumberText.h"

namespace {

using namespace kelvora;

constexpr std::size_t MostPositions = 7;

bool IsNumber(std::uint32_t number)
{
    using namespace ReplyErrorNumber;
    constexpr std::array Numbers{Failed,    NoDevices, Malformed, GaveUp,  GivenTime,
                                 Status999, Rejected,  Status5,   Status3, Undefined};
    return std::ranges::find(Numbers, number) != Numbers.end();
}

void CheckFields(std::string_view reply)
{
    const std::string_view name = CommandName(reply);
    Require(reply.starts_with(name), "a command begins with its name");
    const auto fields = ReplyFields(reply, name);
    if (!fields)
        return;
    std::string again(name);
    for (const std::string& field : *fields)
        again += CountedField(field);
    Require(again == reply, "the fields are the reply");
}

void CheckData(std::string_view bytes)
{
    Require(UnescapeData(EscapeData(bytes)) == bytes, "what is escaped reads back");
    if (const auto data = UnescapeData(bytes))
        Require(EscapeData(*data) == bytes, "data is escaped in one way");
}

void CheckDeviceList(std::string_view text)
{
    const std::string_view count = text.substr(0, 1);
    const std::string_view codes = text.substr(count.size());
    try {
        const std::string map = ParseDeviceList(count, codes);
        const auto commas = static_cast<std::size_t>(std::ranges::count(codes, ','));
        Require(map.size() == (codes.empty() ? 0 : commas + 1), "a device for each item");
        Require(map.size() <= MostPositions && count == std::to_string(map.size()), "as many as are counted");
    } catch (const ReplyError& error) {
        Require(error.Number() == ReplyErrorNumber::Malformed, "a malformed list");
    }
}

void CheckRaising(std::string_view reply)
{
    try {
        RaiseForReply(reply, 3);
        Require(reply.size() >= 3 && !reply.starts_with(ReplyTag::Failed), "no failure");
    } catch (const ReplyError& error) {
        Require(IsNumber(error.Number()), "a number of the list");
    }
}

/// A control that answers each command at once as it is told.
class AnsweringControl final : public LnkControl {
public:
    bool Open(std::string_view /*settings*/) override { return open_ = true; }
    void Close() override { open_ = false; }
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return PortFailure::None; }
    std::string LastError() const override { return {}; }
    std::string Device() const override { return {}; }
    std::chrono::milliseconds LongestExchange() const override { return std::chrono::seconds(30); }
    std::chrono::milliseconds LongestFrameTime() const override { return std::chrono::milliseconds(500); }
    bool IsWaiting() const override { return false; }
    std::size_t Answers() const override { return answers_; }
    void Send(std::string_view command, int /*mostSends*/) override
    {
        ++answers_;
        if (answer)
            answer(command);
    }

    std::function<void(std::string_view command)> answer;

private:
    bool open_ = false;
    std::size_t answers_ = 0;
};

// Whatever stands in the mailbox, the wait takes a line that it looks for, or lasts as long as it should.
void CheckWait(FuzzedDataProvider input)
{
    FakeEventLoop loop;
    AnsweringControl control;
    Comms comms(loop, {nullptr, &control, nullptr, nullptr});
    const std::string prefix = input.PickValueInArray({"$9902", "20", "$", "", "\xA7m", "0FB0"});
    const int timeout = input.ConsumeIntegralInRange(0, 5000);
    const auto time = std::chrono::milliseconds(timeout == 0 ? Comms::DefaultTimeout : timeout);
    control.Text = input.ConsumeRandomLengthString();
    const std::string later = input.ConsumeRemainingBytesAsString();
    loop.After(time / 2, [&] { control.onEvent(LinkEvent::Reply, later); });
    const std::string reply = comms.WaitReply(2, prefix, timeout);
    const auto waited = loop.Now() - EventLoop::Time();
    Require(waited <= time + CountdownTimer::Interval, "no longer than it should");
    if (reply == ReplyTag::DefaultTime || reply == ReplyTag::GivenTime)
        return;
    Require(waited <= time / 2, "what came has ended the wait");
    Require(reply.starts_with(prefix) || reply.starts_with(ReplyTag::Mark) || prefix.size() == 1,
            "what was waited for, or a failure");
}

/// A terminal that says what a good one would, and the input's bytes now and then.
class FuzzTerminal {
public:
    FuzzTerminal(FuzzedDataProvider& input, AnsweringControl& control) : input_(input), control_(control)
    {
        control_.answer = [this](std::string_view command) { Answer(command); };
    }

    std::string sent;  ///< of the flash

private:
    void Answer(std::string_view command)
    {
        const std::string name(CommandName(command));
        const int whim = input_.remaining_bytes() == 0 ? 0 : input_.ConsumeIntegralInRange(0, 15);
        if (whim == 1)
            return control_.onEvent(input_.PickValueInArray({LinkEvent::Reply, LinkEvent::CommandError,
                                                             LinkEvent::CommandRejected, LinkEvent::TimeOut,
                                                             LinkEvent::CommunicationError}),
                                    input_.ConsumeRandomLengthString(80));
        if (whim == 2)
            return control_.onEvent(LinkEvent::Reply, name + input_.ConsumeRandomLengthString(500));
        control_.onEvent(LinkEvent::Reply, name + CountedField("0") + Rest(name, command));
    }

    std::string Rest(const std::string& name, std::string_view command)
    {
        if (name == "$9900")
            return CountedField("terminal");
        if (name == "$9902")
            return CountedField("2") + CountedField("214,8");
        if (name == "$9904")
            return CountedField(command.substr(command.size() - 1));
        if (name == "0FB0")
            return CountedField("8192");
        if (name == "0F02")
            return CountedField(HexText(Crc32(sent), 8));
        return name == "20" ? NextBlock() : std::string();
    }

    std::string NextBlock()
    {
        const std::string address = HexText(static_cast<std::uint32_t>(sent.size()), 4);
        std::string block = CountedField(address);
        for (int field = input_.ConsumeIntegralInRange(0, 2); field >= 0; --field) {
            const std::size_t most = MaximumField / 2;
            std::string data =
                input_.ConsumeBytesAsString(input_.ConsumeIntegralInRange<std::size_t>(0, most));
            // An input that has come to its end still gives a whole flash.
            if (input_.remaining_bytes() == 0)
                data.assign(std::min(most, FlashSize - std::min(sent.size(), FlashSize)), 'x');
            if (data.empty())
                continue;
            block += CountedField(EscapeData(data));
            sent += data;
            if (sent.size() == FlashSize)
                break;
        }
        return block;
    }

    FuzzedDataProvider& input_;
    AnsweringControl& control_;
};

void CheckDriver(FuzzedDataProvider input)
{
    FakeEventLoop loop;
    AnsweringControl control;
    Comms comms(loop, {&control, nullptr, nullptr, nullptr});
    const bool scan = input.ConsumeBool();
    FuzzTerminal terminal(input, control);
    std::size_t done = 0;
    LineHooks hooks;
    hooks.progress = [&](const LineProgress& progress) {
        Require(progress.done >= done && progress.done <= progress.total && progress.total == FlashSize,
                "the progress grows to the whole");
        done = progress.done;
    };
    const LineTarget target{1, "9600,n,8,1", 0};
    const LineResult result = scan ? ScanWithUpload(comms, target, hooks) : Upload(comms, target, hooks);
    Require(!control.IsOpen(), "the line is closed");
    Require(result.IsDone() || IsNumber(result.failure.number), "a number of the list");
    Require(result.deviceMap.size() <= MostPositions, "a map that a line has");
    Require(result.image.empty() || result.image.size() == FlashSize, "the whole flash or nothing");
    Require(!result.IsDone() || result.image.size() == FlashSize, "done when all is there");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    CheckFields(text);
    CheckData(text);
    CheckDeviceList(text);
    CheckRaising(text);
    CheckWait({data, size});
    CheckDriver({data, size});
    return 0;
}
