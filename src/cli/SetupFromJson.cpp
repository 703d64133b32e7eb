#include "cli/SetupFromJson.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "cli/SetupJson.h"
#include "cli/UniqueJson.h"
#include "keymap/Models.h"
#include "platform/Encoding.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"
#include "setup/SetupErrorText.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

using PlainJson = nlohmann::json;
using Pointer = PlainJson::json_pointer;

[[noreturn]] void Expect(const Pointer& at, const std::string& expected)
{
    throw JsonError(at.to_string(), "expected " + expected);
}

struct Member {
    const char* name;
    bool isRequired;
};

constexpr std::array SetupMembers{Member{"$schema", false}, Member{"file", false}, Member{"deviceMap", false},
                                  Member{"modules", true}};
constexpr std::array ModuleMembers{Member{"position", false},  Member{"kind", true},
                                   Member{"deviceCode", true}, Member{"firstKeyNumber", false},
                                   Member{"keyMap", true},     Member{"options", true}};

// That it is an object of these members.
void CheckMembers(const PlainJson& object, std::span<const Member> members, const Pointer& at)
{
    if (!object.is_object())
        Expect(at, "an object");
    std::string names;
    for (const Member& member : members) {
        if (member.isRequired && !object.contains(member.name))
            Expect(at, std::string("the member \"") + member.name + "\"");
        names += (names.empty() ? "" : ", ") + std::string(member.name);
    }
    for (const auto& [name, value] : object.items())
        if (std::ranges::find(members, name, &Member::name) == members.end())
            Expect(at / name, "no member but " + names);
}

std::string TextAt(const PlainJson& object, const char* name, const Pointer& at)
{
    const PlainJson& value = object.at(name);
    if (!value.is_string())
        Expect(at / name, "a text");
    const auto text = TextFromUtf8(value.get_ref<const std::string&>());
    if (!text)
        Expect(at / name, "characters that a setup can hold");
    return *text;
}

// A member that may be missing must be what follows from the others. A number counts by its value: 3.0 is 3.
void CheckAgrees(const PlainJson& object, const char* name, const PlainJson& value, const Pointer& at)
{
    if (object.contains(name) && object.at(name) != value)
        Expect(at / name, value.dump());
}

ModuleKind KindAt(const PlainJson& module, const Pointer& at)
{
    constexpr std::array Kinds{ModuleKind::KM096, ModuleKind::Backlight, ModuleKind::Code4,
                               ModuleKind::KM064, ModuleKind::MCR,       ModuleKind::ICCR};
    const std::string name = TextAt(module, "kind", at);
    std::string names;
    for (const ModuleKind kind : Kinds) {
        if (KindName(kind) == name)
            return kind;
        names.append(names.empty() ? "" : ", ").append(KindName(kind));
    }
    Expect(at / "kind", "one of " + names);
}

// The modules of a file with such sections, as the reader makes and judges them.
ModuleList ReadChain(const std::vector<ModuleKind>& kinds, const Pointer& at)
{
    std::string heads;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < kinds.size(); ++i)
        if (!IsPart(kinds[i])) {
            heads.append("[").append(KindName(kinds[i])).append("]\n");
            places.push_back(i);
        }
    try {
        return ReadSetup(heads).Modules;
    } catch (const SetupError& error) {
        Expect(at / places.at(error.Line() - 1) / "kind", ExpectedText(MessageCatalogue(), error));
    }
}

// That the line has these modules, the parts of a main keyboard where they belong.
void CheckChain(const std::vector<ModuleKind>& kinds, const Pointer& at)
{
    const ModuleList chain = ReadChain(kinds, at);
    for (std::size_t i = 0; i < kinds.size(); ++i)
        if (i >= chain.size() || chain[i].Kind != kinds[i])
            Expect(at / i / "kind", i < chain.size() ? std::string(KindName(chain[i].Kind))
                                                     : "parts behind their main keyboard alone");
    if (chain.size() > kinds.size())
        Expect(at, std::string(KindName(chain[kinds.size()].Kind)) + " behind these");
}

std::string OptionsText(ModuleKind kind)
{
    switch (kind) {
        case ModuleKind::KM096:
        case ModuleKind::Backlight:
            return R"("YES" or "NO ", which agrees with the device code)";
        case ModuleKind::MCR:
            return R"("1,2  " or "2,3  " or "1,2,3", then three characters that a setup file can carry )"
                   R"(("^" for none), then "ON " or "OFF")";
        default:
            return "an empty text";
    }
}

// The record as a file of its module would bring it back; nothing when it would be rejected. A part has no
// section of its own: it is what its device code makes it.
std::optional<ModuleRecord> ReadBack(const ModuleRecord& record)
{
    if (IsPart(record.Kind))
        return CreateRecord(record.DeviceCode, 0);
    const auto read = TryReadSetup(WriteSetup({&record, 1}));
    return read ? std::optional(read->Modules.front()) : std::nullopt;
}

std::uint8_t CodeAt(const PlainJson& module, ModuleKind kind, const Pointer& at)
{
    const PlainJson& value = module.at("deviceCode");
    for (int code = 1; code < DeviceCode::Unknown; ++code)
        if (KindOf(static_cast<std::uint8_t>(code)) == kind && value == PlainJson(code))
            return static_cast<std::uint8_t>(code);
    Expect(at / "deviceCode", "a device code of " + std::string(KindName(kind)));
}

ModuleRecord RecordAt(const PlainJson& module, ModuleKind kind, const Pointer& at)
{
    ModuleRecord record = CreateRecord(CodeAt(module, kind, at), 0);
    std::string keyMap = TextAt(module, "keyMap", at);
    std::string options = TextAt(module, "options", at);
    if (keyMap.size() != record.KeyMap.size())
        Expect(at / "keyMap", std::to_string(record.KeyMap.size()) + " characters");
    record.KeyMap = std::move(keyMap);
    if (const auto back = ReadBack(record); !back || back->KeyMap != record.KeyMap)
        Expect(at / "keyMap", FindModel(kind) ? "key types 0 to 4 or a blank, and only whole larger keys"
                                              : "\"" + CreateRecord(record.DeviceCode, 0).KeyMap + "\"");
    if (options.size() != record.Options.size())
        Expect(at / "options", OptionsText(kind));
    record.Options = std::move(options);
    const auto back = ReadBack(record);
    if (!back || back->Options != record.Options)
        Expect(at / "options", OptionsText(kind));
    if (back->DeviceCode != record.DeviceCode)
        Expect(at / "deviceCode", std::to_string(back->DeviceCode) + " for these options");
    return record;
}

SetupDocument ReadModules(const PlainJson& modules, const Pointer& at)
{
    if (!modules.is_array())
        Expect(at, "a list");
    std::vector<ModuleKind> kinds;
    for (std::size_t i = 0; i < modules.size(); ++i) {
        CheckMembers(modules[i], ModuleMembers, at / i);
        kinds.push_back(KindAt(modules[i], at / i));
    }
    CheckChain(kinds, at);
    SetupDocument document;
    for (std::size_t i = 0; i < modules.size(); ++i) {
        document.Modules.push_back(RecordAt(modules[i], kinds[i], at / i));
        document.Modules.back().Position = static_cast<std::uint8_t>(i);
        document.DeviceMap += static_cast<char>(document.Modules.back().DeviceCode);
    }
    return document;
}

// What is there besides is what the modules say.
void CheckFollowing(const PlainJson& setup, const SetupDocument& document)
{
    const PlainJson follows = PlainJson(SetupObject({}, document));
    CheckAgrees(setup, "$schema", SetupSchema, Pointer());
    if (setup.contains("file") && !setup.at("file").is_string())
        Expect(Pointer("/file"), "a text");
    CheckAgrees(setup, "deviceMap", follows.at("deviceMap"), Pointer());
    for (std::size_t i = 0; i < document.Modules.size(); ++i)
        for (const char* const name : {"position", "firstKeyNumber"})
            CheckAgrees(setup.at("modules").at(i), name, follows.at("modules").at(i).at(name),
                        Pointer("/modules") / i);
}

}  // namespace

SetupDocument SetupFromJson(std::string_view text)
{
    const PlainJson setup = ParseUniqueJson(text);
    CheckMembers(setup, SetupMembers, Pointer());
    SetupDocument document = ReadModules(setup.at("modules"), Pointer("/modules"));
    CheckFollowing(setup, document);
    return document;
}

}  // namespace kelvora
