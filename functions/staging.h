#pragma once

#include <string>

#include "core/function_node.h"

// How a family takes its children's results into its own staging area, `node.staged`, once they
// are evaluated. Each helper clears the area first and gives true when it is filled; otherwise an
// E011 message is written. Points that would take more than `largestTable` fail with E011-04.
// `sentence` counts from zero.

namespace orvane {

// Every child a number: a column of n rows. Fails with E011-01.
bool StageScalars(FunctionNode& node, int sentence, std::string& errorText);

// The children from `first` on as points: the first of them must be a column (E011-02), each later
// one must have its dimensions (E011-03). Each child gives one row, so points become matrix rows.
bool StagePointRows(FunctionNode& node, int first, int sentence, std::string& errorText);

// Every child a row or a column (E011-02), all of the first one's length (E011-03); rows and
// columns may be mixed. Each child gives one row.
bool StagePoints(FunctionNode& node, int sentence, std::string& errorText);

// The children from `first` on as one table: a single one as it stands, several as StagePointRows
// takes them.
bool StageTable(FunctionNode& node, int first, int sentence, std::string& errorText);

}  // namespace orvane
