#include "picture/SheetExport.h"

#include <algorithm>
#include <array>
#include <optional>

#include "app/ShowMessage.h"
#include "layout/SetupFileCommands.h"
#include "platform/Encoding.h"

namespace kelvora {

namespace {

struct TypeRow {
    PictureType type;
    std::string_view ending;
    MessageId filter;
};

// In the order of the dialog's filters.
constexpr std::array Types{TypeRow{PictureType::Pdf, ".pdf", Message::FilterPdf},
                           TypeRow{PictureType::Png, ".png", Message::FilterPng},
                           TypeRow{PictureType::Svg, ".svg", Message::FilterSvg}};
static_assert(Types.size() == static_cast<std::size_t>(PictureType::Last) + 1);

std::string Filters(const MessageCatalogue& catalogue)
{
    std::string filters;
    for (const TypeRow& row : Types) {
        const std::string pattern = "*" + std::string(row.ending);
        filters.append(filters.empty() ? "" : "|").append(catalogue.Caption(row.filter));
        filters.append(" (").append(pattern).append(")|").append(pattern);
    }
    return filters;
}

// What the file's name says goes before what was chosen beside it.
const TypeRow& TakeType(std::string& path, int filterIndex)
{
    for (const TypeRow& row : Types)
        if (LowerCase(path).ends_with(row.ending))
            return row;
    const auto chosen = static_cast<std::size_t>(std::clamp(filterIndex, 1, static_cast<int>(Types.size())));
    path += Types.at(chosen - 1).ending;
    return Types.at(chosen - 1);
}

bool MayWrite(const Program& program, const std::string& path)
{
    return !program.world.files.Exists(path) ||
           program.Show(Message::Overwrite, YesNoStyle, TextFromPath(path)) == Answer::Yes;
}

}  // namespace

void ExportSheet(Program& program, const SheetExport& sheet,
                 const std::function<std::string(PictureType type, const std::string& svg)>& convert)
{
    const MessageCatalogue& catalogue = program.catalogue;
    const auto choice =
        program.world.fileDialogs.Save({catalogue.Caption(Message::ExportTitle), sheet.folder,
                                        sheet.offeredName, Filters(catalogue), 1, "cdgExport"});
    if (!choice)
        return;
    std::string path = choice->path;
    const TypeRow& row = TakeType(path, choice->filterIndex);
    if (!MayWrite(program, path))
        return;
    const std::string picture = convert(row.type, sheet.svg);
    if (picture.empty()) {
        program.Show(Message::PictureNotMade, {BoxIcon::Exclamation});
        return;
    }
    try {
        program.world.files.Write(path, picture);
    } catch (const FileError& error) {
        program.Show(Message::FileNotWritten, {BoxIcon::Exclamation},
                     TextFromPath(error.Path()) + "\r\n" + error.what());
    }
}

}  // namespace kelvora
