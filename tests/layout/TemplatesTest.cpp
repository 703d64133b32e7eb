#include "layout/Templates.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"

namespace kelvora {

TEST(Templates, OnlySetupFilesCountAndOwnOnesCanMoveAndGo)
{
    FakeFiles files;
    for (const char* const path : {"/own/shop b.DAT", "/own/shop b.bak", "/own/.hidden.dat", "/own/old/x.dat",
                                   "/program/KM096.dat", "/program/KM096+MCR.dat"})
        files.content[path] = "";
    const Templates templates(files, "/program", "/own");
    std::vector<std::string> listed;
    for (const bool isOwn : {true, false})
        for (const Template& entry : templates.List(isOwn))
            listed.push_back((entry.isOwn ? "own " : "") + entry.name);
    EXPECT_EQ(listed, (std::vector<std::string>{"own shop b", "KM096", "KM096+MCR"}));
    const std::string moved = templates.PathFor("corner shop");
    EXPECT_EQ(moved, "/own/corner shop.dat");
    templates.Move("/own/shop b.DAT", moved);
    EXPECT_TRUE(files.content.contains(moved) && files.content.contains("/own/corner shop.bak"));
    EXPECT_FALSE(files.content.contains("/own/shop b.DAT") || files.content.contains("/own/shop b.bak"));
    files.content["/own/KM.DAT"] = files.content["/own/KM.bak"] = "";
    templates.Move("/own/KM.DAT", templates.PathFor("KM"));
    EXPECT_TRUE(files.content.contains("/own/KM.bak")) << "has the same backup";
    templates.Remove(moved);
    EXPECT_FALSE(files.content.contains(moved) || files.content.contains("/own/corner shop.bak"));
    EXPECT_TRUE(Templates(files, "/none", "/nowhere").List(false).empty());
}

TEST(Templates, NamesAreNamesOfFiles)
{
    for (const char* const name : {"till", "Kasse 2.5", "a.b"})
        EXPECT_EQ(FaultOf(name), std::nullopt) << name;
    for (const char* const name : {"", "  ", ".x", "a/b"})
        EXPECT_EQ(FaultOf(name), NameFault::Unfit) << name;
    EXPECT_EQ(FaultOf(std::string(200, 'x')), std::nullopt);
    EXPECT_EQ(FaultOf(std::string(201, 'x')), NameFault::TooLong);
}

}  // namespace kelvora
