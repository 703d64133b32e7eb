#include "simulation/Copies.h"

#include "setup/SetupWriter.h"

namespace kelvora::simulation {

bool SharedPort::Open()
{
    failure_ = till_.user && !IsMine() ? PortFailure::InUse : PortFailure::None;
    if (world_.IsDead())
        failure_ = PortFailure::Missing;
    if (failure_ != PortFailure::None)
        return false;
    till_.port.SetSettings(settings_);
    if (!till_.port.Open()) {
        failure_ = till_.port.Failure();
        return false;
    }
    till_.user = this;
    till_.port.onBytes = [this] {
        if (onBytes && !world_.IsDead())
            onBytes();
    };
    till_.port.onLost = [this] {
        failure_ = till_.port.Failure();
        till_.user = nullptr;
        if (onLost)
            onLost();
    };
    return true;
}

void SharedPort::Close()
{
    if (!IsMine())
        return;
    till_.port.Close();
    till_.user = nullptr;
}

bool SharedPort::SetSettings(std::string_view settings)
{
    if (!ParseSerialSettings(settings))
        return false;
    settings_ = settings;
    return !IsMine() || till_.port.SetSettings(settings);
}

void SharedPort::Write(std::string_view bytes)
{
    if (IsMine() && world_.Moment())
        till_.port.Write(bytes);
}

void SharedPort::DiscardInput()
{
    if (IsMine())
        till_.port.DiscardInput();
}

Answer Person::Show(std::string_view /*title*/, std::string_view body, BoxStyle style)
{
    if (!world_.Moment())
        return style.defaultAnswer;
    world_.told.emplace_back(body);
    std::vector<Answer> buttons{Answer::Ok};
    if (style.buttons == BoxButtons::OkCancel)
        buttons = {Answer::Ok, Answer::Ok, Answer::Cancel};
    else if (style.buttons == BoxButtons::YesNo)
        buttons = {Answer::Yes, Answer::Yes, Answer::No};
    else if (style.buttons == BoxButtons::YesNoCancel)
        buttons = {Answer::Yes, Answer::Yes, Answer::No, Answer::Cancel};
    return answers[std::string(body)] = world_.random.Of(buttons);
}

std::string Person::Path(const char* ending)
{
    return "/sim/shop/till" + std::to_string(world_.random.Below(3)) + ending;
}

std::string Person::Dump()
{
    const std::string folder = std::string(DataFolder) + "/backups";
    const auto backups = world_.disk.List(folder);
    return backups.empty() || world_.random.Once(2) ? Path(".mem") : folder + "/" + world_.random.Of(backups);
}

std::optional<FileDialogChoice> Person::Choose(const FileDialogRequest& request, bool isForOpening)
{
    if (!world_.Moment() || world_.random.Once(6))
        return std::nullopt;
    const bool isDump = request.name == "cdgFlashDump";
    const std::string path = isDump && isForOpening ? Dump() : Path(isDump ? ".mem" : ".dat");
    return FileDialogChoice{path, path.substr(0, path.rfind('/')), 1};
}

void WatchedFiles::Copy(const std::string& from, const std::string& to)
{
    Saving saving{to, Read(from)};
    onSaving(saving);
    files_.Copy(from, to);
    saving.isDone = true;
    onSaving(saving);
}

void WatchedFiles::Write(const std::string& path, const std::string& text)
{
    Saving saving{path, text};
    onSaving(saving);
    files_.Write(path, text);
    saving.isDone = true;
    onSaving(saving);
}

void Window::Push(SetupDocument after, std::optional<WindowFile> fileBefore)
{
    edits.erase(edits.begin() + static_cast<std::ptrdiff_t>(at), edits.end());
    if (clean && *clean > at)
        clean.reset();
    edits.push_back(
        {WriteSetup(session.document.Modules), {session, std::move(after), std::move(fileBefore)}});
    ++at;
}

Copy::Copy(World& given, OnSaving onSaving)
    : world(given),
      person(world),
      port1(world, *world.tills[0]),
      port2(world, *world.tills[1]),
      journalFolder(files, DataFolder),
      journal(
          journalFolder, {"anna", "kelvora", "1.0"},
          [](std::string_view text) { return std::to_string(text.size()); },
          [this] { return world.WallTime(); }),
      program({files, person, person, world.loop, {&port1, &port2}, &journal, DataFolder},
              {"/sim/program", "/sim/anna"})
{
    files.onSaving = std::move(onSaving);
}

}  // namespace kelvora::simulation
