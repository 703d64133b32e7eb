#include "layout/Templates.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"

namespace kelvora {
namespace {

TEST(Templates, OnlySetupFilesCountAndOwnOnesCanGo)
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
    templates.Remove("/own/shop b.DAT");
    EXPECT_TRUE(templates.List(true).empty());
    EXPECT_TRUE(Templates(files, "/none", "/nowhere").List(false).empty());
    EXPECT_EQ(templates.PathFor("corner shop"), "/own/corner shop.dat");
    EXPECT_TRUE(files.folders.contains("/own"));
}

TEST(Templates, NamesAreNamesOfFiles)
{
    for (const char* const name : {"till", "Kasse 2.5", "a.b"})
        EXPECT_TRUE(IsTemplateName(name)) << name;
    for (const std::string& name :
         {std::string(), std::string("  "), std::string(".x"), std::string("a/b"), std::string(201, 'x')})
        EXPECT_FALSE(IsTemplateName(name)) << name;
}

}  // namespace
}  // namespace kelvora
