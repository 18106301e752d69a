#include "kiv/Kit/Positions/ExpressPositions.h"

#include "Kit/Names/KeywordSet.h"
#include "Kit/Names/MisspeltKeyword.h"
#include "Kit/Positions/ExpressScanner.h"
#include "Kit/Positions/KeptLists.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Text/ByteOrderMark.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <utility>

namespace kiv::kit {

namespace {

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> keywords) {
    return std::ranges::any_of(keywords,
                               [word](std::string_view keyword) { return isSameExpressWord(word, keyword); });
}

/// Words in a type that are no names.
constexpr KeywordSet TypeKeywords(std::array<std::string_view, 23>{
    "OPTIONAL",  "ARRAY",          "LIST",   "SET",    "BAG",         "OF",       "UNIQUE",    "REAL",
    "BOOLEAN",   "INTEGER",        "NUMBER", "STRING", "LOGICAL",     "BINARY",   "FIXED",     "GENERIC",
    "AGGREGATE", "GENERIC_ENTITY", "SELECT", "WITH",   "ENUMERATION", "BASED_ON", "EXTENSIBLE"});

bool isTypeKeyword(std::string_view word) {
    return TypeKeywords.contains(word);
}

/// Those of them that the library looks for.
constexpr std::array<std::string_view, 16> TypeWords = {
    "OPTIONAL", "ARRAY",  "LIST",   "SET",     "OF",     "UNIQUE", "REAL",        "BOOLEAN",
    "INTEGER",  "NUMBER", "STRING", "LOGICAL", "BINARY", "FIXED",  "ENUMERATION", "SELECT"};

bool isAggregateWord(std::string_view word) {
    static constexpr KeywordSet Aggregates(std::array<std::string_view, 4>{"ARRAY", "BAG", "LIST", "SET"});
    return Aggregates.contains(word);
}

/// Types after which a ':' has a label.
bool isGeneric(std::string_view word) {
    return isOneOf(word, {"GENERIC", "AGGREGATE", "GENERIC_ENTITY"});
}

const char* endOf(std::string_view word) {
    return word.data() + word.size();
}

struct Statement {
    std::string_view keyword;
    std::string_view end;
    ExpressDeclarationKind kind;
};

constexpr std::array Statements = {
    Statement{"TYPE", "END_TYPE", ExpressDeclarationKind::Type},
    Statement{"ENTITY", "END_ENTITY", ExpressDeclarationKind::Entity},
    Statement{"FUNCTION", "END_FUNCTION", ExpressDeclarationKind::Function},
    Statement{"RULE", "END_RULE", ExpressDeclarationKind::Rule},
    Statement{"PROCEDURE", "END_PROCEDURE", ExpressDeclarationKind::Procedure},
    Statement{"CONSTANT", "END_CONSTANT", ExpressDeclarationKind::Constant},
};

const Statement* pStatement(std::string_view word) {
    const auto found = std::ranges::find_if(Statements, [word](const Statement& statement) {
        return isSameExpressWord(word, statement.keyword);
    });
    return found == Statements.end() ? nullptr : &*found;
}

constexpr std::array<std::string_view, 2> SchemaWords = {"SCHEMA", "END_SCHEMA"};

bool isSchemaWord(std::string_view word) {
    return std::ranges::any_of(SchemaWords,
                               [word](std::string_view each) { return isSameExpressWord(word, each); });
}

bool isDeclarationEnd(std::string_view word) {
    return std::ranges::any_of(
        Statements, [word](const Statement& statement) { return isSameExpressWord(word, statement.end); });
}

constexpr std::size_t BoundaryCount = SchemaWords.size() + 2 * Statements.size();

/// Words that no statement before its ';' contains: where one is met, the ';' is missing.
constexpr KeywordSet Boundaries([] {
    std::array<std::string_view, BoundaryCount> words{};
    auto* next = std::copy(SchemaWords.begin(), SchemaWords.end(), words.data());
    for (const auto& statement : Statements) {
        *next++ = statement.keyword;
        *next++ = statement.end;
    }
    return words;
}());

bool isBoundary(std::string_view word) {
    return Boundaries.contains(word);
}

bool isClause(std::string_view word) {
    static constexpr KeywordSet ClauseStarts(std::array<std::string_view, 3>{"DERIVE", "INVERSE", "WHERE"});
    return ClauseStarts.contains(word);
}

constexpr std::array<std::string_view, 4> Clauses = {"DERIVE", "INVERSE", "UNIQUE", "WHERE"};
constexpr KeywordSet ClauseSet(Clauses);
constexpr std::array<std::string_view, 3> HeaderWords = {"ABSTRACT", "SUPERTYPE", "SUBTYPE"};
constexpr std::array<std::string_view, 2> ListWords = {"ENUMERATION", "SELECT"};
constexpr std::string_view SchemaKeyword = "SCHEMA";
constexpr std::string_view OneOf = "ONEOF";
constexpr std::string_view ForKeyword = "FOR";

/// What ends statements in the body of a function, and is like the end of no declaration.
bool isInnerEnd(std::string_view word) {
    return isOneOf(word, {"END_ALIAS", "END_CASE", "END_CONSTANT", "END_IF", "END_LOCAL", "END_REPEAT"});
}

/// One of the keywords that the word is, in any letter case; empty when it is none.
std::string_view keywordIn(std::string_view word, std::span<const std::string_view> keywords) {
    const auto found = std::ranges::find_if(
        keywords, [word](std::string_view keyword) { return isSameExpressWord(word, keyword); });
    return found == keywords.end() ? std::string_view() : *found;
}

ExpressMemberKind clauseKind(std::string_view word) {
    if (isSameExpressWord(word, "DERIVE"))
        return ExpressMemberKind::Derived;
    if (isSameExpressWord(word, "INVERSE"))
        return ExpressMemberKind::Inverse;
    return isSameExpressWord(word, "UNIQUE") ? ExpressMemberKind::Unique : ExpressMemberKind::Where;
}

bool isListOperator(const ExpressToken& token) {
    return token.kind == ExpressTokenKind::Word && isOneOf(token.text, {"ONEOF", "ANDOR", "AND"});
}

bool isListName(const ExpressToken& token) {
    return (token.kind == ExpressTokenKind::Word || token.kind == ExpressTokenKind::Number) &&
           !isListOperator(token);
}

/// How deep in brackets of any kind.
class Brackets {
public:
    void vPass(const ExpressToken& token) {
        if (token.kind != ExpressTokenKind::Symbol)
            return;
        if (token.isSymbol('(') || token.isSymbol('[') || token.isSymbol('{'))
            ++depth_;
        else if (depth_ > 0 && (token.isSymbol(')') || token.isSymbol(']') || token.isSymbol('}')))
            --depth_;
        if (token.isSymbol('('))
            ++round_;
        else if (round_ > 0 && token.isSymbol(')'))
            --round_;
    }
    bool isOutside() const { return depth_ == 0; }
    bool isOutsideRound() const { return round_ == 0; }
    std::size_t getDepth() const { return depth_; }

private:
    std::size_t depth_ = 0;
    std::size_t round_ = 0;
};

/// The brackets after LIST and its like, while they are read.
struct OpenBounds {
    ExpressWord open;
    bool isOpen = false;
    bool hasColon = false;
};

/// Whether the bounds in such brackets are numbers, of which the first is the greater.
bool isSwapped(std::string_view brackets) {
    const auto colon = brackets.find(':');
    auto lower = trimmed(brackets.substr(1, colon - 1));
    auto upper = trimmed(brackets.substr(colon + 1, brackets.size() - colon - 2));
    const auto isNumber = [](std::string_view bound) {
        return !bound.empty() && std::ranges::all_of(bound, isDigit);
    };
    if (!isNumber(lower) || !isNumber(upper))
        return false;
    lower.remove_prefix(std::min(lower.find_first_not_of('0'), lower.size()));
    upper.remove_prefix(std::min(upper.find_first_not_of('0'), upper.size()));
    return lower.size() == upper.size() ? lower > upper : lower.size() > upper.size();
}

/// Whether one of the bounds in such brackets is left out, or is what no bound can be. Names and expressions
/// may be bounds.
bool hasWrongBound(std::string_view brackets) {
    const auto colon = brackets.find(':');
    const auto lower = trimmed(brackets.substr(1, colon - 1));
    const auto upper = trimmed(brackets.substr(colon + 1, brackets.size() - colon - 2));
    const auto isWrong = [](std::string_view bound) {
        const bool isReal = bound.find('.') != std::string_view::npos &&
                            bound.find_first_not_of("0123456789.") == std::string_view::npos;
        return bound.empty() || bound == "*" || bound.front() == ':' || isReal;
    };
    return lower == "?" || isWrong(lower) || isWrong(upper);
}

/// One function for each kind of statement; each leaves the token after it as the current one.
class PositionReader {
public:
    explicit PositionReader(std::string_view text) : text_(text), scanner_(text) {
        vNext();
        vNext();
    }

    void vRead(ExpressPositions& positions);

private:
    /// What belongs to the declaration that is being read. The memory of these lists serves the next one too.
    struct Lists {
        std::vector<ExpressName> names;
        std::vector<ExpressMember> members;
        std::vector<ExpressMisspelt> misspelt;
        std::vector<ExpressMisspelt> typeMisspelt;
        std::vector<ExpressMemberMisspelt> memberMisspelt;
        std::vector<ExpressIllegalName> illegalNames;
        std::vector<ExpressGap> gaps;
        std::vector<ExpressWord> swappedBounds;
        std::vector<ExpressWord> wrongBounds;
        // Of the statement that is being read.
        std::vector<ExpressMember> attributes;
        std::vector<ExpressName> memberNames;
        std::vector<ExpressMisspelt> attributeMisspelt;
    };

    template <class Value>
    std::span<const Value> kept(std::vector<Value>& list);
    const ExpressMistakes* pMistakesKept();
    void vListsKeep(ExpressDeclaration& declaration);
    void vNext();
    bool isOtherBracket() const { return token_.isSymbol('[') || token_.isSymbol('{'); }
    bool isSeparator() const { return token_.isSymbol(':') || token_.isSymbol(','); }
    bool isAtEnd() const { return token_.kind == ExpressTokenKind::End; }
    bool isWord() const { return token_.kind == ExpressTokenKind::Word; }
    bool isNumber() const { return token_.kind == ExpressTokenKind::Number; }
    bool isWord(std::string_view keyword) const {
        return isWord() && isSameExpressWord(token_.text, keyword);
    }
    bool isStatementEnd() const;
    bool isUniqueClause() const;
    /// Whether another line ends before the current token.
    bool isLineStart() const { return token_.startsLine; }
    bool isFirstOnLine() const;
    /// What is missing, in the place of which the current token comes.
    ExpressWord placeHere() const { return {token_.text.substr(0, 0)}; }
    /// Whether nothing is between the current token and the one before.
    bool isAdjacent() const { return offset() == previousEnd_; }
    const Statement* pStatementHere(const ExpressPositions& positions) const;
    bool isSchemaHere(const ExpressPositions& positions) const;
    std::string_view clauseHere(ExpressDeclarationKind kind, bool isInRules) const;
    std::string_view headerWordHere() const;
    std::string_view listWordHere() const;
    bool isEndMisspelt(const Statement& statement) const;
    bool isNameGoingOn(const ExpressDeclaration& declaration) const;
    bool isNextMember(const Brackets& brackets) const;
    ExpressWord takeWord();
    ExpressWord takeName();
    void vNameExtend(ExpressWord& name) const;
    void vDeclaredNameRead(ExpressDeclaration& declaration);
    void vKeywordTake(std::string_view keyword);
    std::size_t offset() const;
    std::string_view textFrom(std::size_t begin) const;

    bool isSchemaEnd() const;
    void vSchemaRead(ExpressPositions& positions);
    void vSchemaEndRead(ExpressSchemaHeader& header);
    void vOtherPass(ExpressPositions& positions);
    bool boInterfacePassed();
    void vStrayTextNote(ExpressPositions& positions);
    ExpressDeclaration declarationRead(const Statement& statement);
    void vConstantsRead(ExpressPositions& positions);
    void vTypeRead(ExpressDeclaration& type, const Statement& statement);
    void vTypeTextRead();
    void vEntityRead(ExpressDeclaration& entity, const Statement& statement);
    void vEntityHeaderRead(ExpressDeclaration& entity);
    bool isOfMissing(std::string_view keyword) const;
    void vListRead(ExpressUse use);
    std::string_view missingInList() const;
    std::string_view missingInType() const;
    bool isMisspeltOf() const;
    bool isListGoingOn(ExpressUse use, const Brackets& brackets) const;
    void vTypeNameAdd(std::vector<ExpressName>& names, ExpressUse use) const;
    bool isBareName() const;
    void vGapNote(std::string_view missing);
    void vGapBeforeNote(std::string_view missing);
    bool isTypeExpected() const;
    void vTypeGapNote(std::string_view missing);
    bool isNamelessHere(const Statement& statement) const;
    bool isNameMissing(const ExpressDeclaration& declaration) const;
    void vTypeWordNote(std::vector<ExpressMisspelt>& misspelt) const;
    void vBoundsPass(OpenBounds& bounds, const Brackets& brackets);
    void vBoundsClose(OpenBounds& bounds, Brackets& brackets);
    void vBoundsEnd(const OpenBounds& bounds);
    ExpressWord boundsFrom(const ExpressWord& open) const;
    void vClausesRead(ExpressDeclaration& declaration, const Statement& statement, ExpressMemberKind kind);
    void vSurplusColonTake();
    void vMemberRead(ExpressMemberKind kind);
    void vAttributesRead(ExpressMember member);
    void vAttributeNamesRead(const ExpressMember& member);
    void vAttributesAdd(const ExpressMember& shared);
    void vColonTake(const ExpressMember& member);
    void vRedeclarationRead(ExpressMember& member);
    void vTypePartRead(ExpressMember& member);
    bool isForHere(const ExpressMember& member, ExpressUse use) const;
    bool isStrayColon(const Brackets& brackets) const;
    bool boStatementEndedBy();
    bool isInitial(const ExpressMember& member, const Brackets& brackets) const;
    void vRuleRead(ExpressMember& member);
    void vInitialRead(ExpressMember& member);
    void vExpressionRead(ExpressMember& member, Brackets& brackets);
    void vLabelRead(ExpressMember& member);
    void vUniqueRead(ExpressMember& member);
    bool isLabelWithoutColon() const;
    void vBodyRead(ExpressDeclaration& declaration, const Statement& statement);
    void vEndRead(ExpressDeclaration& declaration, const Statement& statement);
    void vStatementSkip();
    void vSemicolonTake();
    void vUnendedNote();

    std::string_view text_;
    ExpressScanner scanner_;
    ExpressToken token_;
    ExpressToken ahead_;
    ExpressToken previous_;
    // The end of the token before the current one.
    std::size_t previousEnd_ = 0;
    Lists lists_;
    std::shared_ptr<KeptLists> kept_ = std::make_shared<KeptLists>();
    std::vector<ExpressUnended> unended_;
    // The last token that belongs to no declaration.
    const char* lastOther_ = nullptr;
};

void PositionReader::vNext() {
    if (!token_.text.empty())
        previousEnd_ = offset() + token_.text.size();
    previous_ = token_;
    token_ = ahead_;
    ahead_ = scanner_.next();
}

/// Whether nothing is before the current token on its line.
bool PositionReader::isFirstOnLine() const {
    const auto before = text_.substr(0, offset());
    return before.empty() || before == ByteOrderMark || before.ends_with('\n') || before.ends_with('\r');
}

std::size_t PositionReader::offset() const {
    return static_cast<std::size_t>(token_.text.data() - text_.data());
}

/// What is between a place and the current token, without the blanks and comments at its end.
std::string_view PositionReader::textFrom(std::size_t begin) const {
    return previousEnd_ > begin ? text_.substr(begin, previousEnd_ - begin) : std::string_view();
}

ExpressWord PositionReader::takeWord() {
    const ExpressWord word{token_.text};
    vNext();
    return word;
}

/// Symbols that are in names by mistake alone: nothing else has them right after a name.
bool isNameSymbol(const ExpressToken& token) {
    constexpr std::string_view Symbols = "-./#$%&@!?~^`";
    return token.kind == ExpressTokenKind::Symbol && token.text.size() == 1 &&
           Symbols.find(token.text.front()) != std::string_view::npos;
}

/// The name goes on up to the token before the current one.
void PositionReader::vNameExtend(ExpressWord& name) const {
    const auto begin = static_cast<std::size_t>(name.text.data() - text_.data());
    name.text = textFrom(begin);
}

/// Where a word has what names do not have: another letter than those of ASCII, or "_" at its beginning. npos
/// when it has neither.
std::size_t strangerIn(std::string_view word) {
    if (word.starts_with('_'))
        return 0;
    const auto stranger = asciiAtFront(word);
    return stranger == word.size() ? std::string_view::npos : stranger;
}

/// A name, and what is in it although names do not have it.
ExpressWord PositionReader::takeName() {
    auto place = token_.text;
    const auto stranger = strangerIn(token_.text);
    bool isLegal = isWord() && stranger == std::string_view::npos;
    if (isWord() && !isLegal)
        place.remove_prefix(stranger);
    auto name = takeWord();
    while (isAdjacent() && (isNameSymbol(token_) || (isNameSymbol(previous_) && (isWord() || isNumber())))) {
        if (isLegal)
            place = token_.text;
        isLegal = false;
        vNext();
    }
    if (isLegal)
        return name;
    vNameExtend(name);
    lists_.illegalNames.push_back({name, {place.substr(0, codePointAt(place, 0).size)}});
    return name;
}

void PositionReader::vKeywordTake(std::string_view keyword) {
    const auto word = takeWord();
    if (word.text != keyword)
        lists_.misspelt.push_back({word, keyword});
}

/// The statement that begins here, be its keyword misspelt. After a comment that nothing closes words are
/// rather its text.
const Statement* PositionReader::pStatementHere(const ExpressPositions& positions) const {
    if (!isWord())
        return nullptr;
    const auto* const statement = pStatement(token_.text);
    if (ahead_.kind != ExpressTokenKind::Word && ahead_.kind != ExpressTokenKind::Number)
        return statement && !positions.schemas.empty() && isNamelessHere(*statement) ? statement : nullptr;
    if (statement)
        return statement;
    if (positions.schemas.empty() || !isLineStart() || !scanner_.getOpenComment().empty())
        return nullptr;
    constexpr std::array<std::string_view, 4> Keywords = {"TYPE", "ENTITY", "FUNCTION", "RULE"};
    return pStatement(misspeltKeyword(token_.text, Keywords));
}

/// "TYPE = REAL;" or "ENTITY;": a keyword as it is found, whose name is missing.
bool PositionReader::isNamelessHere(const Statement& statement) const {
    return statement.kind <= ExpressDeclarationKind::Rule && token_.text == statement.keyword &&
           isLineStart() && scanner_.getOpenComment().empty() &&
           (ahead_.isSymbol('=') || ahead_.isSymbol(';') || ahead_.isSymbol('('));
}

bool PositionReader::isSchemaHere(const ExpressPositions& positions) const {
    if (isWord(SchemaKeyword) && ahead_.isSymbol(';'))
        return positions.schemas.empty();
    if (!isWord() || ahead_.kind != ExpressTokenKind::Word)
        return false;
    return isWord(SchemaKeyword) || (positions.schemas.empty() && isLineStart() &&
                                     !misspeltKeyword(token_.text, std::span(&SchemaKeyword, 1)).empty());
}

/// The clause that begins here. Two words side by side begin no attribute; an expression without label may
/// begin with them.
std::string_view PositionReader::clauseHere(ExpressDeclarationKind kind, bool isInRules) const {
    if (!isWord())
        return {};
    if (const auto keyword = ClauseSet.find(token_.text); !keyword.empty())
        return keyword;
    if (isInRules || !isLineStart() || ahead_.kind != ExpressTokenKind::Word)
        return {};
    const auto keyword = misspeltKeyword(token_.text, Clauses);
    return kind == ExpressDeclarationKind::Entity || keyword == "WHERE" ? keyword : std::string_view();
}

std::string_view PositionReader::headerWordHere() const {
    if (!isWord())
        return {};
    if (const auto keyword = keywordIn(token_.text, HeaderWords); !keyword.empty())
        return keyword;
    const bool isHeader =
        ahead_.kind == ExpressTokenKind::Word && isOneOf(ahead_.text, {"OF", "SUPERTYPE", "SUBTYPE"});
    return isHeader ? misspeltKeyword(token_.text, HeaderWords) : std::string_view();
}

/// ENUMERATION or SELECT, be it misspelt.
std::string_view PositionReader::listWordHere() const {
    if (!isWord())
        return {};
    if (const auto keyword = keywordIn(token_.text, ListWords); !keyword.empty())
        return keyword;
    const bool isList = ahead_.isSymbol('(') || isSameExpressWord(ahead_.text, "OF");
    return isList ? misspeltKeyword(token_.text, ListWords) : std::string_view();
}

/// "END_ENTITIY;" or "END ENTITY;"
bool PositionReader::isEndMisspelt(const Statement& statement) const {
    if (!isWord())
        return false;
    if (token_.text == "END")
        return ahead_.text == statement.keyword;
    const bool isAlone = ahead_.isSymbol(';') || ahead_.startsLine;
    const bool isEnd = token_.text.starts_with("END") || token_.text.find('_') != std::string_view::npos;
    return isAlone && isEnd && !isInnerEnd(token_.text) &&
           !misspeltKeyword(token_.text, std::span(&statement.end, 1)).empty();
}

bool PositionReader::isStatementEnd() const {
    if (isWord())
        return isBoundary(token_.text) || isClause(token_.text) || isUniqueClause();
    return isAtEnd() || token_.isSymbol(';');
}

/// Not the word in LIST OF UNIQUE.
bool PositionReader::isUniqueClause() const {
    return isWord("UNIQUE") && !isSameExpressWord(previous_.text, "OF");
}

/// Whether a new member begins here because the one before lacks its ';'.
bool PositionReader::isNextMember(const Brackets& brackets) const {
    return brackets.isOutside() && isWord() && ahead_.isSymbol(':') && (isLineStart() || !isTypeExpected()) &&
           !isGeneric(token_.text);
}

void PositionReader::vStatementSkip() {
    while (!isStatementEnd())
        vNext();
    if (token_.isSymbol(';'))
        vNext();
}

/// Ends a statement of a declaration.
void PositionReader::vSemicolonTake() {
    if (token_.isSymbol(';'))
        vNext();
    // Where another declaration begins, the end of this one is missing, and not only its last ';'.
    else if (!isAtEnd() && !(isWord() && pStatement(token_.text)) && !previous_.isSymbol(';') &&
             !previous_.isSymbol(':'))
        vUnendedNote();
}

void PositionReader::vUnendedNote() {
    unended_.push_back({{previous_.text}, {token_.text}});
}

// schemas = { anything | schema_header | declaration }
void PositionReader::vRead(ExpressPositions& positions) {
    while (!isAtEnd()) {
        const auto* const statement = pStatementHere(positions);
        if (isSchemaHere(positions))
            vSchemaRead(positions);
        else if (isSchemaEnd() && !positions.schemas.empty())
            vSchemaEndRead(positions.schemas.back());
        else if (statement && statement->kind == ExpressDeclarationKind::Constant)
            vConstantsRead(positions);
        else if (statement)
            positions.declarations.push_back(declarationRead(*statement));
        else
            vOtherPass(positions);
    }
    positions.openComment = {scanner_.getOpenComment()};
    positions.unended = std::move(unended_);
    positions.lists = std::move(kept_);
}

/// What is between declarations. An end there may be a wrong one of the declaration before.
void PositionReader::vOtherPass(ExpressPositions& positions) {
    if (boInterfacePassed())
        return;
    const auto& before = positions.declarations;
    const bool isOpen = !before.empty() && before.back().kind != ExpressDeclarationKind::Constant &&
                        before.back().end.text.empty();
    // That of constants is no part of them.
    if (isWord() && isDeclarationEnd(token_.text) && !isWord("END_CONSTANT") && !isOpen)
        positions.strayEnds.push_back({token_.text});
    vStrayTextNote(positions);
    vNext();
}

/// Statements that the library does not look for, and that may be between declarations.
// interface = ( 'USE' | 'REFERENCE' ) 'FROM' ... ';'
// constraint = 'SUBTYPE_CONSTRAINT' ... 'END_SUBTYPE_CONSTRAINT' ';'
bool PositionReader::boInterfacePassed() {
    constexpr std::string_view ConstraintEnd = "END_SUBTYPE_CONSTRAINT";
    const bool isInterface =
        isWord() && isOneOf(token_.text, {"USE", "REFERENCE"}) && isSameExpressWord(ahead_.text, "FROM");
    if (!isInterface && !isWord("SUBTYPE_CONSTRAINT"))
        return false;
    while (!isInterface && !isAtEnd() && !isWord(ConstraintEnd) && !(isWord() && isBoundary(token_.text)))
        vNext();
    vStatementSkip();
    return true;
}

void PositionReader::vStrayTextNote(ExpressPositions& positions) {
    const bool goesOn = lastOther_ && previous_.text.data() == lastOther_;
    const bool isInSchema = !positions.schemas.empty() && positions.schemas.back().end.text.empty();
    lastOther_ = token_.isSymbol(';') && !goesOn ? nullptr : token_.text.data();
    if (!goesOn && lastOther_ && isInSchema)
        positions.strayTexts.push_back({token_.text});
}

/// "END_SCHEMA", or misspelt.
bool PositionReader::isSchemaEnd() const {
    constexpr Statement Schema{SchemaKeyword, "END_SCHEMA", ExpressDeclarationKind::Constant};
    return isWord(Schema.end) || isEndMisspelt(Schema);
}

void PositionReader::vSchemaEndRead(ExpressSchemaHeader& header) {
    const bool isTwoWords = isWord("END");
    header.end = takeWord();
    if (isTwoWords) {
        vNext();
        vNameExtend(header.end);
    }
    if (token_.isSymbol(';'))
        vNext();
    else
        vUnendedNote();
}

// schema_header = 'SCHEMA' [ name ] ... ';'
void PositionReader::vSchemaRead(ExpressPositions& positions) {
    ExpressSchemaHeader header;
    header.keyword = takeWord();
    if (isWord())
        header.name = takeWord();
    header.firstDeclaration = positions.declarations.size();
    while (!isStatementEnd())
        vNext();
    if (token_.isSymbol(';'))
        vNext();
    else if (!isAtEnd())
        vUnendedNote();
    positions.schemas.push_back(header);
}

/// What was found is kept, and the list is empty again.
template <class Value>
std::span<const Value> PositionReader::kept(std::vector<Value>& list) {
    const auto stays = kept_->list(std::span<const Value>(list));
    list.clear();
    return stays;
}

const ExpressMistakes* PositionReader::pMistakesKept() {
    const bool isRight = lists_.misspelt.empty() && lists_.typeMisspelt.empty() &&
                         lists_.memberMisspelt.empty() && lists_.illegalNames.empty() &&
                         lists_.gaps.empty() && lists_.swappedBounds.empty() && lists_.wrongBounds.empty();
    if (isRight)
        return &NoExpressMistakes;
    const ExpressMistakes mistakes{kept(lists_.misspelt),       kept(lists_.typeMisspelt),
                                   kept(lists_.memberMisspelt), kept(lists_.illegalNames),
                                   kept(lists_.gaps),           kept(lists_.swappedBounds),
                                   kept(lists_.wrongBounds)};
    return kept_->list(std::span(&mistakes, 1)).data();
}

void PositionReader::vListsKeep(ExpressDeclaration& declaration) {
    declaration.names = kept(lists_.names);
    declaration.members = kept(lists_.members);
    declaration.mistakes = pMistakesKept();
}

ExpressDeclaration PositionReader::declarationRead(const Statement& statement) {
    ExpressDeclaration declaration;
    const auto begin = offset();
    declaration.kind = statement.kind;
    declaration.keyword = takeWord();
    vDeclaredNameRead(declaration);
    if (statement.kind == ExpressDeclarationKind::Type)
        vTypeRead(declaration, statement);
    else if (statement.kind == ExpressDeclarationKind::Entity)
        vEntityRead(declaration, statement);
    else
        vBodyRead(declaration, statement);
    vEndRead(declaration, statement);
    declaration.text = textFrom(begin);
    vListsKeep(declaration);
    return declaration;
}

void PositionReader::vDeclaredNameRead(ExpressDeclaration& declaration) {
    if (isNameMissing(declaration)) {
        declaration.name = placeHere();
        return;
    }
    declaration.name = takeName();
    while (isNameGoingOn(declaration)) {
        vNext();
        vNameExtend(declaration.name);
    }
}

/// "ENTITY END_ENTITY", "ENTITY SUBTYPE OF" and "RULE FOR" have no name.
bool PositionReader::isNameMissing(const ExpressDeclaration& declaration) const {
    if ((!isWord() && !isNumber()) || isBoundary(token_.text))
        return true;
    if (declaration.kind == ExpressDeclarationKind::Rule)
        return isWord("FOR");
    return declaration.kind == ExpressDeclarationKind::Entity && !headerWordHere().empty();
}

/// Whether the current word is a part of the name, with a blank before it: nothing else can be there.
bool PositionReader::isNameGoingOn(const ExpressDeclaration& declaration) const {
    if (!isWord() || isLineStart() || isStatementEnd())
        return false;
    switch (declaration.kind) {
    case ExpressDeclarationKind::Type:
        return ahead_.isSymbol('=');
    case ExpressDeclarationKind::Entity:
        return headerWordHere().empty() && !ahead_.isSymbol(':') && !ahead_.isSymbol('(');
    case ExpressDeclarationKind::Function:
        return ahead_.isSymbol('(') || ahead_.startsLine;
    case ExpressDeclarationKind::Rule:
        return !isWord("FOR") && isSameExpressWord(ahead_.text, "FOR");
    default:
        return false;
    }
}

void PositionReader::vEndRead(ExpressDeclaration& declaration, const Statement& statement) {
    declaration.end = placeHere();
    if (!isWord(statement.end) && !isEndMisspelt(statement))
        return;
    const bool isTwoWords = isWord("END");
    declaration.end = takeWord();
    if (isTwoWords) {
        vNext();
        vNameExtend(declaration.end);
    }
    if (token_.isSymbol(';'))
        vNext();
    else
        vUnendedNote();
}

// constants = 'CONSTANT' { name ':' type ':=' expression ';' } 'END_CONSTANT' ';'
void PositionReader::vConstantsRead(ExpressPositions& positions) {
    const auto keyword = takeWord();
    while (!isAtEnd() && !(isWord() && isBoundary(token_.text))) {
        if (isWord() && ahead_.isSymbol(':')) {
            ExpressDeclaration constant;
            constant.kind = ExpressDeclarationKind::Constant;
            constant.keyword = keyword;
            constant.name = takeWord();
            constant.text = constant.name.text;
            positions.declarations.push_back(constant);
        }
        if (token_.isSymbol(';') || isStatementEnd())
            vNext();
        else
            vStatementSkip();
    }
}

// type = 'TYPE' name '=' type_text ';' [ 'WHERE' rules ] 'END_TYPE' ';'
void PositionReader::vTypeRead(ExpressDeclaration& type, const Statement& statement) {
    if (!token_.isSymbol('=') && !isAtEnd() && !(isWord() && isBoundary(token_.text)))
        vGapNote("\"=\"");
    const auto begin = token_.isSymbol('=') ? offset() + 1 : offset();
    vTypeTextRead();
    type.typeText = textFrom(begin);
    vSemicolonTake();
    vClausesRead(type, statement, ExpressMemberKind::Where);
}

void PositionReader::vTypeTextRead() {
    auto use = ExpressUse::Type;
    Brackets brackets;
    OpenBounds bounds;
    bool isBare = false;
    while (!isStatementEnd() || isListGoingOn(use, brackets)) {
        if (token_.isSymbol(';'))
            vGapNote("\",\"");
        if (brackets.isOutside())
            vGapNote(missingInType());
        else if (use != ExpressUse::Type)
            vGapNote(missingInList());
        if (brackets.isOutside() && use != ExpressUse::Type && !isBare && isBareName()) {
            vGapNote("\"(\"");
            isBare = !isOtherBracket();
        }
        if (brackets.isOutside() && !isBare)
            vTypeWordNote(lists_.typeMisspelt);
        vBoundsClose(bounds, brackets);
        brackets.vPass(token_);
        vBoundsPass(bounds, brackets);
        const auto list = use == ExpressUse::Type && brackets.isOutside() ? listWordHere() : "";
        const bool isItem = use == ExpressUse::EnumerationItem && isNumber();
        const bool isName = (isWord() || isItem) &&
                            (use == ExpressUse::Type ? brackets.isOutside() && !isTypeKeyword(token_.text)
                                                     : isBare || !brackets.isOutside());
        if (isName && use == ExpressUse::EnumerationItem) {
            lists_.names.push_back({use, takeName()});
            continue;
        }
        // A misspelt keyword is read as the name of a type.
        if (isName && use == ExpressUse::Type && !isMisspeltOf())
            vTypeNameAdd(lists_.names, use);
        else if (isName && use != ExpressUse::Type)
            lists_.names.push_back({use, {token_.text}});
        if (!list.empty())
            use = list == "SELECT" ? ExpressUse::SelectMember : ExpressUse::EnumerationItem;
        vNext();
    }
    vBoundsEnd(bounds);
    if (token_.isSymbol(';') && !bounds.isOpen && !brackets.isOutside())
        vGapNote("\")\"");
    else if (use == ExpressUse::Type && token_.isSymbol(';'))
        vTypeGapNote("a type");
}

// entity = 'ENTITY' name header ';' { attribute } { clause } 'END_ENTITY' ';'
void PositionReader::vEntityRead(ExpressDeclaration& entity, const Statement& statement) {
    // Some write a ';' after the name already.
    do {
        vEntityHeaderRead(entity);
    } while (!headerWordHere().empty());
    vClausesRead(entity, statement, ExpressMemberKind::Attribute);
}

// header = [ 'ABSTRACT' ] [ 'SUPERTYPE' [ 'OF' list ] ] [ 'SUBTYPE' 'OF' list ]
void PositionReader::vEntityHeaderRead(ExpressDeclaration& entity) {
    const Brackets outside;
    auto use = ExpressUse::Subtype;
    bool isBare = false;
    while (!isStatementEnd() && !isNextMember(outside)) {
        if (const auto keyword = headerWordHere(); !keyword.empty()) {
            entity.isAbstract = entity.isAbstract || keyword == "ABSTRACT";
            use = keyword == "SUBTYPE" ? ExpressUse::Supertype : ExpressUse::Subtype;
            vKeywordTake(keyword);
            if (keyword != "ABSTRACT" && isOfMissing(keyword))
                vGapNote("\"OF\"");
            isBare = false;
        } else if (token_.isSymbol('(')) {
            vListRead(use);
        } else {
            if ((isWord() || isOtherBracket()) && isSameExpressWord(previous_.text, "OF")) {
                vGapNote("\"(\"");
                isBare = true;
            }
            if (isBare && isWord() && !isListOperator(token_))
                lists_.names.push_back({use, {token_.text}});
            vNext();
        }
    }
    if (isSameExpressWord(previous_.text, "OF"))
        vGapNote("a name");
    vSemicolonTake();
}

/// SUPERTYPE may be alone after ABSTRACT.
bool PositionReader::isOfMissing(std::string_view keyword) const {
    return token_.isSymbol('(') || (keyword == "SUBTYPE" && token_.isSymbol(';'));
}

/// "(SOLID; HOLLOW)": the ';' is in the place of a comma.
bool PositionReader::isListGoingOn(ExpressUse use, const Brackets& brackets) const {
    if (!token_.isSymbol(';') || use == ExpressUse::Type || brackets.isOutside())
        return false;
    return ahead_.isSymbol(',') ||
           (ahead_.kind == ExpressTokenKind::Word && !isBoundary(ahead_.text) && !isClause(ahead_.text));
}

/// What is missing in a list of names before the current token; empty for nothing.
std::string_view PositionReader::missingInList() const {
    if (isListName(previous_) && isListName(token_))
        return "\",\"";
    const bool needsName = previous_.isSymbol('(') || previous_.isSymbol(',');
    return needsName && (token_.isSymbol(',') || token_.isSymbol(')')) ? "a name" : std::string_view();
}

/// "SET [1:?] OFF Name"
bool PositionReader::isMisspeltOf() const {
    return previous_.isSymbol(']') && ahead_.kind == ExpressTokenKind::Word &&
           isOneOf(token_.text, {"OFF", "FO", "0F"});
}

/// The same between the words of a type.
std::string_view PositionReader::missingInType() const {
    const bool isOf = isWord("OF");
    if (previous_.isSymbol(']') && !isOf && !isWord("FIXED") && !token_.isSymbol('['))
        return isMisspeltOf() ? std::string_view() : "\"OF\"";
    if (previous_.kind != ExpressTokenKind::Word || !isTypeKeyword(previous_.text))
        return {};
    if (isOneOf(previous_.text, {"STRING", "BINARY", "REAL"}) && token_.isSymbol('['))
        return "\"(\"";
    if (isAggregateWord(previous_.text) && !isOf && !token_.isSymbol('['))
        return token_.isSymbol('(') || isNumber() ? "\"[\"" : "\"OF\"";
    return isSameExpressWord(previous_.text, "ENUMERATION") && token_.isSymbol('(') ? "\"OF\""
                                                                                    : std::string_view();
}

void PositionReader::vGapNote(std::string_view missing) {
    if (!missing.empty())
        lists_.gaps.push_back({{previous_.text}, missing, false, false, false});
}

void PositionReader::vGapBeforeNote(std::string_view missing) {
    lists_.gaps.push_back({{token_.text}, missing, false, false, true});
}

/// Whether nothing but a type can come after the word or symbol before the current one.
bool PositionReader::isTypeExpected() const {
    return previous_.isSymbol(':') || previous_.isSymbol('=') ||
           (previous_.kind == ExpressTokenKind::Word &&
            isOneOf(previous_.text, {"OF", "OPTIONAL", "UNIQUE"}));
}

/// Where a statement ends, or goes on with something else.
void PositionReader::vTypeGapNote(std::string_view missing) {
    if (isTypeExpected())
        vGapNote(missing);
}

/// "Ifc Label" is one name with a blank in it, and there may be more.
void PositionReader::vTypeNameAdd(std::vector<ExpressName>& names, ExpressUse use) const {
    const bool goesOn = use == ExpressUse::Type && !isLineStart() && !names.empty() &&
                        endOf(names.back().word.text) == endOf(previous_.text) &&
                        misspeltKeyword(previous_.text, TypeWords).empty();
    if (!goesOn) {
        names.push_back({use, {token_.text}});
        return;
    }
    auto& word = names.back().word;
    const auto begin = static_cast<std::size_t>(word.text.data() - text_.data());
    word.text = text_.substr(begin, offset() + token_.text.size() - begin);
}

/// Whether the first name of a list is here without a round bracket before it.
bool PositionReader::isBareName() const {
    return (isListName(token_) || isOtherBracket()) &&
           isOneOf(previous_.text, {"ENUMERATION", "SELECT", "OF"}) && !isTypeKeyword(token_.text);
}

/// A keyword of a type is found in capitals only.
void PositionReader::vTypeWordNote(std::vector<ExpressMisspelt>& misspelt) const {
    if (isMisspeltOf())
        misspelt.push_back({{token_.text}, "OF"});
    if (!isWord() || !isTypeKeyword(token_.text))
        return;
    const auto keyword = keywordIn(token_.text, TypeWords);
    if (!keyword.empty() && token_.text != keyword)
        misspelt.push_back({{token_.text}, keyword});
}

/// Looks at the current token, which `brackets` has passed.
void PositionReader::vBoundsPass(OpenBounds& bounds, const Brackets& brackets) {
    if (token_.isSymbol('[') && brackets.getDepth() == 1 && isAggregateWord(previous_.text)) {
        bounds = {{token_.text}, true, false};
    } else if (bounds.isOpen && token_.isSymbol(':') && brackets.getDepth() == 1) {
        bounds.hasColon = true;
    } else if (bounds.isOpen && brackets.isOutside()) {
        bounds.isOpen = false;
        if (!token_.isSymbol(']'))
            return vGapNote("\"]\"");
        const auto whole = boundsFrom(bounds.open);
        if (!bounds.hasColon)
            lists_.gaps.push_back({whole, "\":\"", true, false, false});
        else if (hasWrongBound(whole.text))
            lists_.wrongBounds.push_back(whole);
        else if (isSwapped(whole.text))
            lists_.swappedBounds.push_back(whole);
    }
}

/// "SET [1:? OF Name": what comes after the bounds is outside of them.
void PositionReader::vBoundsClose(OpenBounds& bounds, Brackets& brackets) {
    if (!bounds.isOpen || !isWord("OF"))
        return;
    vGapNote("\"]\"");
    bounds.isOpen = false;
    brackets = {};
}

/// "LIST [1:2;": the statement ends before the bounds do.
void PositionReader::vBoundsEnd(const OpenBounds& bounds) {
    if (bounds.isOpen && !isAtEnd())
        vGapNote("\"]\"");
}

/// From the bracket up to the current token.
ExpressWord PositionReader::boundsFrom(const ExpressWord& open) const {
    ExpressWord whole = open;
    const auto begin = static_cast<std::size_t>(open.text.data() - text_.data());
    whole.text = text_.substr(begin, offset() + token_.text.size() - begin);
    return whole;
}

/// The names in brackets, whatever is between them.
void PositionReader::vListRead(ExpressUse use) {
    Brackets brackets;
    do {
        if (!brackets.isOutside())
            vGapNote(missingInList());
        brackets.vPass(token_);
        if (isWord("ONE") && isSameExpressWord(ahead_.text, "OF")) {
            auto words = takeWord();
            vNext();
            vNameExtend(words);
            lists_.misspelt.push_back({words, OneOf});
            continue;
        }
        if ((isWord(OneOf) && token_.text != OneOf) ||
            (ahead_.isSymbol('(') && !misspeltKeyword(token_.text, std::span(&OneOf, 1)).empty()))
            lists_.misspelt.push_back({{token_.text}, OneOf});
        else if (isWord() && !isListOperator(token_))
            lists_.names.push_back({use, {token_.text}});
        vNext();
    } while (!isStatementEnd() && !brackets.isOutside() && keywordIn(token_.text, HeaderWords).empty());
    if (!isAtEnd() && !brackets.isOutside())
        vGapNote("\")\"");
}

// clause = ( 'DERIVE' | 'INVERSE' | 'UNIQUE' | 'WHERE' ) { member }
void PositionReader::vClausesRead(ExpressDeclaration& declaration, const Statement& statement,
                                  ExpressMemberKind kind) {
    bool isInRules = false;
    while (!isAtEnd() && !(isWord() && isBoundary(token_.text)) && !isEndMisspelt(statement)) {
        if (const auto clause = clauseHere(declaration.kind, isInRules); !clause.empty()) {
            kind = clauseKind(clause);
            isInRules = kind == ExpressMemberKind::Where;
            vKeywordTake(clause);
            // On the next line it is rather that of an attribute without a name.
            if (token_.isSymbol(':') && !isLineStart())
                vSurplusColonTake();
        } else if (isWord() || (isNumber() && ahead_.isSymbol(':')) || isSeparator() ||
                   (kind == ExpressMemberKind::Where && !token_.isSymbol(';'))) {
            // A rule may have no label, and a name may be missing.
            vMemberRead(kind);
        } else {
            vNext();
        }
    }
}

/// "INVERSE:"
void PositionReader::vSurplusColonTake() {
    lists_.gaps.push_back({{previous_.text}, "\":\"", false, false, false, true});
    vNext();
}

void PositionReader::vMemberRead(ExpressMemberKind kind) {
    ExpressMember member;
    member.kind = kind;
    member.name = placeHere();
    if (kind == ExpressMemberKind::Unique || kind == ExpressMemberKind::Where) {
        vLabelRead(member);
        if (kind == ExpressMemberKind::Unique)
            vUniqueRead(member);
        else
            vRuleRead(member);
        lists_.members.push_back(member);
    } else {
        vAttributesRead(member);
    }
    vSemicolonTake();
}

// label = [ name ':' ]
void PositionReader::vLabelRead(ExpressMember& member) {
    if (!isWord() || !ahead_.isSymbol(':'))
        return;
    member.name = takeWord();
    vNext();
}

// attributes = attribute { ',' attribute } ':' type [ ':=' expression | 'FOR' name ]
void PositionReader::vAttributesRead(ExpressMember member) {
    const auto gapCount = lists_.gaps.size();
    vAttributeNamesRead(member);
    const auto colonGap = lists_.gaps.size();
    if (!lists_.attributes.empty())
        vColonTake(lists_.attributes.back());
    vTypePartRead(member);
    // Words that lack the ';' as well are rather no attribute: that is said once.
    if (colonGap < lists_.gaps.size() && lists_.gaps[colonGap].missing == "\":\"" &&
        !lists_.gaps[colonGap].isSurplus && !token_.isSymbol(';'))
        lists_.gaps.erase(lists_.gaps.begin() + static_cast<std::ptrdiff_t>(colonGap));
    for (auto index = gapCount; index < lists_.gaps.size(); ++index)
        lists_.gaps[index].isInMember = true;
    vAttributesAdd(member);
}

/// Adds those of one statement. However many share them, the names in the type and the expression are there
/// once, with the first.
void PositionReader::vAttributesAdd(const ExpressMember& shared) {
    if (!lists_.attributes.empty()) {
        auto& first = lists_.attributes.front();
        lists_.memberNames.insert(lists_.memberNames.begin(), first.names.begin(), first.names.end());
        first.names = kept(lists_.memberNames);
        first.expression = shared.expression;
        if (!lists_.attributeMisspelt.empty())
            lists_.memberMisspelt.push_back({lists_.members.size(), kept(lists_.attributeMisspelt)});
    }
    for (auto& attribute : lists_.attributes) {
        attribute.type = shared.type;
        lists_.members.push_back(attribute);
    }
    lists_.attributes.clear();
    lists_.memberNames.clear();
    lists_.attributeMisspelt.clear();
}

/// One without a name is there for its type, when it is the only one.
void PositionReader::vAttributeNamesRead(const ExpressMember& member) {
    auto& attributes = lists_.attributes;
    while (!isStatementEnd() && (isWord() || isNumber() || isSeparator())) {
        const bool isMissing = isSeparator();
        if (isMissing)
            vGapBeforeNote("a name");
        if (!isMissing || (attributes.empty() && token_.isSymbol(':')))
            attributes.push_back(member);
        if (isWord("SELF") && ahead_.isSymbol('\\'))
            vRedeclarationRead(attributes.back());
        else if (!isMissing)
            attributes.back().name = takeName();
        if (!token_.isSymbol(','))
            break;
        vNext();
    }
}

/// The ':' between the names of attributes and their type, or what is in its place.
void PositionReader::vColonTake(const ExpressMember& member) {
    if (token_.isSymbol(':'))
        return vNext();
    const bool isDerived = member.kind == ExpressMemberKind::Derived;
    if (token_.text == ":=" && isDerived)
        return vGapNote("a type");
    const bool isWrong = !isDerived && (token_.text == ":=" || token_.isSymbol('='));
    // A word on the next line is rather another statement, as is one with a colon after it.
    const bool isLeftOut = isWord() && !isStatementEnd() && !isLineStart() && !ahead_.isSymbol(':');
    if (isWrong || isLeftOut || (token_.isSymbol(';') && !member.name.text.empty()))
        vGapNote("\":\"");
    if (isWrong)
        vNext();
}

// redeclaration = 'SELF' '\' entity '.' name
void PositionReader::vRedeclarationRead(ExpressMember& member) {
    vNext();
    vNext();
    if (!isWord() || isStatementEnd())
        return;
    const ExpressName entity{ExpressUse::RedeclaredEntity, takeWord()};
    member.names = kept_->list(std::span(&entity, 1));
    if (!token_.isSymbol('.'))
        return;
    vNext();
    if (isWord() && !isStatementEnd())
        member.name = takeWord();
}

void PositionReader::vTypePartRead(ExpressMember& member) {
    const auto begin = offset();
    const auto missing = member.kind == ExpressMemberKind::Inverse ? "an entity" : "a type";
    Brackets brackets;
    OpenBounds bounds;
    auto use = ExpressUse::Type;
    // After a ':' too many nothing more is looked at.
    bool isRest = false;
    // "OPTIONAL Name : REAL": the next attribute begins right after a word.
    bool isColonPassed = !previous_.isSymbol(':') && isWord() && ahead_.isSymbol(':');
    while (!isColonPassed && !isStatementEnd() && !isInitial(member, brackets) && !isNextMember(brackets)) {
        if (brackets.isOutside() && !isRest) {
            vGapNote(missingInType());
            vTypeWordNote(lists_.attributeMisspelt);
        }
        vBoundsClose(bounds, brackets);
        brackets.vPass(token_);
        vBoundsPass(bounds, brackets);
        if (isForHere(member, use)) {
            use = ExpressUse::InverseFor;
            vTypeGapNote(missing);
            member.type = textFrom(begin);
            if (token_.text != "FOR")
                lists_.attributeMisspelt.push_back({{token_.text}, "FOR"});
        } else if (!isRest && isStrayColon(brackets) && offset() != begin) {
            isColonPassed = boStatementEndedBy();
            isRest = !isColonPassed && member.kind != ExpressMemberKind::Inverse;
        } else if (isWord() && !isRest && brackets.isOutside() && !isTypeKeyword(token_.text) &&
                   !isMisspeltOf()) {
            if (member.kind == ExpressMemberKind::Inverse && use == ExpressUse::Type &&
                !lists_.memberNames.empty()) {
                vGapNote("\"FOR\"");
                use = ExpressUse::InverseFor;
                member.type = textFrom(begin);
            }
            vTypeNameAdd(lists_.memberNames, use);
        }
        vNext();
    }
    vBoundsEnd(bounds);
    if (use == ExpressUse::Type) {
        if (!isColonPassed && !isRest)
            vTypeGapNote(missing);
        member.type = textFrom(begin);
        if (member.kind == ExpressMemberKind::Inverse && token_.isSymbol(';') && !lists_.memberNames.empty())
            vGapNote("\"FOR\"");
    } else if (isSameExpressWord(previous_.text, "FOR")) {
        vGapNote("a name");
    }
    if (isInitial(member, brackets))
        vInitialRead(member);
    else if (member.kind == ExpressMemberKind::Derived && token_.isSymbol(';') && !member.type.empty())
        vGapNote("\":=\"");
}

/// FOR, be it misspelt, after the entity of an inverse attribute.
bool PositionReader::isForHere(const ExpressMember& member, ExpressUse use) const {
    if (member.kind != ExpressMemberKind::Inverse || use != ExpressUse::Type || !isWord())
        return false;
    return isWord(ForKeyword) || (!lists_.memberNames.empty() && ahead_.kind == ExpressTokenKind::Word &&
                                  !misspeltKeyword(token_.text, std::span(&ForKeyword, 1)).empty());
}

/// "Name : REAL:". After a number it is rather that of bounds.
bool PositionReader::isStrayColon(const Brackets& brackets) const {
    return token_.isSymbol(':') && brackets.isOutside() && previous_.kind != ExpressTokenKind::Number &&
           !isGeneric(previous_.text);
}

/// A ':' after a type is in the place of the ';' where its line ends. Elsewhere, as in "Name : Label :
/// REAL;", it is one too many.
bool PositionReader::boStatementEndedBy() {
    if (ahead_.startsLine) {
        vUnendedNote();
        return true;
    }
    lists_.gaps.push_back({{previous_.text}, "\":\"", false, false, false, true});
    return false;
}

/// ":=", or "=" or ":" where that is meant.
bool PositionReader::isInitial(const ExpressMember& member, const Brackets& brackets) const {
    const bool isMeant = member.kind != ExpressMemberKind::Inverse && brackets.isOutside();
    const bool isColon = member.kind == ExpressMemberKind::Derived && isStrayColon(brackets);
    return token_.text == ":=" || (isMeant && (token_.isSymbol('=') || isColon));
}

// initial = ':=' expression
void PositionReader::vInitialRead(ExpressMember& member) {
    if (token_.text != ":=")
        vGapNote("\":=\"");
    vNext();
    if (token_.isSymbol(';'))
        vGapNote("an expression");
    Brackets brackets;
    vExpressionRead(member, brackets);
    if (token_.isSymbol(';') && !brackets.isOutsideRound())
        vGapNote("\")\"");
}

void PositionReader::vRuleRead(ExpressMember& member) {
    Brackets brackets;
    vExpressionRead(member, brackets);
}

void PositionReader::vExpressionRead(ExpressMember& member, Brackets& brackets) {
    const auto begin = offset();
    do {
        if (isStatementEnd())
            break;
        brackets.vPass(token_);
        vNext();
    } while (!isNextMember(brackets));
    member.expression = textFrom(begin);
}

/// "UR1 Name;"
bool PositionReader::isLabelWithoutColon() const {
    return isWord() && !isStatementEnd() && ahead_.kind == ExpressTokenKind::Word && !ahead_.startsLine;
}

// unique_rule = [ label ] attribute { ',' attribute } ';'
void PositionReader::vUniqueRead(ExpressMember& member) {
    const Brackets outside;
    const auto gapCount = lists_.gaps.size();
    if (token_.isSymbol(':')) {
        vGapBeforeNote("a name");
        vNext();
    } else if (isLabelWithoutColon()) {
        member.name = takeWord();
        vGapNote("\":\"");
    }
    if (token_.isSymbol(';'))
        vGapNote("a name");
    while (!isStatementEnd() && !isNextMember(outside)) {
        if (isWord() && !(isSameExpressWord(token_.text, "SELF") && ahead_.isSymbol('\\')))
            lists_.memberNames.push_back({ExpressUse::UniqueAttribute, {token_.text}});
        vNext();
    }
    member.names = kept(lists_.memberNames);
    for (auto index = gapCount; index < lists_.gaps.size(); ++index)
        lists_.gaps[index].isInMember = true;
}

// Functions, procedures and rules: everything up to the end, local ones included.
void PositionReader::vBodyRead(ExpressDeclaration& declaration, const Statement& statement) {
    if (statement.kind == ExpressDeclarationKind::Rule && isWord("FOR")) {
        vNext();
        if (token_.isSymbol('('))
            vListRead(ExpressUse::RuleEntity);
    }
    const auto begin = offset();
    std::size_t locals = 0;
    while (!isAtEnd()) {
        const auto* const inner = isWord() ? pStatement(token_.text) : nullptr;
        // Local ones are indented: what begins a line is the next declaration, and an end is missing.
        if (inner && inner->kind != ExpressDeclarationKind::Constant &&
            (isFirstOnLine() || inner->kind <= ExpressDeclarationKind::Entity ||
             inner->kind == ExpressDeclarationKind::Rule))
            break;
        if (inner && inner->kind == statement.kind)
            ++locals;
        else if ((isWord() && isSchemaWord(token_.text)) || (isWord(statement.end) && locals-- == 0) ||
                 isEndMisspelt(statement))
            break;
        vNext();
    }
    declaration.body = textFrom(begin);
}

/// UTF-16 shows by its byte order mark, or by a zero beside the first letters.
bool isUtf16(std::string_view text) {
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        return true;
    constexpr std::size_t Looked = 64;
    const auto begin = text.substr(0, Looked);
    return begin.size() > 1 && static_cast<std::size_t>(std::ranges::count(begin, '\0')) >= begin.size() / 2;
}

/// About how many declarations there are: as many as lines that begin with the end of one. Without room for
/// them from the beginning, a list of declarations has twice the room that it needs.
std::size_t likelyDeclarations(std::string_view text) {
    constexpr std::string_view LineWithEnd = "\nEND_";
    // "TYPE A=B;END_TYPE;", which nothing else is as short as.
    constexpr std::size_t ShortestDeclaration = 18;
    const auto most = text.size() / ShortestDeclaration;
    std::size_t count = 0;
    for (auto at = text.find(LineWithEnd); at != std::string_view::npos && count != most;
         at = text.find(LineWithEnd, at + LineWithEnd.size()))
        ++count;
    return count;
}

bool isPartOf(std::string_view text, std::string_view part) {
    constexpr std::less_equal<> isUpTo;
    return part.data() && isUpTo(text.data(), part.data()) &&
           isUpTo(part.data() + part.size(), text.data() + text.size());
}

} // namespace

bool isSameExpressWord(std::string_view left, std::string_view right) {
    return isEqualIgnoringCase(left, right);
}

TextPosition ExpressPositions::positionOf(const ExpressWord& word) const {
    const auto part = word.text;
    if (!isPartOf(text, part))
        return {};
    const bool isOnOneLine = !part.empty() && part.find_first_of("\r\n") == std::string_view::npos;
    if (isOnOneLine)
        return lines.of(part);
    return lines.of(ExpressScanner(text, static_cast<std::size_t>(part.data() - text.data())).next().text);
}

std::span<const ExpressMisspelt> misspeltIn(const ExpressDeclaration& declaration, std::size_t member) {
    const auto& all = declaration.mistakes->memberMisspelt;
    const auto found = std::ranges::lower_bound(all, member, {}, &ExpressMemberMisspelt::member);
    return found == all.end() || found->member != member ? std::span<const ExpressMisspelt>() : found->words;
}

ExpressPositions expressPositions(std::string_view text) {
    ExpressPositions positions;
    positions.text = text;
    if (isUtf16(text)) {
        positions.encoding = ExpressEncoding::Utf16;
        return positions;
    }
    positions.hasReturnsOnly =
        text.find('\r') != std::string_view::npos && text.find('\n') == std::string_view::npos;
    positions.lines = TextLines(withoutByteOrderMark(text));
    positions.declarations.reserve(likelyDeclarations(text));
    PositionReader(text).vRead(positions);
    return positions;
}

} // namespace kiv::kit
