#include "windows/help_viewer.h"

namespace orvane {

void ShowHelpTopic(QWidget*, const QString&) {}

}  // namespace orvane
