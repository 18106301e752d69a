/// @file
/// The names that an EXPRESS text declares itself: parameters, local variables and constants, functions
/// within functions, labels of types and of rules, the variables of QUERY, ALIAS and REPEAT. Where such a
/// name is known it means no object of the schema, whatever objects there are of that name.
///
///     LocalNames locals;
///     for (ExpressWords words(text); words.boNext();)
///         if (!locals.boTake(words) && words.getKind() == ExpressWords::Kind::Word)
///             use(words.getText());
///
/// A name is known from its declaration to the end of its function, rule, query or statement.
///
/// Ownership: keeps copies.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc. A text that is no EXPRESS has some local names or other.
#pragma once

#include "kivifc/Site/ExpressWords.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

class LocalNames {
public:
    /// The next piece of the text; true for a word that is a local name where it is.
    bool boTake(const ExpressWords& words);

    /// What the declaration of a parameter or a local variable ends with, in capitals: "IFCDIRECTION" of one
    /// that is a LIST [2:3] OF IfcDirection. Empty for a name that has no declaration of its type, such as
    /// the variable of a QUERY before it was said. Lasts until the next piece is taken.
    std::string_view typeOf(const std::string& upper) const;

    /// Says of which type the variable of the innermost QUERY is, in capitals: that of the elements of what
    /// is searched, which only who knows the schema can tell.
    void vQueryTypeSet(std::string_view upper);

private:
    /// What ends the scope of a name.
    enum class Scope : std::uint8_t { Function, Alias, Repeat, Query };
    /// What the next word is.
    enum class Next : std::uint8_t { Any, Function, Rule, Variable, RepeatVariable, Label };
    /// The part of a function or rule that is read.
    enum class Part : std::uint8_t { Body, HeaderBegin, Parameters, HeaderEnd, Declarations, Where };

    struct OpenScope {
        Scope kind;
        // Of parentheses that are open.
        std::size_t depth;
        // How many names there were before it.
        std::size_t names;
    };

    void vSymbolTake(char symbol);
    void vOpeningTake();
    void vClosingTake();
    void vColonTake();
    void vStatementEnd();
    bool boWordTake(const ExpressWords& words);
    /// Whether it is a keyword that begins or ends something.
    bool boKeywordTake(const std::string& upper);
    bool boNextTake(const std::string& upper);
    bool boTypedDeclare(const std::string& upper);
    bool boDeclare(const std::string& upper, bool isLabel = false);
    void vOpen(Scope kind);
    void vClose(Scope kind);

    struct Name {
        std::string upper;
        bool isLabel;
    };
    /// Of each name the declarations, as places in `types_`; the innermost is the last.
    using Declared = std::unordered_map<std::string, std::vector<std::size_t>>;
    static constexpr std::size_t NoType = static_cast<std::size_t>(-1);

    std::vector<OpenScope> scopes_;
    // How many of them are of each kind.
    std::array<std::size_t, 4> openCounts_{};
    std::vector<Name> names_;
    Declared variables_;
    Declared labels_;
    // The last word of the type of each declaration, which may be one of many names; empty before that comes.
    std::vector<std::string> types_;
    // The last word, as long as no symbol has come after it.
    std::string word_;
    std::size_t depth_ = 0;
    // Of the parenthesis around parameters.
    std::size_t parametersDepth_ = 0;
    Next next_ = Next::Any;
    Part part_ = Part::Body;
    // Before the colon of a declaration, or the first word of a rule.
    bool isBegin_ = false;
    // Where types are written: no variable is one, and no label is a value.
    bool isType_ = false;
    // The last symbol, as long as no word has come after it.
    char symbol_ = ' ';
};

} // namespace kiv::kivifc::site
