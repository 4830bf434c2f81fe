#include "locus/whole_file.h"

#include <QFileInfo>
#include <QSaveFile>
#include <cstddef>
#include <string>

namespace orvane {

// Not buffered: what a buffer can't bring to a full disk at the end, nobody would be told of, and
// half a file would take the place of the one before.
std::optional<QString> WriteWholeFile(const QString& path, const NextPiece& nextPiece) {
    // A device or a pipe would be replaced by a file.
    const QFileInfo there(path);
    if (there.exists() && !there.isFile()) return QStringLiteral("it is no plain file");
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return file.errorString();
    for (std::string piece = nextPiece(); !piece.empty(); piece = nextPiece()) {
        // The last bytes that a disk has room for are written, and only the next write has a
        // reason to tell.
        for (std::size_t written = 0; written < piece.size();) {
            const qint64 count =
                file.write(piece.data() + written, static_cast<qint64>(piece.size() - written));
            if (count <= 0) return file.errorString();
            written += static_cast<std::size_t>(count);
        }
    }
    if (!file.commit()) return file.errorString();
    return std::nullopt;
}

}  // namespace orvane
