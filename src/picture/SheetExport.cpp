#include "picture/SheetExport.h"

#include <algorithm>
#include <array>

#include "app/ShowMessage.h"
#include "platform/Encoding.h"

namespace kelvora {

namespace {

struct TypeRow {
    PictureType type;
    MessageId filter;
};

// In the order of the dialog's filters.
constexpr std::array Types{TypeRow{PictureType::Pdf, Message::FilterPdf},
                           TypeRow{PictureType::Png, Message::FilterPng},
                           TypeRow{PictureType::Svg, Message::FilterSvg}};
static_assert(Types.size() == PictureTypeNames.size());

std::string Ending(PictureType type)
{
    return "." + std::string(PictureTypeName(type));
}

std::string Filters(const MessageCatalogue& catalogue)
{
    std::string filters;
    for (const TypeRow& row : Types) {
        const std::string pattern = "*" + Ending(row.type);
        filters.append(filters.empty() ? "" : "|").append(catalogue.Caption(row.filter));
        filters.append(" (").append(pattern).append(")|").append(pattern);
    }
    return filters;
}

// What the file's name says goes before what was chosen beside it.
PictureType TakeType(std::string& path, int filterIndex)
{
    if (const auto type = PictureTypeOf(path))
        return *type;
    const auto chosen = static_cast<std::size_t>(std::clamp(filterIndex, 1, static_cast<int>(Types.size())));
    const PictureType type = Types.at(chosen - 1).type;
    path += Ending(type);
    return type;
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
    const PictureType type = TakeType(path, choice->filterIndex);
    if (!MayWrite(program, path))
        return;
    const std::string picture = convert(type, sheet.svg);
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
