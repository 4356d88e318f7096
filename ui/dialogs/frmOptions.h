#pragma once

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace ui {

/// Lets the user choose a folder of the file system, over the window hwndOwner. Returns its path
/// with one NUL character at its end, see "The NUL of a chosen folder" in docs/behaviour.md, or ""
/// when the user chose none or one whose path is longer than 254 characters.
QString BrowseForFolder(QWidget *hwndOwner, const QString &title);

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
    void makeControls();
    QWidget *makeFolderPage();
    QWidget *makeDestinationFrame();
    QWidget *makeSpcFrame();
    QLayout *makeButtons();
    void orderTabs();

    void connectEvents();
    void Form_Load();
    void setSavable(bool savable);
    void Bestemmings_dir_Click();
    void SPC_dir_Click();
    void cmdApply_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    QLineEdit *Text2 = nullptr;  // destination folder
    QLineEdit *Text3 = nullptr;  // SPC folder
    QCheckBox *Check1 = nullptr; // SPC header
    QCheckBox *Check2 = nullptr; // pre-Windows XP
    QPushButton *Bestemmings_dir = nullptr;
    QPushButton *SPC_dir = nullptr;
    QPushButton *cmdOK = nullptr;     // Save
    QPushButton *cmdCancel = nullptr; // Cancel
    QPushButton *cmdApply = nullptr;  // Submit
};

} // namespace ui
