#include "journal/qt/Sha256.h"

#include <QCryptographicHash>

namespace kelvora {

std::string Sha256(std::string_view content)
{
    const QByteArray bytes = QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().toStdString();
}

}  // namespace kelvora
