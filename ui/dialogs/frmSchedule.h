#pragma once

#include "store/Recordset.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace ui {

class MinuteCombo;
class WeekGrid;

/// The task editor: the window in which one task is added or changed, as store::bNieuweOpdracht
/// and store::sOpdrachtnaam tell. After a save the latter holds the name of the saved task. Esc and
/// the window's frame are its Cancel, which writes nothing.
class frmSchedule : public QDialog
{
    Q_OBJECT

public:
    /// Reads the tasks, and raises what keeps it from that: InvalidUseOfNull for an empty field of
    /// the edited one or an empty minute of another, InvalidProcedureCall when the minutes of the
    /// others or an hour of the edited one are out of range.
    explicit frmSchedule(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;

private:
    void makeControls();
    QWidget *makeTaskFrame();
    QWidget *makeTimeFrame();
    QLayout *makeButtons();

    void connectEvents();
    void Form_Load();
    void offerFreeMinutes();
    void loadTask();
    void showTask();
    void tickSlot();

    void Opslaan_Click();
    QString inputMistake() const;
    bool save();
    bool writeTask();
    void writeSlots();

    store::Recordset rsSchedule;
    WeekGrid *m_grid = nullptr;

    QLineEdit *txtOpdrachtnaam = nullptr;
    QLineEdit *txtDownload_adres = nullptr;
    QLineEdit *txtFilenaam = nullptr;
    QCheckBox *CheckAktief = nullptr;
    MinuteCombo *ComboMinuten = nullptr;
    QList<QCheckBox *> Check1;        // by WeekGrid::boxIndex()
    QPushButton *Opslaan = nullptr;   // Save
    QPushButton *Annuleren = nullptr; // Cancel
};

} // namespace ui
