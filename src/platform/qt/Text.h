// Between the core's bytes (one char a code, Windows-1252) and Qt's strings; all 256 codes survive the round
// trip.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kelvora {

QString ToQString(std::string_view text);

/// A character that Windows-1252 does not have becomes "?".
std::string FromQString(const QString& text);

/// Paths are bytes in the file system's own encoding.
QString PathToQString(std::string_view path);
std::string PathFromQString(const QString& path);

}  // namespace kelvora
