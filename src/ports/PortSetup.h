// What the settings dialog works on: a tab for each port that exists, and the settings text behind each tab.
//
// A tab edits the text at its own place in the row of tabs, not at the number that it bears: without port 1,
// the first tab is Com2 and edits the first text.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "ports/PortSettingsText.h"
#include "setup/PosCfg.h"

namespace kelvora {

class PortSetup {
public:
    /// `ports` are the numbers (1 to 4, ascending) of the ports that exist. Every text starts as the
    /// window's; a choice made on the tab that bears the window's CommsPort is given back to `window` at
    /// once.
    PortSetup(std::vector<int> ports, PosCfg& window);

    /// The numbers that the tabs bear, in their order.
    const std::vector<int>& Tabs() const { return ports_; }

    /// Index of the tab that is in front, from 0. At first it is that of the window's port, or the first one.
    std::size_t Selected() const { return selected_; }
    void Select(std::size_t tab) { selected_ = tab; }

    const std::string& Text() const { return texts_.at(selected_); }
    PortChoices Choices() const { return ReadPortChoices(Text()); }

    void ChooseBaud(int option);
    void ChooseParity(int option) { Take(WithParity(Text(), option)); }
    void ChooseDataBits(int option) { Take(WithDataBits(Text(), option)); }
    void ChooseStopBits(int option) { Take(WithStopBits(Text(), option)); }

private:
    bool IsOfWindow() const;
    void Take(std::string text);

    std::vector<int> ports_;
    PosCfg& window_;
    std::array<std::string, 4> texts_;
    std::size_t selected_ = 0;
};

}  // namespace kelvora
