#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

// The smallest window that a program of this kind can show: what the main window is measured by.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.menuBar()->addMenu(QStringLiteral("&Help"))->addAction(QStringLiteral("&Info"));
    window.setCentralWidget(new QLabel(QStringLiteral("88:88")));
    window.statusBar()->showMessage(QStringLiteral("Ready"));
    window.show();
    return QApplication::exec();
}
