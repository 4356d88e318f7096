#include "platform/Text.h"

namespace platform {

QString trimmedBlanks(const QString &text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

QString untilNul(const QString &text)
{
    return text.left(text.indexOf(QChar::Null));
}

} // namespace platform
