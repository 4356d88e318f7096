#pragma once

#include <QLineEdit>

namespace ui {

/// What stands for the line breaks, tabs and other control characters inside a text, together with
/// the blanks around them. At the ends of the text nothing does.
enum class Joint {
    Nothing, ///< an address that was broken over two lines goes on without a gap
    Blank,   ///< words over two lines stay two words
};

/// A field for a text of one line. However a text gets there (typed, pasted, dropped, by an input
/// method or setText()), its control characters are replaced by the joint, and only then is it cut
/// to maxCharacters: what is inserted into a full text loses its end.
class LineField : public QLineEdit
{
    Q_OBJECT

public:
    /// The preferred width is that of visibleCharacters; on a small display it may be less.
    LineField(Joint joint, int maxCharacters, int visibleCharacters);

    QSize sizeHint() const override;

private:
    int m_visibleCharacters;
};

} // namespace ui
