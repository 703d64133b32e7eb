// Makes pictures for the command line, which has no Qt Gui of its own: reads drawings from standard input and
// writes them to standard output as pictures (see picture/PictureRecords.h).
//   kelvora-picture png|pdf
#include <QGuiApplication>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#include "picture/PictureRecords.h"
#include "picture/PictureType.h"
#include "picture/qt/PictureFiles.h"

int main(int argc, char** argv)
{
    // No window is shown, so no display is needed; what Qt says about the lack of one helps nobody.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QGuiApplication application(argc, argv);
    const auto type = kelvora::PictureTypeNamed(argc > 1 ? argv[1] : "");
    if (!type || type == kelvora::PictureType::Svg) {
        std::cerr << "usage: kelvora-picture png|pdf (kelvora-cli render starts it)\n";
        return 2;
    }
    std::ios::sync_with_stdio(false);
    const std::string input{std::istreambuf_iterator<char>(std::cin), {}};
    std::string_view rest = input;
    while (!rest.empty()) {
        const auto pages = kelvora::TakePictureRecord(rest);
        if (!pages)
            return 2;
        const std::string picture =
            type == kelvora::PictureType::Png ? kelvora::PngOf(pages->front()) : kelvora::PdfOf(*pages);
        std::cout << kelvora::PictureRecord({&picture, 1});
    }
    return std::cout.flush() ? 0 : 1;
}
