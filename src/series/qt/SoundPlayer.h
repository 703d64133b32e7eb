// Plays the sounds of verdicts through the desktop's own player: it must not cost the windows a sound system
// at their start.
#pragma once

#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <cstddef>
#include <optional>

namespace kelvora {

class SoundPlayer {
public:
    /// Returns at once. Without a player that can, the display beeps: once for a pass, three times for a
    /// failure.
    void Play(bool passed);

private:
    QString FileOf(bool passed);
    void PlayWith(std::size_t player, bool passed);

    std::optional<QTemporaryDir> folder_;  ///< made with the first sound
    QObject processes_;                    ///< the parent of those that play
};

}  // namespace kelvora
