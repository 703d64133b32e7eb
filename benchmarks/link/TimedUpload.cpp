// Uploads the flash over a serial port in real time, by the program's own link and port, and prints the
// seconds from the first block's command to the last block's answer.
//   timed_upload PORT IMAGE   fails when the upload does, or when it brings other bytes than the file IMAGE
#include <QCoreApplication>
#include <cstdio>
#include <string>

#include "comms/LineDrivers.h"
#include "comms/SerialLink.h"
#include "platform/posix/PosixFiles.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtSerialPort.h"

int main(int argc, char* argv[])
{
    using namespace kelvora;
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: timed_upload PORT IMAGE\n", stderr);
        return 2;
    }
    QtEventLoop loop;
    QtSerialPort port(argv[1]);
    SerialLink link(port, loop);
    Comms comms(loop, {&link, nullptr, nullptr, nullptr});
    EventLoop::Time start;
    EventLoop::Time end;
    LineHooks hooks;
    hooks.progress = [&](const LineProgress& progress) { (progress.done == 0 ? start : end) = loop.Now(); };
    const LineResult result = Upload(comms, {1, "9600,n,8,1", 0}, hooks);
    if (!result.IsDone() || result.image != PosixFiles().Read(argv[2])) {
        std::fprintf(stderr, "timed_upload: %s\n",
                     result.IsDone() ? "other bytes" : result.failure.detail.c_str());
        return 1;
    }
    std::printf("%.3f\n", std::chrono::duration<double>(end - start).count());
    return 0;
}
