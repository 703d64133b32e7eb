// A connection to a server that answers what is written from a script, on virtual time.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/FakeEventLoop.h"
#include "platform/Connection.h"

namespace kelvora {

/// The bytes of a text such as "FF FB 2C".
inline std::string FromHex(std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at + 1 < text.size(); at += 3)
        bytes += static_cast<char>(std::stoi(std::string(text.substr(at, 2)), nullptr, 16));
    return bytes;
}

class FakeConnection final : public Connection {
public:
    explicit FakeConnection(FakeEventLoop& loop) : loop_(loop) {}

    void Connect(const std::string& host, std::uint16_t port) override
    {
        asked = host + " " + std::to_string(port);
        const int attempt = ++attempt_;
        After(connectMs, attempt, [this] {
            isOpen = refusal == PortFailure::None;
            if (!isOpen)
                return onClosed(refusal, "the system's words");
            onConnected();
        });
        for (const auto& [delayMs, bytes] : says)
            After(connectMs + delayMs, attempt, [this, text = bytes] { onBytes(text); });
        if (hangsUpMs >= 0)
            After(connectMs + hangsUpMs, attempt, [this] { HangUp(); });
    }
    void Close() override
    {
        ++attempt_;
        isOpen = false;
    }
    void Write(std::string_view bytes) override
    {
        written.emplace_back(bytes);
        const auto answer = answers.find(written.back());
        if (answer != answers.end())
            After(5, attempt_, [this, text = answer->second] { onBytes(text); });
    }

    void HangUp()
    {
        Close();
        onClosed(PortFailure::Disconnected, "the server has closed the connection");
    }

    PortFailure refusal = PortFailure::None;
    int connectMs = 10;
    std::vector<std::pair<int, std::string>> says;  ///< unasked, so many milliseconds after the connection
    int hangsUpMs = -1;                             ///< after the connection; below 0 never
    std::map<std::string, std::string> answers;     ///< by what is written at once

    std::string asked;
    bool isOpen = false;
    std::vector<std::string> written;

private:
    void After(int delayMs, int attempt, std::function<void()> action)
    {
        loop_.After(std::chrono::milliseconds(delayMs), [this, attempt, action = std::move(action)] {
            if (attempt == attempt_)
                action();
        });
    }

    FakeEventLoop& loop_;
    int attempt_ = 0;
};

}  // namespace kelvora
