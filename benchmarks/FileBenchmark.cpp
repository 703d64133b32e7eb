// Reading a whole setup from its file, beside Qt's reader of INI files.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "Samples.h"
#include "platform/posix/PosixFiles.h"
#include "setup/SetupReader.h"

#ifdef KELVORA_COMPARE_QSETTINGS
#include <QSettings>
#include <QVariant>
#endif

namespace {

using namespace kelvora;

// Copies of a text in a folder that goes away again. Read in turn, as QSettings remembers the last files that
// it has parsed and would parse none of them twice.
class Copies {
public:
    explicit Copies(std::string_view text)
    {
        std::string name = std::filesystem::temp_directory_path() / ("kelvora-bench-" + std::string(6, 'X'));
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        folder_ = name;
        for (int copy = 0; copy < 200; ++copy) {
            paths_.push_back(name + "/" + std::to_string(copy) + ".ini");
            std::ofstream(paths_.back(), std::ios::binary) << text;
        }
    }
    Copies(const Copies&) = delete;
    Copies& operator=(const Copies&) = delete;
    ~Copies() { std::filesystem::remove_all(folder_); }

    const std::string& Next() { return paths_[next_++ % paths_.size()]; }

private:
    std::filesystem::path folder_;
    std::vector<std::string> paths_;
    std::size_t next_ = 0;
};

void ReadSetupFromFile(benchmark::State& state)
{
    Copies copies(FullSetup());
    const PosixFiles files;
    for ([[maybe_unused]] const auto pass : state)
        benchmark::DoNotOptimize(ReadSetup(files.Read(copies.Next())));
}
BENCHMARK(ReadSetupFromFile);

#ifdef KELVORA_COMPARE_QSETTINGS
void ReadFileWithQSettings(benchmark::State& state)
{
    Copies copies(FullSetupAsIni());
    const auto values = static_cast<qsizetype>(CountIniValues());
    for ([[maybe_unused]] const auto pass : state) {
        const QSettings settings(QString::fromStdString(copies.Next()), QSettings::IniFormat);
        const QStringList keys = settings.allKeys();
        for (const QString& key : keys)
            benchmark::DoNotOptimize(settings.value(key));
        if (settings.status() != QSettings::NoError || keys.size() != values)
            state.SkipWithError("not read");
    }
}
BENCHMARK(ReadFileWithQSettings);
#endif

}  // namespace
