#include "flash/OwnBackup.h"

#include <gtest/gtest.h>

#include <tuple>

#include "fakes/FakeFiles.h"
#include "flash/DumpText.h"

using namespace kelvora;

TEST(OwnBackup, ASetupsIsNotADumps)
{
    const std::string setup = "'by hand\r\n[Kelvora]\r\n";
    const std::string dump = "'Kind: device\r\n" + FormatDump(0, FlashImage{});
    for (const auto& [old, kept, replaces] : {std::tuple(setup, dump, true),
                                              {dump, setup, true},
                                              {setup, setup, false},
                                              {dump, dump, false},
                                              {setup, std::string("notes"), false},
                                              {setup, std::string("'"), false},
                                              {std::string("notes"), setup, false}}) {
        FakeFiles files;
        files.content = {{"a.dat", old}, {"a.bak", kept}};
        EXPECT_EQ(ReplacesOtherBackup(files, "a.dat"), replaces) << old.substr(0, 20) << kept.substr(0, 20);
        EXPECT_FALSE(ReplacesOtherBackup(files, "b.dat")) << "has no old content";
        EXPECT_FALSE(ReplacesOtherBackup(files, "a.bak")) << "is its own backup";
        if (replaces)
            EXPECT_THROW(SaveTextFileUnasked(files, "a.dat", dump), FileError);
        else
            SaveTextFileUnasked(files, "a.dat", dump);
        EXPECT_EQ(files.content["a.bak"], replaces ? kept : old);
    }
}
