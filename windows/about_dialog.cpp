#include "windows/about_dialog.h"

#include "windows/about_text.h"
#include "windows/control_ids.h"
#include "windows/look.h"
#include "windows/program_facts.h"

namespace orvane {

namespace {

constexpr QColor labelBackground(51, 51, 51);
constexpr int startOffset = -50;  // the text starts below the top edge
constexpr int stepMilliseconds = 80;

QRect Place(int left, int top, int width, int height) {
    return DialogRect(QFontMetrics(InterfaceFont()), left, top, width, height);
}

}  // namespace

AboutDialog::AboutDialog(QWidget* owner) : QDialog(owner), label(this, Place(7, 7, 260, 169)) {
    setFont(InterfaceFont());
    setWindowTitle(QStringLiteral("About"));
    setFixedSize(Place(0, 0, 274, 183).size());
    NameControl(label, ids::aboutDialog::scrollingText);
    label.SetBackground(labelBackground);
    label.SetDragEnabled(true);
    label.SetScrollOffset(startOffset);
    label.SetScrollDelay(stepMilliseconds);
    label.SetText(AboutText(ProgramVersion(), WebSite()));
}

void ShowAbout(QWidget* owner) { AboutDialog(owner).exec(); }

}  // namespace orvane
