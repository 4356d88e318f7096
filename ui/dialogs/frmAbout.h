#pragma once

#include <QDialog>
#include <QIcon>

namespace ui {

/// The program's icon, in the sizes that windows and their lists show.
QIcon programIcon();

/// The small window that names the program and its version.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent = nullptr);
};

} // namespace ui
