#pragma once

#include <QDialog>

#include "windows/rich_text_label.h"

namespace orvane {

// The About dialog: the text about the program, and nothing to press. Escape and the close box end
// it.
class AboutDialog : public QDialog {
public:
    explicit AboutDialog(QWidget* owner);

    RichTextLabel label;
};

void ShowAbout(QWidget* owner);

}  // namespace orvane
