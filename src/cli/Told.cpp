#include "cli/Told.h"

#include "cli/SetupJson.h"

namespace kelvora {

Told ToldOf(const std::string& path, const Verdict& verdict, bool json)
{
    const bool accepted = verdict.outcome == Verdict::Outcome::Accepted;
    return {json ? VerdictJson(path, verdict) : std::string(), VerdictLine(path, verdict),
            accepted ? ExitCode::Done : ExitCode::Rejected};
}

}  // namespace kelvora
