#include "picture/CablePicture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "picture/Svg.h"

namespace kelvora {
namespace {

// Letters are 0.6 of their size wide, about.
TEST(CablePicture, WordsStandInItAndApartInEachLanguage)
{
    for (const char* const language : {"ENG", "ITA", "DEU"}) {
        std::ifstream file(std::string(KELVORA_DATA "/Zel") + language + ".mes", std::ios::binary);
        const std::string messages{std::istreambuf_iterator<char>(file), {}};
        const std::string svg = CablePicture(MessageCatalogue(messages, language), "#000000");
        EXPECT_TRUE(IsWellFormed(svg));
        int width = 0;
        int height = 0;
        ASSERT_EQ(std::sscanf(&svg[svg.find("viewBox")], "viewBox=\"0 0 %d %d", &width, &height), 2);
        const std::vector<DrawnText> words = TextsOf(svg);
        EXPECT_EQ(words.size(), 5U);
        const auto half = [](const DrawnText& word) {
            return static_cast<int>(word.text.size()) * word.size * 3 / 10;
        };
        for (const DrawnText& word : words) {
            EXPECT_TRUE(word.x >= half(word) && word.x + half(word) <= width &&
                        word.y + word.size / 2 <= height)
                << word.text;
            for (const DrawnText& other : words)
                EXPECT_TRUE(&word == &other || std::abs(word.y - other.y) >= word.size ||
                            std::abs(word.x - other.x) >= half(word) + half(other))
                    << word.text << " and " << other.text;
        }
    }
}

}  // namespace
}  // namespace kelvora
