#include "picture/SheetBlocks.h"

#include "keymap/Models.h"
#include "platform/Encoding.h"
#include "setup/SetupDifferences.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

std::string TitleOf(const MessageCatalogue& catalogue, ModuleKind kind, std::size_t number)
{
    const std::string caption = ModuleCaption(catalogue, kind);
    std::string title = std::to_string(number) + ". " + caption;
    if (caption != KindName(kind))
        title.append(" (").append(KindName(kind)).append(")");
    return Utf8FromText(title);
}

void AppendFacts(const MessageCatalogue& catalogue, const ModuleRecord& record, SheetBlock& block)
{
    if (record.Kind == ModuleKind::Code4)
        block.facts.push_back(Utf8FromText(ModuleCaption(catalogue, record.Kind)));
    for (const ModuleOption& option : OptionsOf(record))
        block.facts.push_back(Utf8FromText(Describe(catalogue, option)));
}

SheetBlock BlockOf(const MessageCatalogue& catalogue, const ModuleRecord& record, std::size_t number,
                   int firstKeyNumber)
{
    SheetBlock block{TitleOf(catalogue, record.Kind, number), {}, nullptr, 0};
    if (FindModel(record.Kind)) {
        block.grid = &record;
        block.firstKeyNumber = firstKeyNumber;
        const int last = firstKeyNumber + record.Rows * record.Columns - 1;
        block.facts.push_back(Utf8FromText(catalogue.Word(Message::SheetKeys) +
                                           std::to_string(firstKeyNumber) + "-" + std::to_string(last)));
    }
    return block;
}

}  // namespace

std::vector<SheetBlock> SheetBlocks(const SetupDocument& document, const MessageCatalogue& catalogue)
{
    std::vector<SheetBlock> blocks;
    for (const ModuleRecord& record : document.Modules) {
        if (!IsPart(record.Kind) || blocks.empty())
            blocks.push_back(
                BlockOf(catalogue, record, blocks.size() + 1, FirstKeyNumber(record.Kind, document.Modules)));
        AppendFacts(catalogue, record, blocks.back());
    }
    if (const std::string codes = UnknownDeviceCodes(document); !codes.empty())
        blocks.push_back(
            {Utf8FromText(Describe(catalogue, ModuleOption{SetupDifference::What::UnknownModules, 0, codes})),
             {},
             nullptr,
             0});
    return blocks;
}

}  // namespace kelvora
