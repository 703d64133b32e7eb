// Any bytes from a line: the receiver reports frames that are ones and keeps little, and the link makes of
// whatever happens on its port one event for a command, in its time, that the bytes bear out.

#include <fuzzer/FuzzedDataProvider.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Require.h"
#include "comms/SerialLink.h"
#include "fakes/FakeEventLoop.h"

namespace {

using namespace kelvora;

constexpr int MostSends = 12;
constexpr std::chrono::milliseconds SilenceOfTimeOut{3000};

void RequireJustified(FrameReceiver::Event event, const FrameReceiver& receiver)
{
    using enum FrameReceiver::Event;
    const std::string& bytes = receiver.Bytes();
    Require(bytes.size() <= LongestFrame, "no more is kept than a frame has");
    if (event == Frame) {
        Require(BuildFrame(receiver.Frame()) == bytes, "a frame is what has come");
        Require(receiver.Frame().body.find_first_of("\x01\x03\x0A\x0D\x15") == std::string::npos,
                "no control bytes in a body");
    }
    Require(event != Damage || bytes.front() == LinkByte::Soh, "damage is of a frame");
    Require(event != Nak || bytes.back() == LinkByte::Nak, "a NAK has come");
}

void CheckReceiver(std::string_view bytes)
{
    FrameReceiver receiver;
    FrameReceiver::Event event{};
    const auto take = [&](std::string_view text) {
        for (const char byte : text)
            RequireJustified(event = receiver.Take(byte), receiver);
    };
    take(bytes);
    const LinkFrame frame{0xBEEF, "M209 !0$0000"};
    take(BuildFrame(frame));
    Require(event == FrameReceiver::Event::Frame && receiver.Frame().body == frame.body,
            "a frame is found behind anything");
}

/// The port, and what the link has done with it.
class FuzzPort final : public SerialPort {
public:
    const std::string& Device() const override { return name_; }
    void SetDevice(std::string /*device*/) override {}
    bool Open() override { return open_ = true; }
    void Close() override { open_ = false; }
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return PortFailure::Missing; }
    std::string LastError() const override { return "gone"; }
    bool SetSettings(std::string_view /*settings*/) override { return true; }
    const std::string& Settings() const override { return name_; }
    void Write(std::string_view bytes) override
    {
        Require(open_, "nothing is written to a closed port");
        // But once: the first answer may be that to an earlier program's command of the same number.
        const bool isNewNumber = writes > 0 && bytes != frame;
        Require(!isNewNumber || (Body(bytes) == Body(frame) && numbers++ == 0),
                "what is sent again is the same");
        frame = bytes;
        ++writes;
    }
    std::size_t BytesWaiting() const override { return input_.size(); }
    std::string Read(std::size_t /*limit*/) override { return std::exchange(input_, {}); }
    void DiscardInput() override { input_.clear(); }

    static std::string_view Body(std::string_view sent)
    {
        return sent.substr(1 + 4, sent.size() - FrameOverhead);
    }

    void Arrive(std::string_view bytes)
    {
        if (!open_)
            return;
        input_ += bytes;
        heard += bytes;
        onBytes();
    }
    void Vanish()
    {
        if (std::exchange(open_, false))
            onLost();
    }

    std::string frame;  ///< that the link has sent
    int writes = 0;     ///< of it
    int numbers = 0;    ///< how often that of a command was changed
    std::string heard;  ///< all that came since the command

private:
    std::string name_ = "fuzz";
    std::string input_;
    bool open_ = false;
};

/// One link whose port does what the input says.
class LinkRun {
public:
    explicit LinkRun(FuzzedDataProvider& input) : input_(input)
    {
        link_.onEvent = [this](LinkEvent event, std::string_view text) { Take(event, text); };
        link_.watcher = [](const LineTraffic& traffic) {
            Require(!traffic.bytes.empty() && traffic.bytes.size() <= LongestFrame,
                    "traffic of a frame's size");
        };
        link_.Open("9600,n,8,1");
    }

    void Play()
    {
        while (input_.remaining_bytes() > 0)
            Step();
        // The last command comes to its end by itself.
        loop_.Pass(link_.LongestExchange());
        Require(!waiting_, "an event within the limit");
    }

private:
    void Step()
    {
        switch (input_.ConsumeIntegralInRange(0, 9)) {
            case 0:
                return Send();
            case 1:
                return loop_.Pass(std::chrono::milliseconds(input_.ConsumeIntegralInRange(0, 4000)));
            case 2:
                return Arrive(input_.ConsumeRandomLengthString(2 * LongestFrame));
            case 3:
                return Arrive(Answer());
            case 4:
                return Arrive(Damaged(Answer()));
            case 5:
                return Arrive(std::string(1, LinkByte::Nak));
            case 6:
                return Babble();
            case 7:
                return port_.Vanish();
            case 8:
                link_.Close();
                waiting_ = false;
                return;
            default:
                link_.Open("9600,n,8,1");
        }
    }

    void Send()
    {
        port_.writes = port_.numbers = 0;
        port_.heard.clear();
        begin_ = lastByte_ = loop_.Now();
        waiting_ = true;
        link_.Send(input_.ConsumeRandomLengthString(80), LnkControl::UsualSends);
    }

    void Arrive(const std::string& bytes)
    {
        if (!bytes.empty())
            lastByte_ = loop_.Now();
        port_.Arrive(bytes);
    }

    // A line that is never silent for long.
    void Babble()
    {
        const std::string bytes = input_.ConsumeRandomLengthString(8);
        const std::chrono::milliseconds pause(input_.ConsumeIntegralInRange(1, 1100));
        for (int times = input_.ConsumeIntegralInRange(0, 50); times > 0; --times) {
            Arrive(bytes);
            loop_.Pass(pause);
        }
    }

    // A whole frame for the command in flight.
    std::string Answer()
    {
        if (port_.frame.empty())
            return {};
        const auto exchange = static_cast<std::uint16_t>(std::stoul(port_.frame.substr(1, 4), nullptr, 16));
        return BuildFrame({exchange, input_.PickValueInArray({"M", "E", "R", ""}) +
                                         EscapeData(input_.ConsumeRandomLengthString(MaximumBody / 2 - 1))});
    }

    std::string Damaged(std::string frame)
    {
        if (!frame.empty())
            frame[input_.ConsumeIntegralInRange<std::size_t>(0, frame.size() - 1)] ^=
                input_.ConsumeIntegral<char>();
        return frame;
    }

    void Take(LinkEvent event, std::string_view text)
    {
        Require(std::exchange(waiting_, false), "one event for a command");
        Require(port_.writes <= MostSends, "at most twelve sends");
        Require(loop_.Now() - begin_ <= link_.LongestExchange(),
                "within the limit, whatever comes meanwhile");
        switch (event) {
            case LinkEvent::Reply:
                return RequireAnswer('M', text);
            case LinkEvent::CommandError:
                return RequireAnswer('E', text);
            case LinkEvent::CommandRejected:
                return RequireAnswer('R', text);
            case LinkEvent::CommunicationError:
                return Require(!port_.IsOpen() || port_.writes == MostSends, "a line that fails");
            case LinkEvent::TimeOut:
                Require(loop_.Now() - lastByte_ >= SilenceOfTimeOut, "three times silence");
        }
    }

    // The frame that the event tells of has come, for this command.
    void RequireAnswer(char letter, std::string_view text) const
    {
        const std::string start = port_.frame.substr(0, 5) + letter + std::string(text) + LinkByte::Etx;
        Require(port_.heard.find(start) != std::string::npos, "the answer has come");
    }

    FuzzedDataProvider& input_;
    FakeEventLoop loop_;
    FuzzPort port_;
    SerialLink link_{port_, loop_};
    EventLoop::Time begin_;     ///< of the command
    EventLoop::Time lastByte_;  ///< or of the command, where none has come
    bool waiting_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CheckReceiver({reinterpret_cast<const char*>(data), size});
    FuzzedDataProvider input(data, size);
    LinkRun(input).Play();
    return 0;
}
