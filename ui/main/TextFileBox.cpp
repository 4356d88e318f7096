#include "ui/main/TextFileBox.h"

#include "platform/Files.h"
#include "platform/SingleByteText.h"

namespace ui {

void TextFileBox::saveFile(const QString &path) const
{
    platform::writeFile(path, platform::singleByteText(text));
}

} // namespace ui
