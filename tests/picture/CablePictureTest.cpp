#include "picture/CablePicture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "picture/Svg.h"

namespace kelvora {

// Letters are taken to be 0.6 of their size wide.
TEST(CablePicture, WordsStandInItAndApartInEachLanguage)
{
    for (const char* const language : {"ENG", "ITA", "DEU"}) {
        std::ifstream file(std::string(KELVORA_DATA "/Zel") + language + ".mes", std::ios::binary);
        const MessageCatalogue catalogue(std::string(std::istreambuf_iterator<char>(file), {}), language);
        const std::vector<DrawnText> words = TextsOf(CablePicture(catalogue, "#000000"));
        EXPECT_EQ(words.size(), 5U);
        for (const DrawnText& word : words) {
            const int half = static_cast<int>(word.text.size()) * word.size * 3 / 10;
            EXPECT_TRUE(word.x >= half && word.x + half <= CablePictureWidth) << word.text;
            for (const DrawnText& other : words)
                EXPECT_TRUE(&word == &other || std::abs(word.y - other.y) >= word.size ||
                            std::abs(word.x - other.x) >= 2 * half)
                    << word.text << " and " << other.text;
        }
    }
}

}  // namespace kelvora
