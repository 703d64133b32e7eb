#include "layout/LayoutRules.h"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace kelvora;

namespace {

/// The enabled entries by letter: (K)master, (6)4, (M)CR, (I)CCR, (A)dd, (D)elete, mo(V)e; then the count.
void Check(std::initializer_list<std::uint8_t> codes, const std::string& expected)
{
    ModuleList modules;
    for (const std::uint8_t code : codes)
        modules.push_back(CreateRecord(code, static_cast<std::uint8_t>(modules.size())));
    const LayoutState state = LayoutStateOf(modules);
    const std::pair<bool, char> entries[]{{state.addMaster, 'K'}, {state.addKB64, '6'}, {state.addMCR, 'M'},
                                          {state.addICCR, 'I'},   {state.add, 'A'},     {state.del, 'D'},
                                          {state.move, 'V'}};
    std::string text;
    for (const auto& [enabled, letter] : entries)
        text += enabled ? letter : '-';
    EXPECT_EQ(text + std::to_string(state.moduleCount), expected);
}

}  // namespace

TEST(LayoutRules, EnablesWhatTheChainAllows)
{
    Check({}, "K---A--0");
    Check({214}, "-6MIAD-1");
    Check({214, 23, 4}, "-6MIAD-1");  // parts do not count
    Check({214, 23, 4, 191}, "--MIAD-2");
    Check({214, 23, 4, 1}, "-6-IAD-2");
    Check({214, 23, 4, 8}, "-6M-AD-2");
    Check({214, 23, 4, 3, 8}, "-6--ADV3");
    Check({214, 23, 4, 8, 3, 191}, "-----DV4");
    Check({191, 3, 8}, "K---A--0");  // a file may lack the master
}
