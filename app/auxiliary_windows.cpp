#include "app/auxiliary_windows.h"

#include <cstdint>
#include <optional>

#include "app/node_inspection.h"
#include "core/calc_parameters.h"
#include "editor/formula_editor.h"
#include "locus/locus_dialog.h"
#include "locus/locus_store.h"
#include "windows/about_dialog.h"
#include "windows/keyword_list_dialog.h"
#include "windows/message_box.h"
#include "windows/news_dialog.h"
#include "windows/node_inspector.h"
#include "windows/option_dialogs.h"

namespace orvane {

// Nothing is stored: the settings are written when the program ends.
void ShowTextColours(QWidget& owner, FormulaEditor& editor) {
    const std::optional<TextColours> chosen = ChooseTextColours(&owner, editor.Colours());
    if (chosen) editor.SetColours(*chosen);
}
void ShowGeneralOptions(QWidget& owner, CalcParameters& parameters) {
    const std::optional<std::int32_t> chosen = ChooseLocusFine(&owner, parameters.locusFine);
    if (chosen) parameters.locusFine = *chosen;
}
void ShowLocus(QWidget& owner, const std::string& settingsPath, int precision) {
    LocusDialog(&owner, locusStore, settingsPath).Run(precision);
}
void ShowAllKeywords(QWidget& owner) { ShowKeywordList(&owner); }
void ShowSoftwareNews(QWidget& owner) { ShowSoftwareNews(&owner); }
void ShowAbout(QWidget& owner) { ShowAbout(&owner); }

void ShowNodes(QWidget& owner, const std::string& settingsPath, FormulaEditor& editor,
               const CalcParameters& parameters, ProgressDisplay& progress) {
    const InspectedSentence inspected =
        InspectSentence(editor.GetText(), CaretOffset(editor.View().Model()), parameters, progress);
    if (inspected.root == nullptr) return MessageBox(&owner).ShowMessage(inspected.message);
    ShowNodeInspector(&owner, *inspected.root, settingsPath);
}

}  // namespace orvane
