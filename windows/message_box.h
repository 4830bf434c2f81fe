#pragma once

#include "storage/questions.h"

class QWidget;

namespace orvane {

// Questions on the screen, above the window that asks. Enter presses Yes where that stores
// something and No where Yes changes sheets on disk. Escape is Cancel, or the No that leaves
// everything as it is; a question where either answer may lose something has no answer by Escape or
// by the close box.
class MessageBox : public Questions {
public:
    explicit MessageBox(QWidget* parent) : owner(parent) {}

    void ShowMessage(std::string_view message) override;
    bool Confirm(std::string_view question) override;
    bool AskYesNo(std::string_view question) override;
    Answer AskYesNoCancel(std::string_view question) override;

private:
    QWidget* owner;
};

}  // namespace orvane
