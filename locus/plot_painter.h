#pragma once

#include <QRect>

#include "locus/locus_store.h"

class QPainter;

// Paints the page of a curve into any painter: a window's, a picture's, a printer's.

namespace orvane {

// Fills `rect` with the page: background, curve, axes, labels, note and frame, as BuildPlotScene
// places them for this client rectangle. The painter keeps its state. Without a set only the
// background is painted. Labels have `labelPrecision` decimals.
void PaintPlotPage(QPainter& painter, const QRect& rect, const LocusSet* set, int labelPrecision);

}  // namespace orvane
