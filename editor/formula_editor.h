#pragma once

#include <QFrame>
#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

#include "editor/formula_view.h"
#include "storage/text_colours.h"

// The formula editor as a control: the text view within a sunken edge, and a strip at its left
// which has no width yet.

namespace orvane {

class FormulaEditor : public QFrame {
    Q_OBJECT

public:
    explicit FormulaEditor(QWidget* parent = nullptr);

    // The sheet, its lines joined by one line feed each.
    void SetText(std::string_view text) { view.SetText(text); }
    std::string GetText() const { return view.GetText(); }
    void SetColours(const TextColours& colours) { view.SetColours(colours); }
    const TextColours& Colours() const { return view.Colours(); }
    void SetFocus() { view.setFocus(); }

    FormulaView& View() { return view; }

signals:
    // The help key: a topic to be shown.
    void HelpWanted(const QString& topic);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget strip;
    FormulaView view;
};

}  // namespace orvane
