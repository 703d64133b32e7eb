// Nothing grows: what is opened and closed leaves the memory where it was. The sanitizer finds only what
// nobody knows of any more at the program's end. KELVORA_ROUNDS=1000 looks longer, and says how much it is.
#include <malloc.h>

#include <QPixmapCache>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <limits>

#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "picture/forms/SetupsDialog.h"

// Only a program with the sanitizer has it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace kelvora {
namespace {

/// The most that a round may leave, in bytes: far less than the smallest window, and more than what a table
/// of Qt's grows by now and then.
constexpr double MostLeft = 64;

// What the program has taken and not given back.
double LiveBytes()
{
    if (__sanitizer_get_current_allocated_bytes)
        return static_cast<double>(__sanitizer_get_current_allocated_bytes());
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

class Growth : public MainWindowFixture {
protected:
    Growth() : MainWindowFixture(true)
    {
        // Qt keeps drawn icons for a while, up to a limit of its own.
        QPixmapCache::setCacheLimit(0);
        Start();
    }

    static void Settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    void CloseWindow()
    {
        Settle();
        prompt.answers = {Answer::No};
        window->AllSetups().front()->parentWidget()->close();
        Settle();
    }
    /// What `round` leaves each time, in bytes. What is made once, whenever that is, does not count.
    double Left(const char* what, int rounds, const std::function<void()>& round)
    {
        const char* const asked = std::getenv("KELVORA_ROUNDS");
        if (asked)
            rounds = std::atoi(asked);
        const auto repeat = [&] {
            for (int i = 0; i < rounds; ++i) {
                round();
                prompt.shown.clear();
                dialogs.asked.clear();
            }
            return LiveBytes();
        };
        double before = repeat();
        double left = std::numeric_limits<double>::max();
        for (int i = 0; i < 4; ++i) {
            const double after = repeat();
            left = std::min(left, (after - before) / rounds);
            before = after;
        }
        if (asked)
            std::cout << what << ": " << left << " bytes a round\n" << std::flush;
        return left;
    }
};

TEST_F(Growth, WindowsLeaveNothing)
{
    files.Write(path, "[Kelvora]\r\nVersion = 2.0\r\n");
    const auto check = [&](const char* what, int rounds, const std::function<void()>& round) {
        EXPECT_LT(Left(what, rounds, round), MostLeft) << what;
        EXPECT_TRUE(window->AllSetups().empty()) << what;
    };
    check("window with its key form", 6, [this] {
        Trigger(Command::FileMenuNew);
        Trigger(Command::LayoutMenuAddKBMASTER);
        InDialog<frmKeyb>([this] { Click(StripButton::Master); }, [](frmKeyb& form) { Press(form, "Back"); });
        CloseWindow();
    });
    check("scan", 3, [this] {
        Run(Command::FileMenuScan);
        CloseWindow();
    });
    check("comparison", 6, [this] {
        window->OpenFiles({PathToQString(path)});
        Choose("Till.dat");
        auto& menu = Find<QMenu>(*window, "FileMenuCompare");
        emit menu.aboutToShow();
        menu.actions().constFirst()->trigger();
        Opened<SetupsDialog>()->close();
        CloseWindow();
    });
}

}  // namespace
}  // namespace kelvora
