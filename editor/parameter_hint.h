#pragma once

#include "editor/call_hints.h"
#include "editor/floating_window.h"

// The hint over an open call: the signatures of its function, above the line that is typed in.

namespace orvane {

class ParameterHint : public FloatingWindow {
    Q_OBJECT

public:
    explicit ParameterHint(QWidget& owner);

    // Shows the hint, or changes what it shows. `caret` is the caret's cell, as high as its line,
    // or the cell in which the function's name begins, in the owner's coordinates.
    void ShowFor(const KeywordEntry& entry, const QRect& caret);
    void Hide();
    bool IsShowing() const { return isVisible(); }
    const CallHint& Hint() const { return hint; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CallHint hint;
    int rowHeight = 1;
};

}  // namespace orvane
