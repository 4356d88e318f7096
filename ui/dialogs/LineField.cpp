#include "ui/dialogs/LineField.h"

#include <QRegularExpression>
#include <QValidator>

#include <algorithm>

namespace ui {

using namespace Qt::StringLiterals;

static QString joined(QString text, Joint joint)
{
    static const QRegularExpression atEnds(
        u"^ *[\\p{Cc}\\p{Zl}\\p{Zp}][\\p{Cc}\\p{Zl}\\p{Zp} ]*|"
        u" *[\\p{Cc}\\p{Zl}\\p{Zp}][\\p{Cc}\\p{Zl}\\p{Zp} ]*$"_s);
    static const QRegularExpression inside(u" *[\\p{Cc}\\p{Zl}\\p{Zp}][\\p{Cc}\\p{Zl}\\p{Zp} ]*"_s);
    return text.remove(atEnds).replace(inside, joint == Joint::Blank ? u" "_s : QString());
}

namespace {

// Takes every text, and mends it. What was inserted last ends at the cursor, so that it is joined
// and cut there.
class OneLine : public QValidator
{
public:
    OneLine(Joint joint, qsizetype maxCharacters, QObject *parent)
        : QValidator(parent)
        , m_joint(joint)
        , m_maxCharacters(maxCharacters)
    {}

    State validate(QString &text, int &cursor) const override
    {
        QString before = joined(text.first(cursor), m_joint);
        const QString behind = joined(text.sliced(cursor), m_joint);
        before.chop(std::max<qsizetype>(before.size() + behind.size() - m_maxCharacters, 0));
        if (!before.isEmpty() && before.back().isHighSurrogate())
            before.chop(1); // never half a character
        text = (before + behind).first(std::min(before.size() + behind.size(), m_maxCharacters));
        cursor = static_cast<int>(before.size());
        return Acceptable;
    }

private:
    Joint m_joint;
    qsizetype m_maxCharacters;
};

} // namespace

LineField::LineField(Joint joint, int maxCharacters, int visibleCharacters)
    : m_visibleCharacters(visibleCharacters)
{
    setValidator(new OneLine(joint, maxCharacters, this));
}

QSize LineField::sizeHint() const
{
    const QSize usual = QLineEdit::sizeHint();
    return {std::max(usual.width(), m_visibleCharacters * fontMetrics().averageCharWidth()),
            usual.height()};
}

} // namespace ui
