#pragma once

#include <QString>

class QWidget;

namespace orvane {

// Shows a page of the help in its own window. A page that is not there shows nothing; no message
// is given.
void ShowHelpTopic(QWidget* owner, const QString& topic);

}  // namespace orvane
