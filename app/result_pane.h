#pragma once

#include <QPlainTextEdit>
#include <string_view>

#include "app/calculation.h"

namespace orvane {

// The report: read-only, in the fixed-pitch font, on black or on white. Keys reach it only as far
// as they move in the text, with the letter C for the copy shortcut.
class ResultPane : public QPlainTextEdit, public ResultDisplay {
    Q_OBJECT

public:
    explicit ResultPane(QWidget* parent);

    void SetBlack(bool isBlack);
    void ShowTexts(const ColouredText& position, const ColouredText& result) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void AppendText(const ColouredText& text);
};

}  // namespace orvane
