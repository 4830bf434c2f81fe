#pragma once

#include "storage/sheet_dialogs.h"

class QWidget;

namespace orvane {

// The File dialog in its two modes and the Sample files dialog, above the window that owns them.
// Enter presses Open or, in save mode, "Save as"; Escape cancels.
class FileDialogs : public SheetDialogs {
public:
    explicit FileDialogs(QWidget* parent) : owner(parent) {}

    std::optional<ChosenSheet> ShowOpen(const std::string& archivePath,
                                        const std::string& currentName,
                                        const SheetRenamed& renamed) override;
    std::optional<std::string> ShowSave(const std::string& archivePath,
                                        const std::string& currentName,
                                        const std::string& text) override;
    std::optional<ChosenSheet> ShowSamples(const std::string& archivePath) override;

private:
    QWidget* owner;
};

}  // namespace orvane
