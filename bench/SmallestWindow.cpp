#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTime>
#include <QTimer>

// smallest_window [clock]: the smallest window that a program of this kind can show, which the main
// window is measured by; with "clock" it shows the seconds, as the main window does.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.menuBar()->addMenu(QStringLiteral("&Help"))->addAction(QStringLiteral("&Info"));
    auto *label = new QLabel(QStringLiteral("88:88"));
    window.setCentralWidget(label);
    window.statusBar()->showMessage(QStringLiteral("Ready"));
    window.show();
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, label, [label] {
        label->setText(QTime::currentTime().toString(QStringLiteral("mm:ss")));
    });
    if (argc > 1)
        ticks.start(500);
    return QApplication::exec();
}
