#include "comms/RunningOperation.h"

#include <utility>

#include "platform/NumberText.h"

namespace kelvora {

std::string TimeLeft(std::chrono::seconds left)
{
    constexpr int Minute = 60;
    const auto seconds = static_cast<int>(left.count());
    return std::to_string(seconds / Minute) + ':' + PaddedNumber(seconds % Minute, 2);
}

void RunningOperation::Tell() const
{
    if (onChange)
        onChange();
}

void RunningOperation::SayStopping(std::string text)
{
    status_.clear();
    name_ = std::move(text);
}

void RunningOperation::Take(std::string status)
{
    busy_ = true;
    stopAsked_ = false;
    status_ = std::move(status);
    name_.clear();
}

void RunningOperation::GiveBack()
{
    busy_ = false;
    status_.clear();
    name_.clear();
}

LineOperation::LineOperation(RunningOperation& running, std::string status, std::string name)
    : running_(running)
{
    running_.Take(std::move(status));
    running_.name_ = std::move(name);
    running_.Tell();
}

LineOperation::~LineOperation()
{
    running_.GiveBack();
    running_.Tell();
}

LineHooks LineOperation::Hooks() const
{
    return {[&running = running_] { return running.IsStopAsked(); },
            [&running = running_](const LineProgress& progress) {
                if (running.onProgress)
                    running.onProgress(progress);
            }};
}

OperationQuestion::OperationQuestion(RunningOperation& running) : running_(running)
{
    running_.asking_ = true;
    running_.Tell();
}

OperationQuestion::~OperationQuestion()
{
    running_.asking_ = false;
    running_.Tell();
}

}  // namespace kelvora
