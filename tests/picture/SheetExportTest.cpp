#include "picture/SheetExport.h"

#include <gtest/gtest.h>

#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"

namespace kelvora {

TEST(SheetExport, AsksNamesAndWritesNothingHalf)
{
    const std::string broken = "/full.png";
    const auto check = [&](const char* reason, const char* typed, int filter, const char* written,
                           Answer answer = Answer::Yes, std::size_t boxes = 0) {
        SCOPED_TRACE(reason);
        FakeFiles files;
        files.content["/old.svg"] = "old";
        files.unwritable.insert(broken);
        FakePrompt prompt;
        prompt.answers = {answer};
        FakeFileDialogs dialogs;
        dialogs.choices = {{typed, "/", filter}};
        const Texts texts(prompt);
        const std::string folder;
        const bool isNone = std::string_view(typed) == "/none.png";
        ExportSheet({texts, files, dialogs, folder}, {"<svg/>", "/shop", "till"},
                    [&](PictureType type, const std::string& svg) {
                        return isNone ? std::string() : std::to_string(static_cast<int>(type)) + svg;
                    });
        EXPECT_EQ(dialogs.asked[0].offeredName, "till");
        EXPECT_EQ(dialogs.asked[0].filters,
                  "PDF document (*.pdf)|*.pdf|Picture (*.png)|*.png|Drawing (*.svg)|*.svg");
        EXPECT_EQ(prompt.shown.size(), boxes);
        const std::string ending =
            written ? std::string(written).substr(std::string(written).size() - 3) : "";
        const std::string number = ending == "pdf" ? "2" : (ending == "png" ? "1" : "0");
        if (written)
            EXPECT_EQ(files.content[written], number + "<svg/>");
        else
            EXPECT_EQ(files.content, (std::map<std::string, std::string>{{"/old.svg", "old"}}));
    };
    check("the filter's ending", "/a.b", 2, "/a.b.png");
    check("a PDF unless told", "/a", 1, "/a.pdf");
    check("the name goes before the filter", "/A.SVG", 1, "/A.SVG");
    check("replaced when asked", "/old.svg", 3, "/old.svg", Answer::Yes, 1);
    check("left alone when asked", "/old.svg", 3, nullptr, Answer::No, 1);
    check("no room", "/full", 2, nullptr, Answer::Yes, 1);
    check("no picture", "/none.png", 2, nullptr, Answer::Yes, 1);
}

}  // namespace kelvora
