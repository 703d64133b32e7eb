// Writes the message file of the English texts:
//   kelvora-english FILE
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "catalogue/AllMessages.h"
#include "catalogue/MessageCatalogue.h"
#include "platform/posix/PosixFiles.h"

namespace {

using namespace kelvora;

std::string EnglishMessageFile()
{
    auto messages = AllMessages;
    std::ranges::sort(messages, {}, &MessageId::id);
    std::string file(CatalogueHeader);
    for (const MessageId& message : messages) {
        file.append(std::to_string(message.id)).append(", ").append(message.text);
        file.append(message.text.ends_with(' ') ? "\r\n" : " \r\n");
    }
    return file;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: kelvora-english FILE\n";
        return EXIT_FAILURE;
    }
    try {
        kelvora::PosixFiles().Write(argv[1], EnglishMessageFile());
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "kelvora-english: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
