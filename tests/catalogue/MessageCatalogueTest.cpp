#include "catalogue/MessageCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "catalogue/AllMessages.h"
#include "catalogue/Texts.h"
#include "fakes/FakePrompt.h"

using namespace kelvora;

namespace {

MessageCatalogue Catalogue(std::string_view lines, std::string language = "ENG")
{
    return {std::string(CatalogueHeader) + std::string(lines), std::move(language)};
}

}  // namespace

TEST(MessageCatalogue, LooksUpTexts)
{
    const std::string x125(125, 'x');
    struct Row {
        std::string reason, lines, text;
    };
    const std::vector<Row> rows{
        {"longer numbers do not count", "0050, No \r\n105, No \r\n005, Five \r\n", "Five "},
        {"the first of two lines", "005, One \r\n005, Two \r\n", "One "},
        {"a number inside a line", "004, a 005, No \r\n005, Five \r\n", "Five "},
        {"without its blank the next line belongs to it", "005, a\r\n006, b \r\n", "a\r\n006, b "},
        {"cut at 128 characters", "005, " + x125 + "yyyy \r\n", x125 + "yyy"},
        {"125 characters and the end mark fit", "005, " + x125 + " \r\n", x125 + " "},
        {"the end mark must lie within the 128", "005, " + x125 + "y \r\n", x125 + "y \r"},
        {"the text ends the file", "005, end", "end"},
        {"not there", "006, x \r\n", "Message id \r\n005, \r\n{not found in ZEL localization fileENG.MES}"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Catalogue(row.lines).Lookup(5), row.text) << row.reason;
    EXPECT_EQ(Catalogue("005, a\r\n006, b \r\n").Lookup(6), "b ") << "a line that another one swallowed";
    EXPECT_EQ(Catalogue("", "ITA").Lookup(0),
              "Codice messaggio \r\n000, \r\n{non trovato nel file di localizzazione ZELITA.MES}");
    EXPECT_EQ(Catalogue("523, Taste \r\n").Word(Message::KeyWord), "Taste ");
    EXPECT_EQ(Catalogue("523, Taste \r\n").Caption(Message::KeyWord), "Taste");
}

TEST(MessageCatalogue, EachTextHasANumberOfItsOwnAndServesInEveryEncoding)
{
    std::set<int> numbers;
    for (const MessageId& message : AllMessages) {
        EXPECT_TRUE(numbers.insert(message.id).second) << "twice: " << message.id;
        EXPECT_TRUE(std::ranges::all_of(message.text, [](char c) { return c >= ' ' && c <= '~'; }))
            << "not the same in every encoding: " << message.text;
    }
    EXPECT_EQ(Message::ContinueCommand.text, "&Continue");
    EXPECT_EQ(MessageCatalogue().Caption(Message::ContinueCommand), "&Contiinue");
}

TEST(Texts, ComposeTitleAndBody)
{
    struct Row {
        MessageId message, title;
        std::string extra, shownTitle, body;
    };
    const MessageId known{2, "unused"}, title{1, "unused"}, own{600, "Own?"}, systems{3, "unused"};
    for (const Row& row :
         {Row{known, title, "", "Title ", "Body "}, Row{known, {}, "more", "Kelvora", "Body \r\nmore"},
          Row{own, {}, "more", "Kelvora", "Own?\r\nmore"},
          Row{systems, {}, "", "Kelvora", Catalogue("").Lookup(3)}}) {
        FakePrompt prompt;
        prompt.answers = {Answer::Yes};
        Texts texts(prompt);
        texts.Speak(Catalogue("001, Title \r\n002, Body \r\n"));
        EXPECT_EQ(texts.Show(row.message, YesNoStyle, row.extra, row.title), Answer::Yes);
        EXPECT_EQ(prompt.shown.at(0).title, row.shownTitle);
        EXPECT_EQ(prompt.shown.at(0).body, row.body);
        EXPECT_EQ(prompt.shown.at(0).style.buttons, BoxButtons::YesNo);
    }
}
