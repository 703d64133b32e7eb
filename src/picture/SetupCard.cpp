#include "picture/SetupCard.h"

#include <new>

#include "picture/StripPicture.h"
#include "setup/SetupErrorText.h"
#include "setup/SetupReader.h"

namespace kelvora {

namespace {

std::string ModuleNames(const ModuleList& modules)
{
    std::string names;
    for (const ModuleRecord& record : modules)
        if (!IsPart(record.Kind))
            names.append(names.empty() ? "" : ", ").append(KindName(record.Kind));
    return names;
}

}  // namespace

SetupCard ReadSetupCard(const Files& files, const std::string& path)
{
    if (!files.Exists(path))
        return {SetupCard::State::Gone};
    try {
        const SetupDocument setup = ReadSetup(files.Read(path));
        return {SetupCard::State::Whole, {}, {}, ModuleNames(setup.Modules), StripPicture(setup.Modules)};
    } catch (const FileError& error) {
        return {SetupCard::State::NotRead, error.what()};
    } catch (const SetupError& error) {
        return {SetupCard::State::NotRead, {}, error};
    } catch (const std::bad_alloc&) {
        return {SetupCard::State::NotRead, "Cannot allocate memory"};
    }
}

std::string ReasonOf(const SetupCard& card, const MessageCatalogue& catalogue)
{
    return card.fault ? DescribeSetupError(catalogue, *card.fault) : card.reason;
}

}  // namespace kelvora
