#include "CliFixture.h"

namespace kelvora {

class Examples : public CliTest {};

TEST_F(Examples, AreAcceptedAndAreWhatASaveWrites)
{
    EXPECT_EQ(Run({"check", KELVORA_EXAMPLES}).err, "kelvora-cli: 8 files checked: 8 accepted, 0 rejected\n");
    for (const auto& entry : std::filesystem::directory_iterator(KELVORA_EXAMPLES)) {
        if (entry.path().extension() != ".dat")
            continue;
        EXPECT_EQ(Run({"format", entry.path().string()}).out, files.Read(entry.path().string()))
            << entry.path();
    }
}

}  // namespace kelvora
