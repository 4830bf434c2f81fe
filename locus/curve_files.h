#pragma once

#include <QSize>

#include "locus/locus_store.h"

class QWidget;

// What a user saves of a curve. The file is asked for above `owner`: a name without an ending gets
// that of the kind that is chosen, and a file that is there is replaced only after a question. A
// failure is told in a message box, and what stood in the file stays.

namespace orvane {

// The page of this size as SVG, PNG or PDF. Labels have `labelPrecision` decimals.
void SavePicture(QWidget* owner, const LocusSet& curve, QSize size, int labelPrecision);

// All points as CSV.
void SavePoints(QWidget* owner, const LocusSet& curve);

}  // namespace orvane
