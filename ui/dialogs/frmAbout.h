#pragma once

#include <QDialog>

namespace ui {

/// The small window that names the program and its version.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent = nullptr);
};

} // namespace ui
