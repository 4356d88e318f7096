#include "ui/dialogs/frmOpdrachten.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Host.h"
#include "store/TaskStore.h"
#include "ui/dialogs/TaskGrid.h"
#include "ui/main/ScrollPane.h"
#include "ui/main/Widgets.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

#include <utility>

namespace ui {

using namespace Qt::StringLiterals;
using app::handleEvent;
using platform::Boolean;
using store::bNieuweOpdracht;
using store::sOpdrachtnaam;

static int columnWidth(int column)
{
    constexpr double twipsPerPixel = 15;
    return qRound(taskColumns()[column].twips / twipsPerPixel);
}

frmOpdrachten::frmOpdrachten(Editor editor, QWidget *parent)
    : QDialog(parent)
    , m_rows(*store::rsOpdrachten, store::tasksSource())
    , m_editor(std::move(editor))
{
    setObjectName(u"frmOpdrachten"_s);
    setWindowTitle(app::WindowTitle());
    makeControls();
    connectEvents();
    FormatFlexgrid();
}

void frmOpdrachten::makeControls()
{
    Toevoegen = named<QPushButton>(u"Toevoegen"_s, u"&New task"_s);
    Verwijderen = named<QPushButton>(u"Verwijderen"_s, u"&Delete"_s);
    Wijzigen = named<QPushButton>(u"Wijzigen"_s, u"&Modify"_s);
    Wijzigen->setDefault(true); // Enter on a row opens it
    makeGrid();

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(Toevoegen);
    buttons->addWidget(Verwijderen);
    buttons->addWidget(Wijzigen);
    buttons->addStretch();
    auto *content = new QVBoxLayout(this);
    content->addLayout(buttons);
    content->addWidget(MSHFlexGrid1);
    constexpr int preferredHeight = 400;
    const QMargins margins = content->contentsMargins();
    fitToDisplay(*this, {gridWidth() + margins.left() + margins.right(), preferredHeight});
    MSHFlexGrid1->setFocus();
}

void frmOpdrachten::makeGrid()
{
    MSHFlexGrid1 = named<QTableView>(u"MSHFlexGrid1"_s);
    m_tasks = new TaskGridModel(MSHFlexGrid1);
    MSHFlexGrid1->setModel(m_tasks);
    MSHFlexGrid1->setItemDelegate(new TaskCells(MSHFlexGrid1));
    MSHFlexGrid1->setAccessibleName(u"Tasks"_s);
    MSHFlexGrid1->setSelectionBehavior(QTableView::SelectRows);
    MSHFlexGrid1->setSelectionMode(QTableView::SingleSelection);
    MSHFlexGrid1->setWordWrap(false);
    MSHFlexGrid1->setTabKeyNavigation(false);
    MSHFlexGrid1->verticalHeader()->hide();
    MSHFlexGrid1->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    MSHFlexGrid1->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    MSHFlexGrid1->horizontalHeader()->setHighlightSections(false);
}

// The width that shows all columns.
int frmOpdrachten::gridWidth() const
{
    int width =
        2 * MSHFlexGrid1->frameWidth() + MSHFlexGrid1->verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < taskColumns().size(); ++column)
        width += columnWidth(column);
    return width;
}

void frmOpdrachten::connectEvents()
{
    const auto onClick = [this](QPushButton *button, void (frmOpdrachten::*handler)()) {
        connect(button, &QPushButton::clicked, this,
                [this, handler] { handleEvent([this, handler] { (this->*handler)(); }); });
    };
    onClick(Toevoegen, &frmOpdrachten::Toevoegen_Click);
    onClick(Verwijderen, &frmOpdrachten::Verwijderen_Click);
    onClick(Wijzigen, &frmOpdrachten::Wijzigen_Click);
    connect(MSHFlexGrid1, &QTableView::doubleClicked, Wijzigen, &QPushButton::click);
    // What the buttons act on is always marked, even after a click that takes the mark away.
    connect(MSHFlexGrid1->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!MSHFlexGrid1->selectionModel()->hasSelection())
            MSHFlexGrid1->setCurrentIndex(MSHFlexGrid1->currentIndex());
    });
}

void frmOpdrachten::FormatFlexgrid()
{
    m_tasks->bind(*m_rows);
    if (m_rows->recordCount() == 0) {
        Verwijderen->setEnabled(false);
        Wijzigen->setEnabled(false);
    }
    selectGridRow(1);
    for (int column = 0; column < taskColumns().size(); ++column) {
        MSHFlexGrid1->setColumnHidden(column, columnWidth(column) == 0);
        MSHFlexGrid1->setColumnWidth(column, columnWidth(column));
    }
}

void frmOpdrachten::Toevoegen_Click()
{
    editTask({}, true);
    if (m_rows->recordCount() == 0)
        return;
    Wijzigen->setEnabled(true);
    Verwijderen->setEnabled(true);
    if (!sOpdrachtnaam.isEmpty())
        selectTask(sOpdrachtnaam);
}

void frmOpdrachten::Wijzigen_Click()
{
    editTask(moveToGridRow(), false);
    selectTask(sOpdrachtnaam); // under its new name, or its old one when nothing was saved
}

// The task's slots stay behind: see "Slots that stay after a deletion" in docs/behaviour.md.
void frmOpdrachten::Verwijderen_Click()
{
    const QString name = moveToGridRow();
    if (!platform::host().ask(app::WindowTitle(),
                              u"Do you realy want task '"_s + name + u"' will be removed?"_s))
        return;
    m_rows->deleteCurrent();
    m_rows->requery();
    FormatFlexgrid();
}

void frmOpdrachten::editTask(const QString &name, bool isNew)
{
    sOpdrachtnaam = name;
    bNieuweOpdracht = isNew ? Boolean::True : Boolean::False;
    m_editor(this);
    m_rows->requery();
    FormatFlexgrid();
}

// Returns the name of the task in that row.
QString frmOpdrachten::moveToGridRow()
{
    m_rows->setAbsolutePosition(MSHFlexGrid1->currentIndex().row() + 1);
    return m_rows->value(u"Opdrachtnaam"_s).toText();
}

// Rows count from 1. In an empty grid nothing gets selected.
void frmOpdrachten::selectGridRow(int row)
{
    MSHFlexGrid1->setCurrentIndex(m_tasks->index(row - 1, 0));
}

void frmOpdrachten::selectTask(const QString &name)
{
    m_rows->find(store::taskCriterion(name));
    selectGridRow(m_rows->absolutePosition());
}

} // namespace ui
