#pragma once

#include <QObject>
#include <QString>

namespace ui {

/// A text on its way into a file of single-byte text. It is not shown.
class TextFileBox : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    QString text;

    /// Writes the text as it stands, in place of a file of that name. Raises what the file system
    /// refuses.
    void saveFile(const QString &path) const;
};

} // namespace ui
