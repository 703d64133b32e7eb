#include "cli/SetupFromJson.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "cli/SetupJson.h"
#include "setup/RandomSetups.h"
#include "setup/SetupWriter.h"

namespace kelvora {
namespace {

using Json = nlohmann::json;

// Changes one thing anywhere in the setup.
void Mutate(std::mt19937& random, Json& setup)
{
    const auto below = [&](std::size_t limit) { return random() % limit; };
    Json& modules = setup["modules"];
    const bool inModule = !modules.empty() && below(6) != 0;
    Json& object = inModule ? modules[below(modules.size())] : setup;
    auto member = object.begin();
    std::advance(member, below(object.size()));
    static const Json Values = Json::parse(
        R"([null, true, "", "YES", "NO ", 0, 1, 2, 3, 4, 17, 23, 31, 97, 113, 191, 214, 8.0, 1.5, [], {}, [4]])");
    switch (below(4)) {
        case 0:
            object.erase(member);
            break;
        case 1:
            *member = Values[below(Values.size())];
            break;
        case 2:
            object["extra"] = 1;
            break;
        default:
            if (!modules.empty())
                *member = modules[below(modules.size())].value(member.key(), *member);
    }
}

// Whether the program takes it; `isBeyond` where what it refuses is no matter of shape: larger keys that are
// not whole, and members that do not agree with those from which they follow.
bool IsTaken(const Json& setup, bool& isBeyond)
{
    isBeyond = false;
    try {
        SetupFromJson(setup.dump());
        return true;
    } catch (const JsonError& error) {
        const std::string name = error.Pointer().substr(error.Pointer().rfind('/') + 1);
        isBeyond = name == "deviceMap" || name == "position" || name == "firstKeyNumber" ||
                   std::string(error.what()).starts_with("expected key types");
        return false;
    }
}

// What the schema says of a setup the program does too.
TEST(SetupFromJson, TakesWhatShowPrintsAndWhatTheSchemaTakes)
{
    const std::string lines = testing::TempDir() + "kelvora-schema-" + std::to_string(getpid());
    RandomSetups setups;
    std::mt19937 random(5);
    int taken = 0;
    int refused = 0;
    {
        std::ofstream out(lines);
        for (int round = 0; round < 150; ++round) {
            const SetupDocument document = setups.Next();
            Json setup = Json::parse(SetupJson("till.dat", document));
            ASSERT_EQ(WriteSetup(SetupFromJson(setup.dump()).Modules), WriteSetup(document.Modules)) << setup;
            out << Json{setup, true, false} << "\n";
            Mutate(random, setup);
            bool isBeyond = false;
            const bool isTaken = IsTaken(setup, isBeyond);
            out << Json{setup, isTaken, isBeyond} << "\n";
            ++(isTaken ? taken : refused);
        }
    }
    EXPECT_GT(taken, 15);
    EXPECT_GT(refused, 75);
    const int status = std::system(
        ("python3 " KELVORA_SCHEMA_CHECK " " KELVORA_SCHEMA " " + lines).c_str());  // NOLINT(cert-env33-c)
    std::filesystem::remove(lines);
    if (WEXITSTATUS(status) == 77)
        GTEST_SKIP() << "python3-jsonschema is missing";
    EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace kelvora
