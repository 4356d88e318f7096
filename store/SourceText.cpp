#include "store/SourceText.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <vector>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

namespace {

/// A piece of a text.
struct Token
{
    enum class Kind {
        Word,   ///< a keyword or a plain name
        Name,   ///< a name in brackets or quotes, with them
        Text,   ///< a text in single quotes, with them; a doubled quote inside stands for one
        Symbol, ///< any other single character
    };

    bool isWord(QStringView word) const
    {
        return kind == Kind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool isSymbol(QChar symbol) const { return kind == Kind::Symbol && text == symbol; }
    bool isName() const { return kind == Kind::Word || kind == Kind::Name; }

    Kind kind;
    QStringView text; ///< a part of the whole text
};

} // namespace

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

// The pieces in their order, without blanks and comments.
static std::vector<Token> tokens(QStringView whole)
{
    std::vector<Token> found;
    QStringView rest = whole;
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

QString withTruthAsNumber(const QString &statement)
{
    QString replaced = statement;
    const auto all = tokens(statement);
    std::for_each(all.rbegin(), all.rend(), [&](const Token &token) {
        if (token.isWord(u"True"))
            replaced.replace(token.text.begin() - QStringView(statement).begin(), token.text.size(),
                             u"1"_s);
    });
    return replaced;
}

bool isBlankStatement(const QString &text)
{
    return tokens(text).empty();
}

static bool mayFollowTable(const Token &token)
{
    return token.isWord(u"WHERE") || token.isWord(u"ORDER") || token.isWord(u"LIMIT") ||
           token.isSymbol(u';');
}

static bool combinesRows(const Token &token)
{
    return token.isWord(u"GROUP") || token.isWord(u"UNION") || token.isWord(u"EXCEPT") ||
           token.isWord(u"INTERSECT");
}

static bool readsOneTable(const std::vector<Token> &statement)
{
    return statement.size() >= 4 && statement[0].isWord(u"SELECT") && statement[1].isSymbol(u'*') &&
           statement[2].isWord(u"FROM") && statement[3].isName() &&
           (statement.size() == 4 || mayFollowTable(statement[4])) &&
           std::none_of(statement.begin(), statement.end(), combinesRows);
}

RowSource rowSource(const QString &source)
{
    const auto all = tokens(source);
    if (all.size() == 1 && all[0].isName())
        return {u"SELECT *, rowid FROM %1 ORDER BY rowid"_s.arg(source), true};
    if (!readsOneTable(all))
        return {source, false};
    const auto behindStar = all[1].text.end() - QStringView(source).begin();
    return {QString(source).insert(behindStar, u", rowid "_s), true};
}

static QString unquoted(QStringView token)
{
    return token.sliced(1).chopped(1).toString().replace(u"''"_s, u"'"_s);
}

static bool isWholeText(const Token &token)
{
    return token.kind == Token::Kind::Text && token.text.size() > 1 && token.text.endsWith(u'\'') &&
           token.text.count(u'\'') % 2 == 0;
}

Criterion parsedCriterion(const QString &criterion)
{
    const auto all = tokens(criterion);
    const auto equals = std::find_if(all.begin(), all.end(),
                                     [](const Token &token) { return token.isSymbol(u'='); });
    if (equals == all.begin() || all.end() - equals != 2 || !isWholeText(all.back()))
        throw RuntimeError(ErrorNumber::InvalidProcedureCall,
                           u"Not of the form Field = 'text': "_s + criterion);

    QString field;
    for (auto token = all.begin(); token != equals; ++token)
        field += token->text;
    return {field, unquoted(all.back().text)};
}

} // namespace store
