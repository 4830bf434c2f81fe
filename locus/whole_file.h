#pragma once

#include <QString>
#include <optional>

#include "storage/file_bytes.h"

namespace orvane {

// Writes a file whole or not at all: what stood there before stays where writing fails. Gives the
// reason of a failure, or nothing. What is no plain file is refused.
std::optional<QString> WriteWholeFile(const QString& path, const NextPiece& nextPiece);

}  // namespace orvane
