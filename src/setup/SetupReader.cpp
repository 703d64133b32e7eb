#include "setup/SetupReader.h"

#include <string>

#include "setup/DeviceCode.h"
#include "setup/KeyMapPicture.h"
#include "setup/Options.h"
#include "setup/SetupError.h"
#include "setup/SetupLines.h"

namespace kelvora {

namespace {

[[noreturn]] void RefuseModule(std::size_t line, Expected expected)
{
    throw SetupError(SetupErrorNumber::ModuleRefused, line, expected);
}

class Reader {
public:
    explicit Reader(RepeatedKinds repeated) : repeated_(repeated)
    {
        document_.Modules.reserve(MaximumModules);
    }

    void TakeHead(const SetupLine& line);
    void TakeKeyword(const SetupLine& line);

    SetupDocument Take() { return std::move(document_); }

private:
    // The record that the current section's lines go to; null before the first module section.
    ModuleRecord* CurrentRecord();
    ModuleRecord& RecordOf(ModuleKind kind, const SetupLine& line);

    void TakeFiscal(const SetupLine& line);
    void TakeBacklight(const SetupLine& line);
    void TakeTracks(const SetupLine& line);
    void TakeSeparator(const SetupLine& line, std::size_t track);
    void TakeAutoread(const SetupLine& line);
    void TakeKeyMap(const SetupLine& line);

    RepeatedKinds repeated_;
    SetupDocument document_;
    ModuleKind section_ = ModuleKind::None;
};

void Reader::TakeHead(const SetupLine& line)
{
    section_ = KindOfSection(line.name);
    if (section_ == ModuleKind::KM096 && !document_.Modules.empty())
        RefuseModule(line.number, Expected::MasterFirst);
    if (repeated_ == RepeatedKinds::Refuse && FindModule(document_.Modules, section_))
        RefuseModule(line.number, Expected::OneOfAKind);
    // None for the header and for sections of somebody else's.
    for (const char code : NewDeviceCodes(section_))
        if (!AppendModule(document_, static_cast<std::uint8_t>(code)))
            RefuseModule(line.number, Expected::Room);
}

ModuleRecord* Reader::CurrentRecord()
{
    // The lines of a second section of one kind go to the first module of that kind too.
    const auto index = FindModule(document_.Modules, section_);
    return index ? &document_.Modules[*index] : nullptr;
}

ModuleRecord& Reader::RecordOf(ModuleKind kind, const SetupLine& line)
{
    ModuleRecord* record = CurrentRecord();
    if (section_ != kind || !record)
        RejectLine(line.number, Expected::KeyOfSection);
    return *record;
}

void Reader::TakeFiscal(const SetupLine& line)
{
    ModuleRecord& record = RecordOf(ModuleKind::KM096, line);
    if (line.value != "YES" && line.value != "NO")
        RejectLine(line.number, Expected::YesOrNo);
    record.Options = line.value == "YES" ? Options::Yes : Options::No;
}

void Reader::TakeBacklight(const SetupLine& line)
{
    RecordOf(ModuleKind::KM096, line);
    if (line.value != "YES" && line.value != "NO")
        RejectLine(line.number, Expected::YesOrNo);
    if (const auto index = FindModule(document_.Modules, ModuleKind::Backlight))
        ChangeDeviceCode(document_.DeviceMap, document_.Modules[*index],
                         line.value == "YES" ? DeviceCode::BacklightOn : DeviceCode::BacklightOff);
}

void Reader::TakeTracks(const SetupLine& line)
{
    ModuleRecord& record = RecordOf(ModuleKind::MCR, line);
    const std::uint8_t code = CodeOfTracks(line.value);
    if (code == DeviceCode::NotInUse)
        RejectLine(line.number, Expected::Tracks);
    ChangeDeviceCode(document_.DeviceMap, record, code);
}

void Reader::TakeSeparator(const SetupLine& line, std::size_t track)
{
    ModuleRecord& record = RecordOf(ModuleKind::MCR, line);
    // "_" could be read, but not be written again: behind a blank it continues the line.
    if (line.value.size() != 1 || line.value == "_")
        RejectLine(line.number, Expected::Separator);
    record.Options[Options::SeparatorAt + track] = line.value.front();
}

void Reader::TakeAutoread(const SetupLine& line)
{
    ModuleRecord& record = RecordOf(ModuleKind::MCR, line);
    if (line.value != "ON" && line.value != "OFF")
        RejectLine(line.number, Expected::OnOrOff);
    record.Options.replace(Options::AutoreadAt, std::string::npos,
                           line.value == "ON" ? Options::On : Options::Off);
}

void Reader::TakeKeyMap(const SetupLine& line)
{
    ModuleRecord* record = CurrentRecord();
    if (!record || section_ == ModuleKind::MCR)
        RejectLine(line.number, Expected::KeyOfSection);
    ReadKeyMapPicture(line.value, *record, line.number);
}

void Reader::TakeKeyword(const SetupLine& line)
{
    if (line.name == "VERSION" || line.name == "DEFAULTCONFIG")
        return;
    if (line.name == "FISCAL")
        TakeFiscal(line);
    else if (line.name == "BACKLIGHT")
        TakeBacklight(line);
    else if (line.name == "TRACKS")
        TakeTracks(line);
    else if (line.name == "TRACK1SEP")
        TakeSeparator(line, 0);
    else if (line.name == "TRACK2SEP")
        TakeSeparator(line, 1);
    else if (line.name == "TRACK3SEP")
        TakeSeparator(line, 2);
    else if (line.name == "AUTOREAD")
        TakeAutoread(line);
    else if (line.name == "KEYMAP")
        TakeKeyMap(line);
    else
        RejectLine(line.number, Expected::KnownKey);
}

}  // namespace

SetupDocument ReadSetup(std::string_view text, RepeatedKinds repeated)
{
    Reader reader(repeated);
    SetupLines lines(text);
    for (SetupLine line = lines.Next(); line.type != SetupLine::Type::End; line = lines.Next()) {
        if (line.type == SetupLine::Type::Head)
            reader.TakeHead(line);
        else
            reader.TakeKeyword(line);
    }
    return reader.Take();
}

std::optional<SetupDocument> TryReadSetup(std::string_view text)
{
    try {
        return ReadSetup(text);
    } catch (const SetupError&) {
        return std::nullopt;
    }
}

SetupDocument ReadDeviceMap(std::string_view deviceMap)
{
    const auto codeAt = [&](std::size_t position) { return static_cast<std::uint8_t>(deviceMap[position]); };
    const auto refuse = [&](std::size_t position, std::uint32_t number, Expected expected) {
        throw DeviceMapError(number, expected, position + 1, codeAt(position));
    };
    if (deviceMap.size() > MaximumModules)
        refuse(MaximumModules, SetupErrorNumber::ModuleRefused, Expected::Room);
    // Its modules are read like a file's sections for the rules alone: the line's own answer says which parts
    // a keyboard has.
    Reader rules(RepeatedKinds::Refuse);
    SetupDocument document;
    document.DeviceMap = deviceMap;
    for (std::size_t position = 0; position < deviceMap.size(); ++position) {
        const ModuleKind kind = KindOf(codeAt(position));
        if (kind == ModuleKind::None)
            continue;
        if (FindModule(document.Modules, kind))
            refuse(position, SetupErrorNumber::ModuleRefused, Expected::OneOfAKind);
        try {
            if (kind == ModuleKind::Backlight)
                rules.TakeKeyword({.name = "BACKLIGHT", .value = "YES"});
            else if (!IsPart(kind))
                rules.TakeHead({.name = KindName(kind)});
        } catch (const SetupError& error) {
            refuse(position, error.Number(), error.ExpectedHere());
        }
        document.Modules.push_back(CreateRecord(codeAt(position), static_cast<std::uint8_t>(position)));
    }
    return document;
}

}  // namespace kelvora
