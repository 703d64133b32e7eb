// Tills that are put on one line and taken away from it, on virtual time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/FreshLine.h"
#include "bench/SimulatedLine.h"
#include "bench/SimulatedPort.h"
#include "fakes/FakeLineClock.h"
#include "flash/FlashImage.h"

namespace kelvora {

/// A terminal of that name with its modules, which nothing is connected to.
struct Till {
    Till(FakeEventLoop& loop, std::string tillName, const std::vector<bench::Module>& modules,
         bench::LineOptions options = {})
        : name(std::move(tillName)), clock(loop), line(clock, bench::FreshLine(modules), options), port(line)
    {
    }

    FlashImage Flash() const
    {
        FlashImage image{};
        std::copy(line.Memory().flash.begin(), line.Memory().flash.end(), image.begin());
        return image;
    }

    std::string name;
    bench::FakeLineClock clock;
    bench::SimulatedLine line;
    bench::SimulatedPort port;
};

/// The cable: what hangs on it can change while the port is open.
class TillPort final : public SerialPort {
public:
    /// Null for nothing.
    void Connect(Till* till)
    {
        if (till_) {
            till_->port.onBytes = nullptr;
            till_->port.Close();
        }
        till_ = till;
        if (!till_)
            return;
        till_->port.onBytes = [this] {
            if (onBytes)
                onBytes();
        };
        if (isOpen_)
            OpenTill();
    }

    /// The adapter is taken out of the machine, and comes back.
    void PullOut()
    {
        isOut_ = true;
        if (!std::exchange(isOpen_, false))
            return;
        if (till_)
            till_->port.Close();
        if (onLost)
            onLost();
    }
    void PutIn() { isOut_ = false; }

    Till* Connected() const { return till_; }

    const std::string& Device() const override { return device_; }
    void SetDevice(std::string device) override { device_ = std::move(device); }
    bool Open() override
    {
        isOpen_ = !isOut_;
        if (isOpen_ && till_)
            OpenTill();
        return isOpen_;
    }
    void Close() override
    {
        isOpen_ = false;
        if (till_)
            till_->port.Close();
    }
    bool IsOpen() const override { return isOpen_; }
    PortFailure Failure() const override { return isOut_ ? PortFailure::Missing : PortFailure::None; }
    std::string LastError() const override { return isOut_ ? "No such file or directory" : ""; }
    bool SetSettings(std::string_view settings) override
    {
        settings_ = settings;
        return true;
    }
    const std::string& Settings() const override { return settings_; }
    void Write(std::string_view bytes) override
    {
        if (!till_)
            return;
        // A terminal tells its own name.
        if (bytes.find("$9900") != std::string_view::npos)
            till_->line.Terminal().AnswerNext(
                "$9900",
                "M$9900!0" + std::string(1, static_cast<char>(' ' + till_->name.size())) + till_->name);
        till_->port.Write(bytes);
    }
    std::size_t BytesWaiting() const override { return till_ ? till_->port.BytesWaiting() : 0; }
    std::string Read(std::size_t limit) override { return till_ ? till_->port.Read(limit) : std::string(); }
    void DiscardInput() override {}

private:
    void OpenTill()
    {
        till_->port.SetSettings(settings_);
        till_->port.Open();
    }

    Till* till_ = nullptr;
    std::string device_ = "/dev/till";
    std::string settings_;
    bool isOpen_ = false;
    bool isOut_ = false;
};

}  // namespace kelvora
