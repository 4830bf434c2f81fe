#pragma once

#include <QMenu>
#include <QObject>
#include <memory>
#include <vector>

class QPoint;

namespace orvane {

struct CalcParameters;

// The five popups of the menu strip, built from the command rows. A popup is shown where it is
// asked to be and answers with the command that was chosen.
class MainMenus {
public:
    MainMenus();

    // The marks of the Options popup, as the options are now.
    void ShowMarks(const CalcParameters& parameters);
    // Waits for the choice; 0 where there was none.
    int Choose(int popup, const QPoint& screenPosition);

    QMenu& Popup(int popup) { return *popups[popup]; }

private:
    std::vector<std::unique_ptr<QMenu>> popups;
};

}  // namespace orvane
