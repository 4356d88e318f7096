#include "store/RowSource.h"

#include "store/Tokens.h"

#include <algorithm>

namespace store {

using namespace Qt::StringLiterals;

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

} // namespace store
