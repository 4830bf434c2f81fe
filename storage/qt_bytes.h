#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "storage/code_page.h"

// The one place that turns the program's bytes into a QString and back.

namespace orvane {

// One character for each byte.
inline QString QStringFrom(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* at = text.data();
    for (const char byte : bytes) *at++ = QChar(static_cast<char16_t>(CodePointOf(byte)));
    return text;
}

// Characters outside the code page become '?'.
inline std::string BytesFrom(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const char32_t codePoint : text.toUcs4()) bytes += ByteOf(codePoint).value_or('?');
    return bytes;
}

}  // namespace orvane
