#pragma once

// The windows that menu items open beside the main one: one function for each.

namespace orvane {

class FormulaEditor;
class MainWindow;
struct CalcParameters;

void ShowTextColours(MainWindow& owner, FormulaEditor& editor);
void ShowGeneralOptions(MainWindow& owner, CalcParameters& parameters);
void ShowLocus(MainWindow& owner, int precision);  // decimals of the axis labels
void ShowAllKeywords(MainWindow& owner);
void ShowSoftwareNews(MainWindow& owner);
void ShowAbout(MainWindow& owner);

}  // namespace orvane
