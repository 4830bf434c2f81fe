#include "app/auxiliary_windows.h"

namespace orvane {

void ShowTextColours(MainWindow&, FormulaEditor&) {}
void ShowGeneralOptions(MainWindow&, CalcParameters&) {}
void ShowLocus(MainWindow&, int) {}
void ShowAllKeywords(MainWindow&) {}
void ShowSoftwareNews(MainWindow&) {}
void ShowAbout(MainWindow&) {}

}  // namespace orvane
