#pragma once

#include <QColor>

namespace controls {

/// A colour as the controls keep and save it: 0x00BBGGRR. The top byte has no part in drawing.
using Colour = quint32;

inline QColor toQColor(Colour colour)
{
    return QColor::fromRgb(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                           static_cast<int>(colour >> 16 & 0xFF));
}

inline Colour toColour(const QColor &colour)
{
    return static_cast<Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

} // namespace controls
