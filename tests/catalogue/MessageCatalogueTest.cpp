#include "catalogue/MessageCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

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
    const auto check = [&](const std::string& reason, const std::string& lines, const std::string& text) {
        EXPECT_EQ(Catalogue(lines).Lookup(5), text) << reason;
    };
    check("longer numbers do not count", "0050, No \r\n105, No \r\n005, Five \r\n", "Five ");
    check("the first of two lines", "005, One \r\n005, Two \r\n", "One ");
    check("a number inside a line", "004, a 005, No \r\n005, Five \r\n", "Five ");
    check("without its blank the next line belongs to it", "005, a\r\n006, b \r\n", "a\r\n006, b ");
    check("cut at 128 characters", "005, " + x125 + "yyyy \r\n", x125 + "yyy");
    check("125 characters and the end mark fit", "005, " + x125 + " \r\n", x125 + " ");
    check("the end mark must lie within the 128", "005, " + x125 + "y \r\n", x125 + "y \r");
    check("the text ends the file", "005, end", "end");
    check("three digits, a comma and a blank",
          "5, a\r\n05, b\r\n0 5, c\r\n+05, d\r\n005; e\r\n005,f\r\n005, g \r\n", "g ");
    check("the file ends in a number", "00", Catalogue("").Lookup(5));
    check("not there", "006, x \r\n", "Message id \r\n005, \r\n{not found in ZEL localization fileENG.MES}");
    EXPECT_EQ(Catalogue("005, a\r\n006, b \r\n").Lookup(6), "b ") << "a line that another one swallowed";
    EXPECT_EQ(Catalogue("").Lookup(1000).find("Message id \r\n1000, \r\n{"), 0U);
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
    const MessageId known{2, "unused"}, title{1, "unused"}, own{600, "Own?"}, systems{3, "unused"};
    const auto check = [&](const MessageId& message, const MessageId& title, const std::string& extra,
                           const std::string& shownTitle, const std::string& body) {
        FakePrompt prompt;
        prompt.answers = {Answer::Yes};
        Texts texts(prompt);
        texts.Speak(Catalogue("001, Title \r\n002, Body \r\n"));
        EXPECT_EQ(texts.Show(message, YesNoStyle, extra, title), Answer::Yes);
        EXPECT_EQ(prompt.shown.at(0).title, shownTitle);
        EXPECT_EQ(prompt.shown.at(0).body, body);
        EXPECT_EQ(prompt.shown.at(0).style.buttons, BoxButtons::YesNo);
    };
    check(known, title, "", "Title ", "Body ");
    check(known, {}, "more", "Kelvora", "Body \r\nmore");
    check(own, {}, "more", "Kelvora", "Own?\r\nmore");
    check(systems, {}, "", "Kelvora", Catalogue("").Lookup(3));
}
