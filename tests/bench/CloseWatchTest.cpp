#include "bench/posix/CloseWatch.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <fstream>

#include "fakes/TestFolder.h"

using namespace kelvora::bench;
using kelvora::Descriptor;
namespace fs = std::filesystem;

TEST(CloseWatch, HearsOfAFileAlsoWhenTooManyHaveBeenClosed)
{
    long most = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> most;
    if (most > 200'000)
        GTEST_SKIP() << most << " closed files that nobody asked for would take long";
    const kelvora::TestFolder own;
    const fs::path folder = own.Path();
    PollLoop loop;
    CloseWatch watch(loop);
    const std::array noisy{folder / "a", folder / "b"};
    const fs::path last = folder / "c";
    int heard = 0;
    for (const fs::path& path : {noisy[0], noisy[1], last}) {
        std::ofstream{path};
        watch.Add(path, [&, isLast = path == last] { heard += isLast ? 1 : 0; });
    }
    // Alike events in a row would be joined.
    for (long turn = 0; turn <= most; ++turn)
        Descriptor(open(noisy.at(static_cast<std::size_t>(turn % 2)).c_str(), O_RDONLY | O_CLOEXEC), "open");
    Descriptor(open(last.c_str(), O_RDONLY | O_CLOEXEC), "open");
    loop.At(loop.Now() + std::chrono::milliseconds(1), [&] { loop.Stop(); });
    loop.Run();
    EXPECT_EQ(heard, 1);
}
