#include "network/NetworkPort.h"

#include <algorithm>
#include <utility>

namespace kelvora {

namespace {

/// Characters of a server's own words that are worth showing.
constexpr std::size_t ShownWords = 80;

/// How often it is asked whether an opening is given up.
constexpr std::chrono::milliseconds LookTime{100};

// A server that refuses mostly says why, as a line of text.
// Empty for what is no text.
std::string WordsOf(std::string_view heard)
{
    std::string words(heard.substr(0, ShownWords));
    while (!words.empty() && (words.back() == '\r' || words.back() == '\n'))
        words.pop_back();
    const bool isText = std::ranges::all_of(words, [](char c) { return c >= ' ' && c <= '~'; });
    return isText ? words : std::string();
}

}  // namespace

NetworkPort::NetworkPort(std::unique_ptr<Connection> connection, EventLoop& loop)
    : connection_(std::move(connection)), loop_(loop), deadline_(loop.NewTimer()), timer_(loop.NewTimer())
{
    connection_->onConnected = [this] { Connected(); };
    connection_->onBytes = [this](std::string_view bytes) { Arrive(bytes); };
    connection_->onClosed = [this](PortFailure failure, const std::string& words) {
        Disconnected(failure, words);
    };
}

void NetworkPort::SetDevice(std::string device)
{
    Close();
    device_ = std::move(device);
}

bool NetworkPort::Open()
{
    const auto address = ParseLineAddress(device_);
    if (stage_ != Stage::Closed || !address) {
        failure_ = address ? PortFailure::InUse : PortFailure::Missing;
        lastError_ = address ? "the line is open already" : "no address of a line";
        return false;
    }
    address_ = *address;
    failure_ = PortFailure::None;
    lastError_.clear();
    heard_.clear();
    input_.clear();
    session_ = {};
    speaksTelnet_ = false;
    stage_ = Stage::Connecting;
    deadline_->Start(OpenTime, [this] {
        Fail(PortFailure::NoAnswer, stage_ == Stage::Connecting ? "no connection" : "no answer");
    });
    connection_->Connect(address_.host, address_.port);
    // Without it nothing might happen before the time is over.
    const auto look = loop_.NewTimer();
    look->Start(LookTime, [] {});
    while (stage_ != Stage::Closed && stage_ != Stage::Open) {
        if (isGivenUp && isGivenUp()) {
            Close();
            failure_ = PortFailure::GivenUp;
            break;
        }
        loop_.Yield();
    }
    return IsOpen();
}

void NetworkPort::Connected()
{
    stage_ = Stage::Listening;
    if (address_.protocol == LineProtocol::Rfc2217) {
        BeginTelnet();
        return;
    }
    timer_->Start(address_.protocol == LineProtocol::Detected ? ListenTime : HangUpTime,
                  [this] { EnterOpen(); });
}

void NetworkPort::BeginTelnet()
{
    speaksTelnet_ = true;
    stage_ = Stage::Negotiating;
    timer_->Start(AnswerTime, [this] { JudgeTelnet(); });
    connection_->Write(ComPortSession::Begin());
}

void NetworkPort::Arrive(std::string_view bytes)
{
    if (speaksTelnet_) {
        TakeTelnet(bytes);
    } else if (stage_ == Stage::Listening) {
        heard_ += bytes;
        if (address_.protocol == LineProtocol::Detected && BeginsTelnet(heard_)) {
            BeginTelnet();
            TakeTelnet(std::exchange(heard_, {}));
        }
    } else {
        Deliver(bytes);
    }
}

void NetworkPort::TakeTelnet(std::string_view bytes)
{
    const ComPortSession::Taken taken = session_.Take(bytes);
    if (!taken.answer.empty())
        connection_->Write(taken.answer);
    if (stage_ == Stage::Open && !session_.IsTransparent()) {
        Lose("the server does not pass all bytes any more");
    } else if (stage_ == Stage::Open) {
        Deliver(taken.data);
    } else {
        heard_ += taken.data;
        Continue();
    }
}

void NetworkPort::Continue()
{
    if (stage_ == Stage::Negotiating && session_.IsAgreed())
        JudgeTelnet();
    else if (stage_ == Stage::Setting && session_.Outcome() != ComPortSession::Settings::Asked)
        JudgeSettings();
}

// What the server has not agreed to by now it does not want.
void NetworkPort::JudgeTelnet()
{
    const auto settings = ParseSerialSettings(settings_);
    if (!session_.TakesSettings() && address_.protocol == LineProtocol::Rfc2217) {
        Fail(PortFailure::NoSettings, "no RFC 2217");
    } else if (!session_.IsTransparent()) {
        Fail(PortFailure::Other, "the server does not pass all bytes as they are");
    } else if (!session_.TakesSettings()) {
        EnterOpen();
    } else if (!settings) {
        Fail(PortFailure::BadSettings, settings_);
    } else {
        stage_ = Stage::Setting;
        timer_->Start(AnswerTime,
                      [this] { Fail(PortFailure::NoAnswer, "the server does not answer to settings"); });
        connection_->Write(session_.Ask(*settings) + ComPortSession::RaiseControlLines() +
                           ComPortSession::DiscardReceived());
    }
}

void NetworkPort::JudgeSettings()
{
    if (session_.Outcome() == ComPortSession::Settings::InForce)
        EnterOpen();
    else
        Fail(PortFailure::BadSettings, "the server keeps " + session_.Kept());
}

void NetworkPort::EndStage()
{
    deadline_->Stop();
    timer_->Stop();
}

void NetworkPort::EnterOpen()
{
    EndStage();
    stage_ = Stage::Open;
    // What a raw line has said so far is no answer to anything; whoever listens for a bridge has to judge it.
    const std::string early = std::exchange(heard_, {});
    if (address_.protocol == LineProtocol::Bridge)
        Deliver(early);
}

void NetworkPort::Deliver(std::string_view bytes)
{
    if (bytes.empty())
        return;
    input_ += bytes.substr(0, MaximumInput - input_.size());
    if (const auto tell = onBytes)
        tell();
}

void NetworkPort::Disconnected(PortFailure failure, const std::string& words)
{
    if (stage_ == Stage::Open)
        Lose(words);
    else if (stage_ == Stage::Connecting)
        Fail(failure, words);
    else if (const std::string said = WordsOf(heard_); !said.empty())
        Fail(PortFailure::InUse, said);
    else
        Fail(PortFailure::HungUp, "the server has hung up at once");
}

void NetworkPort::Fail(PortFailure failure, const std::string& words)
{
    Close();
    failure_ = failure;
    lastError_ = words;
}

void NetworkPort::Lose(const std::string& words)
{
    Fail(PortFailure::Disconnected, words);
    if (const auto tell = onLost)
        tell();
}

void NetworkPort::Close()
{
    EndStage();
    stage_ = Stage::Closed;
    input_.clear();
    connection_->Close();
}

bool NetworkPort::SetSettings(std::string_view settings)
{
    const auto wanted = ParseSerialSettings(settings);
    if (!wanted || (stage_ != Stage::Closed && !IsOpen()))
        return false;
    if (IsOpen() && settings != settings_ && !Set(*wanted))
        return false;
    settings_ = settings;
    return true;
}

// What the server has refused in part is taken back.
bool NetworkPort::Set(const SerialSettings& settings)
{
    if (HasFixedSettings())
        return false;
    const auto ask = [this](const SerialSettings& each) {
        timer_->Start(AnswerTime, [this] { Lose("the server does not answer to settings"); });
        connection_->Write(session_.Ask(each));
        while (IsOpen() && session_.Outcome() == ComPortSession::Settings::Asked)
            loop_.Yield();
        timer_->Stop();
        return session_.Outcome() == ComPortSession::Settings::InForce;
    };
    if (ask(settings))
        return IsOpen();
    const auto former = ParseSerialSettings(settings_);
    if (IsOpen() && (!former || !ask(*former)) && IsOpen())
        Lose("the server keeps " + session_.Kept());
    return false;
}

void NetworkPort::Write(std::string_view bytes)
{
    if (IsOpen())
        connection_->Write(speaksTelnet_ ? EscapeTelnet(bytes) : std::string(bytes));
}

std::string NetworkPort::Read(std::size_t limit)
{
    if (limit == 0 || limit >= input_.size())
        return std::exchange(input_, {});
    std::string read = input_.substr(0, limit);
    input_.erase(0, limit);
    return read;
}

void NetworkPort::DiscardInput()
{
    input_.clear();
    if (IsOpen() && speaksTelnet_ && session_.TakesSettings())
        connection_->Write(ComPortSession::DiscardReceived());
}

}  // namespace kelvora
