#include "store/Tokens.h"

namespace store {

using Kind = Token::Kind;

static bool isPartOfWord(QChar character)
{
    return character.isLetterOrNumber() || character == u'_' || character == u'$' ||
           character.isSurrogate();
}

static qsizetype lengthOfQuoted(QStringView rest)
{
    const QChar closing = rest[0] == u'[' ? QChar(u']') : rest[0];
    for (qsizetype at = 1; at < rest.size(); ++at) {
        if (rest[at] != closing)
            continue;
        const bool doubled = closing != u']' && rest.sliced(at + 1).startsWith(closing);
        if (!doubled)
            return at + 1;
        ++at;
    }
    return rest.size();
}

static qsizetype lengthOfWord(QStringView rest)
{
    qsizetype length = 1;
    while (length < rest.size() && isPartOfWord(rest[length]))
        ++length;
    return length;
}

static qsizetype lengthThrough(QStringView rest, QStringView end, qsizetype from)
{
    const qsizetype found = rest.indexOf(end, from);
    return found < 0 ? rest.size() : found + end.size();
}

// Blanks and comments.
static qsizetype lengthOfNothing(QStringView rest)
{
    if (rest[0].isSpace())
        return 1;
    if (rest.startsWith(u"--"))
        return lengthThrough(rest, u"\n", 2);
    if (rest.startsWith(u"/*"))
        return lengthThrough(rest, u"*/", 2);
    return 0;
}

static Token firstToken(QStringView rest)
{
    switch (rest[0].unicode()) {
    case u'\'':
        return {Kind::Text, rest.first(lengthOfQuoted(rest))};
    case u'"':
    case u'`':
    case u'[':
        return {Kind::Name, rest.first(lengthOfQuoted(rest))};
    default:
        return isPartOfWord(rest[0]) ? Token{Kind::Word, rest.first(lengthOfWord(rest))}
                                     : Token{Kind::Symbol, rest.first(1)};
    }
}

bool Token::isWord(QStringView word) const
{
    return kind == Kind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
}

std::vector<Token> tokens(QStringView statement)
{
    std::vector<Token> found;
    QStringView rest = statement;
    while (!rest.isEmpty()) {
        if (const qsizetype nothing = lengthOfNothing(rest)) {
            rest = rest.sliced(nothing);
        } else {
            found.push_back(firstToken(rest));
            rest = rest.sliced(found.back().text.size());
        }
    }
    return found;
}

} // namespace store
