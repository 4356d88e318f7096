#pragma once

#include <QDialog>

class QComboBox;
class QPushButton;

namespace app {
struct DownloadRecord;
}

namespace ui {

/// The window in which one task is chosen to be downloaded now, outside its schedule.
class frmForceDownload : public QDialog
{
    Q_OBJECT

public:
    /// `pending` is the download that the chosen one takes the place of. The constructor raises
    /// what keeps it from reading the tasks' names.
    explicit frmForceDownload(app::DownloadRecord &pending, QWidget *parent = nullptr);

private:
    void makeControls();
    void connectEvents();
    void fillWithTaskNames();
    void ComboOpdracht_Click();
    void CmdForceDownload_Click();

    app::DownloadRecord &m_pending;
    QComboBox *ComboOpdracht = nullptr;
    QPushButton *CmdForceDownload = nullptr;
};

} // namespace ui
