#pragma once

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace ui {

/// The window of the four settings. Its Submit and Save write them to the settings file and put
/// them in force at once. Its Cancel, and so Esc and the window's frame, leaves them alone; with a
/// destination of fewer than three characters it ends the program.
///
/// While the settings file names no destination it is the program's gate: a folder has to be
/// chosen before anything can be saved.
class frmOptions : public QDialog
{
    Q_OBJECT

public:
    explicit frmOptions(QWidget *parent = nullptr);

    void reject() override;

private:
    // frmOptionsControls.cpp
    void makeControls();
    QWidget *makeFolderPage();
    QWidget *makeDestinationFrame();
    QWidget *makeSpcFrame();
    QLayout *makeButtons();
    void orderTabs();

    // frmOptions.cpp
    void connectEvents();
    void Form_Load();
    void setSavable(bool savable);
    void Bestemmings_dir_Click();
    void SPC_dir_Click();
    void cmdApply_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    QLineEdit *Text2;  // destination folder
    QLineEdit *Text3;  // SPC folder
    QCheckBox *Check1; // SPC header
    QCheckBox *Check2; // pre-Windows XP
    QPushButton *Bestemmings_dir;
    QPushButton *SPC_dir;
    QPushButton *cmdOK;     // Save
    QPushButton *cmdCancel; // Cancel
    QPushButton *cmdApply;  // Submit
};

} // namespace ui
