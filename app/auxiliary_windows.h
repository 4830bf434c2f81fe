#pragma once

#include <string>

// The windows that open beside the main one: one function for each.

class QWidget;

namespace orvane {

class FormulaEditor;
class ProgressDisplay;
struct CalcParameters;

void ShowTextColours(QWidget& owner, FormulaEditor& editor);
void ShowGeneralOptions(QWidget& owner, CalcParameters& parameters);
// Labels of the axes have `precision` decimals.
void ShowLocus(QWidget& owner, const std::string& settingsPath, int precision);
void ShowAllKeywords(QWidget& owner);
void ShowSoftwareNews(QWidget& owner);
void ShowAbout(QWidget& owner);

// The nodes of the sentence at the caret, after a calculation of their own that leaves the report
// and the curves alone. No menu item opens this window.
void ShowNodes(QWidget& owner, const std::string& settingsPath, FormulaEditor& editor,
               const CalcParameters& parameters, ProgressDisplay& progress);

}  // namespace orvane
