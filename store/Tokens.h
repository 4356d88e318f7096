#pragma once

#include <QStringView>

#include <vector>

namespace store {

/// A piece of a statement's text.
struct Token
{
    enum class Kind {
        Word,   ///< a keyword or a plain name
        Name,   ///< a name in brackets or quotes, with them
        Text,   ///< a text in single quotes, with them; a doubled quote inside stands for one
        Symbol, ///< any other single character
    };

    bool isWord(QStringView word) const; ///< without regard to case
    bool isSymbol(QChar symbol) const { return kind == Kind::Symbol && text == symbol; }
    bool isName() const { return kind == Kind::Word || kind == Kind::Name; }

    Kind kind;
    QStringView text; ///< a part of the statement's text
};

/// The statement's pieces in their order, without blanks and comments.
std::vector<Token> tokens(QStringView statement);

} // namespace store
