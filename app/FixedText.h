#pragma once

#include <QString>

namespace app {

/// A text of always Width characters: a longer one is cut when it is assigned, a shorter one is
/// padded with blanks on its right. It starts as blanks.
template <int Width>
class FixedText
{
public:
    FixedText &operator=(const QString &text)
    {
        m_text = text.leftJustified(Width, u' ', true);
        if (m_text.back().isHighSurrogate())
            m_text.back() = u' '; // never half a character
        return *this;
    }

    const QString &text() const { return m_text; }

private:
    QString m_text = QString(Width, u' ');
};

} // namespace app
