// The least that a program with a main window of this kind can be: what start-up.sh compares the program
// with.
#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QStatusBar>
#include <QToolBar>

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QMdiArea(&window));
    window.addToolBar(new QToolBar(&window));
    window.setStatusBar(new QStatusBar(&window));
    window.resize(1000, 620);
    window.show();
    return QApplication::exec();
}
