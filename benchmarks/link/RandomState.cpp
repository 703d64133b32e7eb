// Writes a state file for kelvora-bench whose flash holds random bytes, and the same bytes as they are, to
// compare with and to send otherwise.
//   random_state STATE IMAGE SEED
#include <cstdio>
#include <string>

#include "RandomMemory.h"
#include "bench/StateText.h"
#include "platform/posix/PosixFiles.h"

int main(int argc, char* argv[])
{
    if (argc != 4) {
        std::fputs("usage: random_state STATE IMAGE SEED\n", stderr);
        return 2;
    }
    kelvora::PosixFiles files;
    const kelvora::bench::LineState memory = kelvora::RandomMemory(std::stoull(argv[3]));
    files.Write(argv[1], kelvora::bench::FormatState(memory));
    files.Write(argv[2], {memory.flash.begin(), memory.flash.end()});
    return 0;
}
