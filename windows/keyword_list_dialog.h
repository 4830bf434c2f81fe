#pragma once

#include "windows/help_viewer.h"

class QWidget;

namespace orvane {

// Shows the list of all keywords with their signatures, above its owner, until the user closes it.
// It can be sorted by a click on a column's header; a double click on a row shows the keyword's
// help page.
void ShowKeywordList(QWidget* owner, const ShowTopic& showTopic = ShowHelpTopic);

}  // namespace orvane
