#pragma once

#include <string>

#include "locus/locus_store.h"
#include "locus/plot_scale.h"

// Where everything stands in the plot window, from its client rectangle, and what its tabs are
// called. Pixels.

namespace orvane {

inline constexpr const char* noCurvesText = "Please click button Help for assistance";
inline constexpr const char* locusHelpTopic = "function/variable/locus.htm";

// The upper left corner of the button "Help", which shows only while there are no tabs.
PlotPoint HelpButtonCorner(const PlotRect& client, int buttonWidth);

// Holds `noCurvesText`, which is centred across it on one line, with its lower edge on the lower
// side.
PlotRect NoCurvesTextArea(const PlotRect& client);

// The tab control, around which a sunken frame is painted.
PlotRect TabControlArea(const PlotRect& client);

// The pages, for a tab control whose row of headers is this high.
PlotRect PageArea(const PlotRect& client, int tabHeaderHeight);

// "1: xy", "2: polar", "3: param": the sentence from 1 and the kind.
std::string TabTitle(const LocusSet& set);

}  // namespace orvane
