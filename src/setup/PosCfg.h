// The settings of one setup window, and of the program as a whole.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace kelvora {

/// How a setup was made, and what the next setup window is filled from.
enum class SetupMode : std::int32_t { New = 0, Scan = 1, Open = 2 };

/// How the line is reached; None until a window has chosen.
enum class ConnectionMode : std::int16_t { None = 0, Pos = 1, Keyboard = 2 };

/// The container of a window's module strip, as the settings object asks for its size (in twips).
class ModuleToolbar {
public:
    virtual ~ModuleToolbar() = default;
    virtual int ContainerWidth() const = 0;
    virtual int ContainerHeight() const = 0;
};

class PosCfg {
public:
    /// `panelIndex` is the window's serial number; `toolbar` outlives the object or is null (size 0).
    PosCfg(kelvora::SetupMode mode, std::int16_t panelIndex, const kelvora::ModuleToolbar* toolbar = nullptr)
        : SetupMode(mode), PanelIndex(panelIndex), toolbar_(toolbar)
    {
    }

    kelvora::SetupMode SetupMode;
    std::int16_t PanelIndex;
    std::int16_t InFilterIndex = 1;
    std::int16_t OutFilterIndex = 1;
    std::int16_t CommsPort = 1;  ///< COM1 = 1
    kelvora::ConnectionMode ConnectionMode = kelvora::ConnectionMode::None;
    std::string Name;      ///< the window's caption
    std::string FileName;  ///< lower-cased path of the setup file; empty for none
    std::string InInitDir;
    std::string OutInitDir;
    std::string PortSettings = "9600,n,8,1";  ///< baud, parity letter, data bits, stop bits

    /// Hand-over between a setup window and a key mapping form: on the way in the key map and one character
    /// whose code is the module's first key number, on the way out the bare key map.
    std::string Xchange;

    /// Index into the baud table: 0 to 7 for 19200, 9600, 4800, 2400, 1200, 600, 300, 150.
    std::int16_t BaudRate() const { return baudRate_; }

    /// Stores the index and rewrites what stands before the first "," of PortSettings; an index outside the
    /// table leaves the baud part empty.
    void SetBaudRate(std::int16_t index);

    const kelvora::ModuleToolbar* ModuleToolbar() const { return toolbar_; }
    int ContainerWidth() const { return toolbar_ ? toolbar_->ContainerWidth() : 0; }
    int ContainerHeigth() const { return toolbar_ ? toolbar_->ContainerHeight() : 0; }
    std::chrono::system_clock::time_point CreationDate() const { return created_; }

private:
    std::int16_t baudRate_ = 1;
    const kelvora::ModuleToolbar* toolbar_;
    std::chrono::system_clock::time_point created_ = std::chrono::system_clock::now();
};

/// The text of an index in the baud table; empty for an index outside it.
std::string_view BaudText(int index);

/// The index in the baud table of what stands before the first "," of a settings string; 1 (9600) for any
/// other speed.
std::int16_t BaudIndexOf(std::string_view settings);

}  // namespace kelvora
