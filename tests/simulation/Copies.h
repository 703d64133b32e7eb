// The programs of the simulation: a copy with its windows, and kelvora-cli. What a person sees and does in a
// window is done here as layout/forms/frmConfig does it, on the same sessions; its boxes and dialogs are
// answered by chance.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "journal/posix/JournalFolder.h"
#include "layout/UndoStep.h"
#include "platform/posix/PosixFiles.h"
#include "recovery/Recovery.h"
#include "recovery/posix/RecoveryFolder.h"
#include "simulation/World.h"
#include "windows/Program.h"

namespace kelvora::simulation {

/// A program's way to a till: closed and deaf once the program is dead, and refused while another has it.
class SharedPort final : public SerialPort {
public:
    SharedPort(World& world, Till& till) : world_(world), till_(till) {}
    SharedPort(const SharedPort&) = delete;
    SharedPort& operator=(const SharedPort&) = delete;
    ~SharedPort() override { Close(); }

    const std::string& Device() const override { return till_.port.Device(); }
    void SetDevice(std::string /*device*/) override {}
    bool Open() override;
    void Close() override;
    bool IsOpen() const override { return IsMine() && till_.port.IsOpen(); }
    PortFailure Failure() const override { return failure_; }
    std::string LastError() const override { return till_.port.LastError(); }
    bool SetSettings(std::string_view settings) override;
    const std::string& Settings() const override { return settings_; }
    void Write(std::string_view bytes) override;
    std::size_t BytesWaiting() const override { return IsMine() ? till_.port.BytesWaiting() : 0; }
    std::string Read(std::size_t limit) override { return IsMine() ? till_.port.Read(limit) : std::string(); }
    void DiscardInput() override;

private:
    bool IsMine() const { return till_.user == this; }

    World& world_;
    Till& till_;
    std::string settings_ = "9600,n,8,1";
    PortFailure failure_ = PortFailure::None;
};

/// Boxes and dialogs that a person answers.
class Person final : public Prompt, public FileDialogs {
public:
    explicit Person(World& world) : world_(world) {}

    Answer Show(std::string_view title, std::string_view body, BoxStyle style) override;
    std::optional<FileDialogChoice> Open(const FileDialogRequest& request) override
    {
        return Choose(request, true);
    }
    std::optional<FileDialogChoice> Save(const FileDialogRequest& request) override
    {
        return Choose(request, false);
    }

    /// One of the names that people give files here.
    std::string Path(const char* ending);
    /// Of a dump that there may be: that name, or one of the program's backups.
    std::string Dump();

    std::map<std::string, Answer> answers;  ///< since Begin, by the box's text

private:
    std::optional<FileDialogChoice> Choose(const FileDialogRequest& request, bool isForOpening);

    World& world_;
};

/// Files that remember what was to be written, and what was said to be.
class WatchedFiles final : public Files {
public:
    struct Saving {
        std::string path;
        std::string text;
        bool isDone = false;
    };

    std::string Read(const std::string& path) const override { return files_.Read(path); }
    bool Exists(const std::string& path) const override { return files_.Exists(path); }
    void Copy(const std::string& from, const std::string& to) override;
    void Write(const std::string& path, const std::string& text) override;
    std::vector<std::string> List(const std::string& folder) const override { return files_.List(folder); }
    void MakeFolder(const std::string& folder) override { files_.MakeFolder(folder); }
    void Remove(const std::string& path) override { files_.Remove(path); }
    std::unique_ptr<const Files> ForThread() const override { return files_.ForThread(); }

    std::function<void(const Saving&)> onSaving;  ///< called before and after

private:
    PosixFiles files_;
};

inline constexpr const char* DataFolder = "/sim/data";

/// A setup window.
struct Window {
    Window(SetupDesk& desk, SetupMode mode) : session(desk, mode) {}

    void Push(SetupDocument after, std::optional<WindowFile> fileBefore = std::nullopt);
    void Undo() { clean = edits.at(--at).step.Turn(session) ? clean : std::nullopt; }
    void Redo() { clean = edits.at(at++).step.Turn(session) ? clean : std::nullopt; }
    bool IsChanged() const { return at != clean; }

    SetupSession session;
    struct Edit {
        std::string before;  ///< the setup's text
        UndoStep step;
    };
    std::vector<Edit> edits;
    std::size_t at = 0;  ///< edits that are done
    std::optional<std::size_t> clean = 0;
};

/// A copy of the program; kelvora-cli is one without windows.
struct Copy {
    using OnSaving = std::function<void(const WatchedFiles::Saving&)>;

    Copy(World& world, OnSaving onSaving);

    World& world;
    Person person;
    WatchedFiles files;
    SharedPort port1, port2;
    JournalFolder journalFolder;
    Journal journal;
    PosixFiles ownFiles;
    RecoveryFolder recoveryFolder{ownFiles, "/sim/state/recovery"};
    Recovery recovery{recoveryFolder, ownFiles};
    Program program;
    std::vector<std::unique_ptr<Window>> windows;
};

}  // namespace kelvora::simulation
