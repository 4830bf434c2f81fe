#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <optional>

#include "locus/locus_store.h"

// The page of a curve as a picture: in memory, or as a file.

namespace orvane {

enum class PictureFormat { png, svg, pdf };

// The format by the ending of a file's name, in any case; none for any other ending.
std::optional<PictureFormat> PictureFormatOf(const QString& path);

// Of a picture, in its pixels; one with two such sides takes 1 GB of memory.
inline constexpr int longestPictureSide = 16384;

// `size` in pixels of the page; `scale` is the number of picture pixels for each of them. Null
// where a side would be too long or there is no memory.
QImage PlotImage(const LocusSet& set, QSize size, int labelPrecision, qreal scale = 1.0);

// Writes the file whole or not at all: what stood there before stays where writing fails. Gives
// the reason of a failure, or nothing.
std::optional<QString> SavePlotPicture(const LocusSet& set, QSize size, int labelPrecision,
                                       PictureFormat format, const QString& path);

}  // namespace orvane
