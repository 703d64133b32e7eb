#include "cli/ProgressLine.h"

namespace kelvora {

namespace {

constexpr std::size_t Width = 40;

}  // namespace

void ProgressLine::Wipe()
{
    if (out_ && !shown_.empty())
        *out_ << '\r' << std::string(shown_.size(), ' ') << '\r' << std::flush;
    shown_.clear();
}

void ProgressLine::Show(const LineProgress& progress)
{
    if (!out_)
        return;
    const std::size_t full = Width * progress.done / progress.total;
    std::string line = "[" + std::string(full, '#') + std::string(Width - full, '.') + "] " +
                       std::to_string(100 * progress.done / progress.total) + " %";
    if (progress.left)
        line += ", " + std::to_string(progress.left->count()) + " s left";
    const std::string rest(line.size() < shown_.size() ? shown_.size() - line.size() : 0, ' ');
    *out_ << '\r' << line << rest << std::flush;
    shown_ = line;
}

}  // namespace kelvora
