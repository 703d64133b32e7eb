// One setup window without the window: its settings, its setup, its file, and what its commands do to them.
// Undo and the changed mark belong to the window, which hands them in where a rule asks for them.
#pragma once

#include <optional>
#include <string>

#include "flash/DumpSource.h"
#include "flash/FlashImage.h"
#include "layout/LineScan.h"
#include "layout/SetupDesk.h"
#include "layout/SetupFileCommands.h"
#include "setup/PosCfg.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// What comes of the wish to close a window.
enum class Closing {
    Stay,     ///< the user, or an operation, keeps the window
    Unsaved,  ///< it may close as it is: unchanged, or the changes are given up
    Saved,    ///< it was saved and may close
};

/// Under which file and which name a window holds its setup, and what it knows of the device's flash.
struct WindowFile {
    SetupFile file;
    std::string name;
    std::optional<FlashImage> image;
    DumpSource source;               ///< of `image`, and of `base`
    std::optional<FlashImage> base;  ///< see SetupSession::BaseImage
    std::string saved{};             ///< the setup's text as the file was last read or written
};

class SetupSession {
public:
    /// Takes the program's defaults and the next window number. `desk` outlives the session.
    SetupSession(SetupDesk& desk, SetupMode mode, const ModuleToolbar* toolbar = nullptr);

    /// Fills the window as its setup mode says: with `opened` in mode Open, else anew.
    void Load(std::optional<OpenedSetup> opened);

    /// Each returns whether the setup was written. Save without a file asks for one.
    bool Save();
    bool SaveAs();

    /// Whether the window may close. A changed setup is asked about, and saved on Yes; while the program is
    /// busy nothing is asked and the window stays.
    Closing AskToClose(bool changed);

    /// Puts the key map of that module and its first key number into Xchange, for a key mapping form.
    /// False when the setup has no such module.
    bool HandOver(ModuleKind kind);

    /// The setup with another key map of that module; nothing when it has that one, or no such module.
    std::optional<SetupDocument> WithKeyMap(ModuleKind kind, const std::string& map) const;

    /// Whether the window waits for a scan of its line, or is in it.
    bool IsScanning() const;

    /// The window is to be filled from its line anew.
    void StartScanning();

    /// Scans the line and ends the waiting: the window has no file and its own name from then on. The setup
    /// that came is the caller's to take; the flash image that came becomes the device's.
    ScanOutcome Scan(const LineHooks& hooks);

    WindowFile HeldAs() const
    {
        return {file_, settings.Name, deviceImage_, deviceSource_, baseImage_, saved_};
    }
    void HoldAs(const WindowFile& file);

    SetupDesk& Desk() const { return desk_; }
    const SetupFile& File() const { return file_; }

    PosCfg settings;
    SetupDocument document;

    /// What the device at the window's port held when its flash was last read. Null when it was not.
    const FlashImage* DeviceImage() const { return HereOnly(deviceImage_); }
    /// Where and when an image was last read, at whatever port.
    const DumpSource& DeviceSource() const { return deviceSource_; }

    /// The image that the setup's own is built over: what the device at the window's port held when the setup
    /// was read from it or written to it. Null when neither was done there.
    const FlashImage* BaseImage() const { return HereOnly(baseImage_); }

    /// The device at the window's port holds that image.
    void HoldAsDevice(const FlashImage& image, const LineResult& line);

    /// The same, and the setup goes with it.
    void HoldAsBase(const FlashImage& image, const LineResult& line);

    /// Where a dump comes from that is made now at the window's port.
    DumpSource SourceNow(std::string deviceMap, std::string terminal) const;

private:
    std::optional<bool> SaveTo(const SetupFile& file);
    std::optional<bool> Write(bool asksForName);
    void SetFile(const SetupFile& file);
    bool IsFromHere() const { return deviceSource_.origin.port == settings.CommsPort; }
    const FlashImage* HereOnly(const std::optional<FlashImage>& image) const
    {
        return image && IsFromHere() ? &*image : nullptr;
    }

    SetupDesk& desk_;
    SetupFile file_;
    std::string saved_;        ///< see WindowFile
    DumpSource deviceSource_;  ///< of both images, so that neither passes for another port's
    std::optional<FlashImage> deviceImage_;
    std::optional<FlashImage> baseImage_;
};

}  // namespace kelvora
