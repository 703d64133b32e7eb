#include "series/qt/SoundPlayer.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <array>

#include "series/VerdictSound.h"

namespace kelvora {

namespace {

// Of PipeWire, of PulseAudio, and of ALSA alone.
constexpr std::array Players{"pw-play", "paplay", "aplay"};

void Beep(int times)
{
    constexpr int Pause = 350;
    QApplication::beep();
    if (times > 1)
        QTimer::singleShot(Pause, qApp, [times] { Beep(times - 1); });
}

}  // namespace

QString SoundPlayer::FileOf(bool passed)
{
    if (!folder_)
        folder_.emplace();
    const QString path =
        folder_->filePath(passed ? QStringLiteral("passed.wav") : QStringLiteral("failed.wav"));
    if (QFile file(path); !file.exists() && file.open(QIODevice::WriteOnly)) {
        const std::string sound = VerdictSound(passed);
        file.write(sound.data(), static_cast<qint64>(sound.size()));
    }
    return path;
}

void SoundPlayer::Play(bool passed)
{
    PlayWith(0, passed);
}

// A player may be there without the device or the service that it needs: then the next one is tried.
void SoundPlayer::PlayWith(std::size_t player, bool passed)
{
    constexpr int FailureBeeps = 3;
    QString program;
    while (program.isEmpty() && player < Players.size())
        program = QStandardPaths::findExecutable(QString::fromLatin1(Players.at(player++)));
    if (program.isEmpty())
        return Beep(passed ? 1 : FailureBeeps);
    auto* const process = new QProcess(&processes_);
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    const auto end = [this, process, player, passed](bool isPlayed) {
        process->deleteLater();
        if (!isPlayed)
            PlayWith(player, passed);
    };
    QObject::connect(process, &QProcess::finished, &processes_, [end](int code, QProcess::ExitStatus status) {
        end(code == 0 && status == QProcess::NormalExit);
    });
    QObject::connect(process, &QProcess::errorOccurred, &processes_, [end](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(false);
    });
    process->start(program, {FileOf(passed)});
}

}  // namespace kelvora
