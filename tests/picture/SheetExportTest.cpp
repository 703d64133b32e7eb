#include "picture/SheetExport.h"

#include <gtest/gtest.h>

#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"

namespace kelvora {

TEST(SheetExport, AsksNamesAndWritesNothingHalf)
{
    struct Row {
        const char* reason;
        const char* typed;
        int filter;
        const char* written;  ///< null for none
        Answer answer = Answer::Yes;
        std::size_t boxes = 0;
    };
    const std::string broken = "/full.png";
    for (const Row& row :
         {Row{"the filter's ending", "/a.b", 2, "/a.b.png"}, Row{"a PDF unless told", "/a", 1, "/a.pdf"},
          Row{"the name goes before the filter", "/A.SVG", 1, "/A.SVG"},
          Row{"replaced when asked", "/old.svg", 3, "/old.svg", Answer::Yes, 1},
          Row{"left alone when asked", "/old.svg", 3, nullptr, Answer::No, 1},
          Row{"no room", "/full", 2, nullptr, Answer::Yes, 1},
          Row{"no picture", "/none.png", 2, nullptr, Answer::Yes, 1}}) {
        SCOPED_TRACE(row.reason);
        FakeFiles files;
        files.content["/old.svg"] = "old";
        files.unwritable.insert(broken);
        FakePrompt prompt;
        prompt.answers = {row.answer};
        FakeFileDialogs dialogs;
        dialogs.choices = {{row.typed, "/", row.filter}};
        const Texts texts(prompt);
        const std::string folder;
        const bool isNone = std::string_view(row.typed) == "/none.png";
        ExportSheet({texts, files, dialogs, folder}, {"<svg/>", "/shop", "till"},
                    [&](PictureType type, const std::string& svg) {
                        return isNone ? std::string() : std::to_string(static_cast<int>(type)) + svg;
                    });
        EXPECT_EQ(dialogs.asked[0].offeredName, "till");
        EXPECT_EQ(dialogs.asked[0].filters,
                  "PDF document (*.pdf)|*.pdf|Picture (*.png)|*.png|Drawing (*.svg)|*.svg");
        EXPECT_EQ(prompt.shown.size(), row.boxes);
        const std::string ending =
            row.written ? std::string(row.written).substr(std::string(row.written).size() - 3) : "";
        const std::string number = ending == "pdf" ? "2" : (ending == "png" ? "1" : "0");
        if (row.written)
            EXPECT_EQ(files.content[row.written], number + "<svg/>");
        else
            EXPECT_EQ(files.content, (std::map<std::string, std::string>{{"/old.svg", "old"}}));
    }
}

}  // namespace kelvora
