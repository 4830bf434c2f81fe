#pragma once

#include <string>

#include "core/calc_parameters.h"
#include "core/function_node.h"

namespace orvane {

// Gives the node its value, and what it needs of the nodes below. Does nothing when the error text
// is not empty, when the node is evaluated already, or for a variable: a variable that nobody has
// set is no error here, what uses it decides. `sentence` counts from zero. On a failure the error
// text holds the message and the node stays unevaluated. Without `keepValues` the tables of the
// nodes below go as soon as the node above them has its value: a formula of many large terms would
// hold them all at once. Sweeps keep those of their bodies, which they need again.
void EvaluateNode(FunctionNode& node, int sentence, const CalcParameters& parameters,
                  std::string& errorText, bool keepValues = true);

}  // namespace orvane
