#include "ui/main/FigureLabel.h"

#include "tests/support/Test.h"

TEST(FigureLabel, LooksLikeAPlainLabel)
{
    for (const auto &[text, alignment] : {std::pair(u"12:34"_s, Qt::AlignLeft | Qt::AlignVCenter),
                                          {u"604800"_s, Qt::AlignRight | Qt::AlignVCenter}}) {
        QLabel plain;
        ui::FigureLabel figures;
        for (QLabel *label : {&plain, static_cast<QLabel *>(&figures)}) {
            label->setFont(QFont(u"Tahoma"_s, 24, QFont::Bold));
            label->setAlignment(alignment);
            label->setContentsMargins(3, 1, 5, 9);
            label->resize(200, 61);
            label->setText(text);
            label->grab();
        }
        EXPECT_EQ(figures.grab().toImage(), plain.grab().toImage()) << text.toStdString();
    }
}
