#include <QApplication>
#include <QFile>
#include <QLocale>
#include <clocale>

#include "app/main_window.h"
#include "windows/look.h"

// Neither the command line nor the environment holds options of the program's own.
int main(int count, char** words) {
    orvane::PrepareLook();
    QApplication application(count, words);
    // The toolkit takes over the user's locale; numbers must not change by it.
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(QLocale::c());
    orvane::ApplyLook(application);

    orvane::MainWindow window(QFile::encodeName(QApplication::applicationDirPath()).toStdString());
    // The program ends with this window, whatever else may still be open.
    QObject::connect(&window, &orvane::MainWindow::Closed, [] { QApplication::exit(); });
    window.Open();
    return QApplication::exec();
}
