#include "platform/NativeHost.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdio>
#include <cstdlib>

namespace platform {

void NativeHost::beep()
{
    QApplication::beep();
}

void NativeHost::showMessage(const QString &title, const QString &text, MessageIcon icon)
{
    QMessageBox box(icon == MessageIcon::Critical ? QMessageBox::Critical
                                                  : QMessageBox::Information,
                    title, text, QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool NativeHost::ask(const QString &title, const QString &question)
{
    QMessageBox box(QMessageBox::Question, title, question, QMessageBox::Yes | QMessageBox::No,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void NativeHost::endProgram(int status)
{
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace platform
