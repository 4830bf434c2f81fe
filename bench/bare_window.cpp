#include <QApplication>
#include <QPlainTextEdit>
#include <QVBoxLayout>

// The least that the desktop program could be: a window of the toolkit with two text panes. What
// starting it takes is the toolkit's share.
int main(int count, char** words) {
    QApplication application(count, words);
    QWidget window;
    QVBoxLayout column(&window);
    QPlainTextEdit sheet, report;
    report.setReadOnly(true);
    column.addWidget(&sheet);
    column.addWidget(&report);
    window.showMaximized();
    return QApplication::exec();
}
