#include "picture/SheetExport.h"

#include <algorithm>
#include <array>

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

}  // namespace

void ExportSheet(const UserFiles& files, const SheetExport& sheet,
                 const std::function<std::string(PictureType type, const std::string& svg)>& convert)
{
    const Texts& texts = files.Words();
    const auto choice = files.Dialogs().Save({texts.Caption(Message::ExportTitle), sheet.folder,
                                              sheet.offeredName, Filters(texts.Catalogue()), 1, "cdgExport"});
    if (!choice)
        return;
    std::string path = choice->path;
    const PictureType type = TakeType(path, choice->filterIndex);
    if (!files.MayWrite(path))
        return;
    const std::string picture = convert(type, sheet.svg);
    if (picture.empty())
        texts.Show(Message::PictureNotMade, {BoxIcon::Exclamation});
    else
        files.Write(path, picture);
}

}  // namespace kelvora
