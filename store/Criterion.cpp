#include "store/Criterion.h"

#include "platform/RuntimeError.h"
#include "store/Tokens.h"

#include <algorithm>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

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
