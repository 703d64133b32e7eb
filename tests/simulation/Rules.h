// What must hold, whatever happens, and the memory that it takes to judge it. README.md says it in words.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "flash/FlashTransfer.h"
#include "simulation/Copies.h"

namespace kelvora::simulation {

namespace Rule {
inline constexpr const char* Flash = "flash";    ///< an image that it held, or one that it was asked to hold
inline constexpr const char* Backup = "backup";  ///< is safe before each write
inline constexpr const char* Whole = "whole";    ///< a file is a version that was saved
inline constexpr const char* Kept = "kept";      ///< what was said to be saved is there after a kill
inline constexpr const char* Unsaved = "unsaved";  ///< no change is lost without a question
inline constexpr const char* Released =
    "released";                                ///< the line is, at the end of an operation, or the user knows
inline constexpr const char* Truth = "truth";  ///< what was told is so
inline constexpr const char* Undo = "undo";    ///< gives back the bytes
inline constexpr const char* Bound = "bound";  ///< no operation outlasts its own
inline constexpr const char* Enabled = "enabled";  ///< nothing that would do nothing
}  // namespace Rule

class Rules {
public:
    explicit Rules(World& world) : world_(world) {}

    /// A save begins, or has come to its end.
    void NoteSaving(const WatchedFiles::Saving& saving);
    /// Somebody else has written that, or taken the file away.
    void NoteForeign(const std::string& path, const std::optional<std::string>& text);
    /// Something that does not tell what it writes may have written there; it said so when `isTold`.
    void NoteWritten(const std::string& path, bool isTold);
    /// Whether anybody has written the file in this step, as far as is known yet, or taken it away.
    bool IsTouched(const std::string& path) const { return touched_.contains(path); }
    /// What the file held is still there, or in its backup.
    void JudgeReplaced(const std::string& path, const std::optional<std::string>& before) const;
    /// The journal has said that it keeps an entry more.
    void NoteJournalled();
    /// How many entries it keeps at least.
    std::size_t Journalled() const { return journalled_; }
    /// How many are there.
    std::size_t JournalEntries();
    /// The step has ended, well or by a kill.
    void EndStep();

    /// An operation with a till.
    struct Work {
        Till& till;
        std::optional<WantedContent> wanted;  ///< that the till may come to hold
        bool isAllowed = false;               ///< the user has said so
        FlashImage before = till.Flash();
        EventLoop::Time start;                  ///< by Loop::Worked
        std::optional<EventLoop::Time> stop{};  ///< when it was asked to stop, by that too
        bool isSound = true;                    ///< nothing was wrong with the disk at its start
        bool isForeign = false;                 ///< somebody else has written meanwhile
        bool takesFiles = false;                ///< it reads setup files as it goes on
        bool isHolding = false;                 ///< it has told the terminal to leave its devices alone
        bool isCommitting = false;              ///< past the point where it can be
    };
    void JudgeCommit(const Work& work);
    bool MayFail(const Work& work) const;
    void JudgeTransfer(const Work& work, const TransferResult& result);
    /// `base` is what the setup's image was built over; null for what the till holds.
    void JudgeVerify(const Work& work, const VerifyResult& result, const FlashImage* base);
    /// What was saved in this step as a dump holds that image.
    void JudgeDump(const FlashImage& image) const;
    /// A setup that was read from a till is all that its flash says of it.
    static void JudgeScan(const SetupDocument& document, const FlashImage& flash);
    /// When it was to stop, it did so in time.
    void JudgeStop(const Work& work) const;
    /// At the end of every operation; `isWarned` when it told that the line may still be held.
    void JudgeEnd(const Work& work, bool isWarned);

    /// The image that the till is to hold, over what it held.
    static FlashImage Wanted(const WantedContent& wanted, const FlashImage& held);

private:
    static void JudgeHeld(const SetupDocument& setup, const FlashImage& flash);
    bool HasLeft(const std::string& path) const;
    bool IsWhole(const std::string& text) const;
    bool IsKept(const FlashImage& image) const;

    World& world_;
    std::map<std::string, std::vector<std::optional<std::string>>> versions_;  ///< what each file may be
    std::map<std::string, int> saving_;  ///< in this step, how many saves of a file have begun and not ended
    std::set<std::string> contested_;    ///< in this step, files that two have saved at once
    std::set<std::string> saved_;        ///< in this step, as it was told
    std::set<std::string> foreign_;      ///< what others have written
    std::set<std::string> touched_;      ///< in this step, see IsTouched
    std::size_t journalled_ = 0;
    std::string journalText_;  ///< as it was looked at last
    std::size_t journalEntries_ = 0;
};

/// Nothing for a text that is none.
std::optional<FlashDump> DumpOf(const std::string& text);

/// Whether a text is the setup's file.
bool IsFileOf(const SetupDocument& document, const std::string& text);

/// Whether a text is what the program makes of the setup or dump that it holds.
bool IsWholeFile(const std::string& text);

}  // namespace kelvora::simulation
