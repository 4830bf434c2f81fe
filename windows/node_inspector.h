#pragma once

#include <string>

class QWidget;

namespace orvane {

struct FunctionNode;

// Shows the tree below this root with all that each node knows, above its owner, until the user
// closes the window. The tree's heights are set anew; nothing else of it is changed. Where the
// window stood is stored in the settings, if there are any, and never asked for again.
void ShowNodeInspector(QWidget* owner, FunctionNode& root, const std::string& settingsPath);

}  // namespace orvane
