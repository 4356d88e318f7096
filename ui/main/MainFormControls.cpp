#include "controls/DL/DL.h"
#include "controls/PB/PB.h"
#include "ui/main/DisplayText.h"
#include "ui/main/FigureLabel.h"
#include "ui/main/MainForm.h"
#include "ui/main/ScrollPane.h"
#include "ui/main/SpcHeader.h"
#include "ui/main/Widgets.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QStatusBar>
#include <QStyle>

// How the main window's controls are made and laid out.
namespace ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// What the line of the next download has room for; longer task names are cut.
static constexpr auto widestMoment =
    std::chrono::local_days(std::chrono::year(2088) / 12 / 28) + 20h + 58min + 58s;
static constexpr int usualNameLength = 16;

// A label for figures that are read from afar. Its room is that of its widest text, so that
// nothing beside it moves when the text changes.
static FigureLabel *makeFigures(const QString &name, const QString &meaning, const QString &family,
                                int points, const QString &widestText, const QString &text)
{
    auto *label = named<FigureLabel>(name);
    label->setAccessibleDescription(meaning); // its name is the text that it shows
    label->setTextFormat(Qt::PlainText);
    QFont font(family, points, QFont::Bold);
    font.setStyleHint(QFont::SansSerif);
    label->setFont(font);
    label->setText(widestText);
    label->setFixedSize(label->sizeHint());
    label->setText(text);
    label->setBackgroundRole(QPalette::Base); // opaque: the frames behind it are not painted anew
    label->setAutoFillBackground(true);
    return label;
}

// Makes room under the smaller figures, so that both stand on one line.
static void standOnBaselineOf(const QLabel *large, QLabel *small)
{
    const int lower = large->fontMetrics().descent() - small->fontMetrics().descent();
    small->setContentsMargins(0, 0, 0, lower);
    small->setFixedHeight(small->height() + lower);
}

static QFrame *makeShape(const QString &name, QLayout *content)
{
    auto *shape = named<QFrame>(name);
    shape->setFrameShape(QFrame::StyledPanel);
    shape->setAutoFillBackground(true);
    shape->setBackgroundRole(QPalette::Base);
    shape->setLayout(content);
    return shape;
}

static QFrame *makeLine(const QString &name, QFrame::Shape direction)
{
    auto *line = named<QFrame>(name);
    line->setFrameShape(direction);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

void MainForm::makeControls()
{
    Timer1 = named<QTimer>(u"Timer1"_s, this);
    Timer1->setInterval(500ms);
    Timer2 = named<QTimer>(u"Timer2"_s, this);
    Timer2->setInterval(5s);
    RecomputeLater = named<QTimer>(u"RecomputeLater"_s, this);
    RecomputeLater->setSingleShot(true);
    RichTextBox1 = named<TextFileBox>(u"RichTextBox1"_s, this);
    ctlDownload = named<controls::DL>(u"ctlDownload"_s, this);
    ctlDownload->hide();

    auto *content = new QVBoxLayout;
    content->addWidget(makeLine(u"Line1"_s, QFrame::HLine));
    content->addWidget(makeCountdownFrame());
    content->addWidget(makeDownloadFrame());
    content->addStretch();
    content->addWidget(makeLine(u"Line4"_s, QFrame::HLine));
    auto *central = new QWidget;
    central->setLayout(betweenYieldingMargins(content));
    setCentralWidget(new ScrollPane(central));

    m_statusPanel = named<ElidedLabel>(u"StatusBar1Panel1"_s);
    m_statusPanel->setContentsMargins(style()->pixelMetric(QStyle::PM_LayoutLeftMargin), 0, 0, 0);
    showStatus({});
    auto *StatusBar1 = named<QStatusBar>(u"StatusBar1"_s);
    StatusBar1->addWidget(m_statusPanel, 1);
    setStatusBar(StatusBar1);
}

QWidget *MainForm::makeCountdownFrame()
{
    Label1 =
        makeFigures(u"Label1"_s, u"Hours and minutes"_s, u"Tahoma"_s, 30, u"88:88"_s, u"88:88"_s);
    Label2 = makeFigures(u"Label2"_s, u"Seconds"_s, u"Tahoma"_s, 18, u"88"_s, u"00"_s);
    Label3 = makeFigures(u"Label3"_s, u"Seconds until the next download"_s, u"MS Sans Serif"_s, 24,
                         u"8888888"_s, {});
    Label3->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    standOnBaselineOf(Label1, Label2);

    auto *figures = new QHBoxLayout;
    figures->addWidget(Label1);
    figures->addWidget(Label2, 0, Qt::AlignBottom);
    figures->addStretch();
    figures->addWidget(makeLine(u"Line2"_s, QFrame::VLine));
    figures->addWidget(Label3);

    Label4 = named<ElidedLabel>(u"Label4"_s);
    Label4->setAccessibleDescription(u"Next download"_s);
    QFont bold = Label4->font();
    bold.setPointSize(12);
    bold.setBold(true);
    Label4->setFont(bold);
    Label4->setUsualText(momentText(widestMoment) + u" ==> "_s + QString(usualNameLength, u'n'));
    Label4->setForegroundRole(QPalette::WindowText); // not that of texts on Shape2's background
    auto *next = new QHBoxLayout;
    next->addWidget(Label4);
    QFrame *Shape2 = makeShape(u"Shape2"_s, next);
    // The green and red of Label4 are given; on white they can be read in a dark theme as well.
    QPalette light = Shape2->palette();
    light.setColor(QPalette::Base, Qt::white);
    Shape2->setPalette(light);

    auto *content = new QVBoxLayout;
    content->addWidget(makeShape(u"Shape1"_s, betweenYieldingMargins(figures)));
    content->addWidget(makeLine(u"Line3"_s, QFrame::HLine));
    content->addWidget(Shape2);
    auto *Frame1 = named<QGroupBox>(u"Frame1"_s, u"Download Countdown"_s);
    Frame1->setLayout(content);
    return Frame1;
}

QWidget *MainForm::makeDownloadFrame()
{
    pBar = named<controls::PB>(u"pBar"_s);
    pBar->setAccessibleName(u"Progress of the download"_s);
    pBar->setFixedHeight(2 * fontMetrics().height());
    QSizePolicy keepsItsRoom = pBar->sizePolicy();
    keepsItsRoom.setHorizontalPolicy(QSizePolicy::Expanding);
    keepsItsRoom.setRetainSizeWhenHidden(true);
    pBar->setSizePolicy(keepsItsRoom);

    auto *content = new QVBoxLayout;
    content->addWidget(pBar);
    frameDownload = named<QGroupBox>(u"frameDownload"_s, u"Next Download"_s);
    frameDownload->setLayout(content);
    return frameDownload;
}

} // namespace ui
