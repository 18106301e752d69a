#include "kiv/Kit/Positions/ExpressPositions.h"

#include "Kit/Positions/ExpressScanner.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace kiv::kit {

namespace {

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> keywords) {
    return std::ranges::any_of(keywords,
                               [word](std::string_view keyword) { return isSameExpressWord(word, keyword); });
}

/// Words in a type that are no names.
bool isTypeKeyword(std::string_view word) {
    return isOneOf(word, {"OPTIONAL", "ARRAY",  "LIST",        "SET",      "BAG",       "OF",
                          "UNIQUE",   "REAL",   "BOOLEAN",     "INTEGER",  "NUMBER",    "STRING",
                          "LOGICAL",  "BINARY", "FIXED",       "GENERIC",  "AGGREGATE", "GENERIC_ENTITY",
                          "SELECT",   "WITH",   "ENUMERATION", "BASED_ON", "EXTENSIBLE"});
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

bool isSchemaWord(std::string_view word) {
    return isOneOf(word, {"SCHEMA", "END_SCHEMA"});
}

bool isDeclarationEnd(std::string_view word) {
    return std::ranges::any_of(
        Statements, [word](const Statement& statement) { return isSameExpressWord(word, statement.end); });
}

/// Words that no statement before its ';' contains: where one is met, the ';' is missing.
bool isBoundary(std::string_view word) {
    return isSchemaWord(word) || pStatement(word) || isDeclarationEnd(word);
}

bool isClause(std::string_view word) {
    return isOneOf(word, {"DERIVE", "INVERSE", "WHERE"});
}

ExpressMemberKind clauseKind(std::string_view word) {
    if (isSameExpressWord(word, "DERIVE"))
        return ExpressMemberKind::Derived;
    if (isSameExpressWord(word, "INVERSE"))
        return ExpressMemberKind::Inverse;
    return isSameExpressWord(word, "UNIQUE") ? ExpressMemberKind::Unique : ExpressMemberKind::Where;
}

/// How deep in brackets of any kind.
class Brackets {
public:
    void vPass(const ExpressToken& token) {
        if (token.isSymbol('(') || token.isSymbol('[') || token.isSymbol('{'))
            ++depth_;
        else if (depth_ > 0 && (token.isSymbol(')') || token.isSymbol(']') || token.isSymbol('}')))
            --depth_;
    }
    bool isOutside() const { return depth_ == 0; }
    std::size_t getDepth() const { return depth_; }

private:
    std::size_t depth_ = 0;
};

/// One function for each kind of statement; each leaves the token after it as the current one.
class PositionReader {
public:
    explicit PositionReader(std::string_view text) : text_(text), scanner_(text) {
        vNext();
        vNext();
    }

    void vRead(ExpressPositions& positions);

private:
    void vNext();
    bool isAtEnd() const { return token_.kind == ExpressTokenKind::End; }
    bool isWord() const { return token_.kind == ExpressTokenKind::Word; }
    bool isWord(std::string_view keyword) const {
        return isWord() && isSameExpressWord(token_.text, keyword);
    }
    bool isStatementEnd() const;
    bool isUniqueClause() const;
    bool isNextMember(const Brackets& brackets) const;
    ExpressWord takeWord();
    std::size_t offset() const;
    std::string_view textFrom(std::size_t begin) const;

    void vSchemaRead(ExpressPositions& positions);
    void vSchemaEndRead(ExpressSchemaHeader& header);
    void vOtherPass(ExpressPositions& positions);
    ExpressDeclaration declarationRead(const Statement& statement);
    void vConstantsRead(ExpressPositions& positions);
    void vTypeRead(ExpressDeclaration& type);
    void vEntityRead(ExpressDeclaration& entity);
    void vEntityHeaderRead(ExpressDeclaration& entity);
    void vListRead(ExpressUse use, std::vector<ExpressName>& names);
    void vClausesRead(ExpressDeclaration& declaration, ExpressMemberKind kind);
    void vMemberRead(ExpressDeclaration& declaration, ExpressMemberKind kind);
    void vAttributesRead(ExpressDeclaration& declaration, ExpressMember member);
    void vRedeclarationRead(ExpressMember& member);
    void vTypePartRead(ExpressMember& member);
    void vExpressionRead(ExpressMember& member);
    void vLabelRead(ExpressMember& member);
    void vUniqueRead(ExpressMember& member);
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
    std::vector<ExpressUnended> unended_;
};

void PositionReader::vNext() {
    if (!token_.text.empty())
        previousEnd_ = offset() + token_.text.size();
    previous_ = token_;
    token_ = std::exchange(ahead_, scanner_.next());
}

std::size_t PositionReader::offset() const {
    return isAtEnd() ? text_.size() : static_cast<std::size_t>(token_.text.data() - text_.data());
}

/// What is between a place and the current token, without the blanks and comments at its end.
std::string_view PositionReader::textFrom(std::size_t begin) const {
    return previousEnd_ > begin ? text_.substr(begin, previousEnd_ - begin) : std::string_view();
}

ExpressWord PositionReader::takeWord() {
    const ExpressWord word{token_.text, token_.position};
    vNext();
    return word;
}

bool PositionReader::isStatementEnd() const {
    return isAtEnd() || token_.isSymbol(';') || isUniqueClause() ||
           (isWord() && (isBoundary(token_.text) || isClause(token_.text)));
}

/// Not the word in LIST OF UNIQUE.
bool PositionReader::isUniqueClause() const {
    return isWord("UNIQUE") && !isSameExpressWord(previous_.text, "OF");
}

/// Whether a new member begins here because the one before lacks its ';'.
bool PositionReader::isNextMember(const Brackets& brackets) const {
    return brackets.isOutside() && isWord() && ahead_.isSymbol(':') &&
           !isOneOf(token_.text, {"GENERIC", "AGGREGATE", "GENERIC_ENTITY"});
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
    else if (!isAtEnd() && !(isWord() && pStatement(token_.text)) && !previous_.isSymbol(';'))
        vUnendedNote();
}

void PositionReader::vUnendedNote() {
    unended_.push_back({{previous_.text, previous_.position}, token_.position});
}

// schemas = { anything | schema_header | declaration }
void PositionReader::vRead(ExpressPositions& positions) {
    while (!isAtEnd()) {
        const auto* const statement =
            isWord() && ahead_.kind == ExpressTokenKind::Word ? pStatement(token_.text) : nullptr;
        if (isWord("SCHEMA") && ahead_.kind == ExpressTokenKind::Word)
            vSchemaRead(positions);
        else if (isWord("END_SCHEMA") && !positions.schemas.empty())
            vSchemaEndRead(positions.schemas.back());
        else if (statement && statement->kind == ExpressDeclarationKind::Constant)
            vConstantsRead(positions);
        else if (statement)
            positions.declarations.push_back(declarationRead(*statement));
        else
            vOtherPass(positions);
    }
    positions.openComment = scanner_.getOpenComment();
    positions.unended = std::move(unended_);
}

/// What is between declarations. An end there may be a wrong one of the declaration before.
void PositionReader::vOtherPass(ExpressPositions& positions) {
    const auto& before = positions.declarations;
    const bool isOpen = !before.empty() && before.back().kind != ExpressDeclarationKind::Constant &&
                        before.back().end.text.empty();
    // That of constants is no part of them.
    if (isWord() && isDeclarationEnd(token_.text) && !isWord("END_CONSTANT") && !isOpen)
        positions.strayEnds.push_back({token_.text, token_.position});
    vNext();
}

void PositionReader::vSchemaEndRead(ExpressSchemaHeader& header) {
    header.end = takeWord();
    if (token_.isSymbol(';'))
        vNext();
    else
        vUnendedNote();
}

// schema_header = 'SCHEMA' name ... ';'
void PositionReader::vSchemaRead(ExpressPositions& positions) {
    ExpressSchemaHeader header;
    header.keyword = takeWord();
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

ExpressDeclaration PositionReader::declarationRead(const Statement& statement) {
    ExpressDeclaration declaration;
    const auto begin = offset();
    declaration.kind = statement.kind;
    declaration.keyword = takeWord();
    // "ENTITY END_ENTITY" has no name.
    if (isWord() && !isBoundary(token_.text))
        declaration.name = takeWord();
    else
        declaration.name.position = token_.position;
    if (statement.kind == ExpressDeclarationKind::Type)
        vTypeRead(declaration);
    else if (statement.kind == ExpressDeclarationKind::Entity)
        vEntityRead(declaration);
    else
        vBodyRead(declaration, statement);
    vEndRead(declaration, statement);
    declaration.text = textFrom(begin);
    return declaration;
}

void PositionReader::vEndRead(ExpressDeclaration& declaration, const Statement& statement) {
    declaration.end.position = token_.position;
    if (!isWord(statement.end))
        return;
    declaration.end = takeWord();
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
            positions.declarations.push_back(std::move(constant));
        }
        if (token_.isSymbol(';') || isStatementEnd())
            vNext();
        else
            vStatementSkip();
    }
}

// type = 'TYPE' name '=' type_text ';' [ 'WHERE' rules ] 'END_TYPE' ';'
void PositionReader::vTypeRead(ExpressDeclaration& type) {
    auto use = ExpressUse::Type;
    Brackets brackets;
    while (!isStatementEnd()) {
        brackets.vPass(token_);
        if (isWord("ENUMERATION"))
            use = ExpressUse::EnumerationItem;
        else if (isWord("SELECT"))
            use = ExpressUse::SelectMember;
        else if (isWord() && (use == ExpressUse::Type ? brackets.isOutside() && !isTypeKeyword(token_.text)
                                                      : !brackets.isOutside()))
            type.names.push_back({use, {token_.text, token_.position}});
        vNext();
    }
    vSemicolonTake();
    vClausesRead(type, ExpressMemberKind::Where);
}

// entity = 'ENTITY' name header ';' { attribute } { clause } 'END_ENTITY' ';'
void PositionReader::vEntityRead(ExpressDeclaration& entity) {
    // Some write a ';' after the name already.
    do {
        vEntityHeaderRead(entity);
    } while (isWord() && isOneOf(token_.text, {"ABSTRACT", "SUPERTYPE", "SUBTYPE"}));
    vClausesRead(entity, ExpressMemberKind::Attribute);
}

// header = [ 'ABSTRACT' ] [ 'SUPERTYPE' [ 'OF' list ] ] [ 'SUBTYPE' 'OF' list ]
void PositionReader::vEntityHeaderRead(ExpressDeclaration& entity) {
    const Brackets outside;
    auto use = ExpressUse::Subtype;
    while (!isStatementEnd() && !isNextMember(outside)) {
        if (isWord("ABSTRACT"))
            entity.isAbstract = true;
        else if (isWord("SUPERTYPE"))
            use = ExpressUse::Subtype;
        else if (isWord("SUBTYPE"))
            use = ExpressUse::Supertype;
        else if (token_.isSymbol('(')) {
            vListRead(use, entity.names);
            continue;
        }
        vNext();
    }
    vSemicolonTake();
}

/// The names in brackets, whatever is between them.
void PositionReader::vListRead(ExpressUse use, std::vector<ExpressName>& names) {
    Brackets brackets;
    do {
        brackets.vPass(token_);
        if (isWord() && !isOneOf(token_.text, {"ONEOF", "ANDOR", "AND"}))
            names.push_back({use, {token_.text, token_.position}});
        vNext();
    } while (!isStatementEnd() && !brackets.isOutside());
}

// clause = ( 'DERIVE' | 'INVERSE' | 'UNIQUE' | 'WHERE' ) { member }
void PositionReader::vClausesRead(ExpressDeclaration& declaration, ExpressMemberKind kind) {
    while (!isAtEnd() && !(isWord() && isBoundary(token_.text))) {
        if (isWord() && (isClause(token_.text) || isSameExpressWord(token_.text, "UNIQUE"))) {
            kind = clauseKind(token_.text);
            vNext();
        } else if (isWord() || (kind == ExpressMemberKind::Where && !token_.isSymbol(';'))) {
            // A rule may have no label.
            vMemberRead(declaration, kind);
        } else {
            vNext();
        }
    }
}

void PositionReader::vMemberRead(ExpressDeclaration& declaration, ExpressMemberKind kind) {
    ExpressMember member;
    member.kind = kind;
    member.name.position = token_.position;
    if (kind == ExpressMemberKind::Unique || kind == ExpressMemberKind::Where) {
        vLabelRead(member);
        if (kind == ExpressMemberKind::Unique)
            vUniqueRead(member);
        else
            vExpressionRead(member);
        declaration.members.push_back(std::move(member));
    } else {
        vAttributesRead(declaration, std::move(member));
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
void PositionReader::vAttributesRead(ExpressDeclaration& declaration, ExpressMember member) {
    std::vector<ExpressMember> others;
    while (isWord() && !isStatementEnd()) {
        others.push_back(member);
        auto& other = others.back();
        if (isWord("SELF") && ahead_.isSymbol('\\'))
            vRedeclarationRead(other);
        else
            other.name = takeWord();
        if (!token_.isSymbol(','))
            break;
        vNext();
    }
    if (token_.isSymbol(':'))
        vNext();
    vTypePartRead(member);
    for (auto& other : others) {
        other.names.insert(other.names.end(), member.names.begin(), member.names.end());
        other.type = member.type;
        other.expression = member.expression;
        other.expressionBegin = member.expressionBegin;
        declaration.members.push_back(std::move(other));
        // However many attributes share them, the names in the type and the expression are there once.
        member.names.clear();
        member.expression = {};
    }
}

// redeclaration = 'SELF' '\' entity '.' name
void PositionReader::vRedeclarationRead(ExpressMember& member) {
    vNext();
    vNext();
    if (!isWord() || isStatementEnd())
        return;
    member.names.push_back({ExpressUse::RedeclaredEntity, takeWord()});
    if (!token_.isSymbol('.'))
        return;
    vNext();
    if (isWord() && !isStatementEnd())
        member.name = takeWord();
}

void PositionReader::vTypePartRead(ExpressMember& member) {
    const auto begin = offset();
    Brackets brackets;
    auto use = ExpressUse::Type;
    while (!isStatementEnd() && token_.text != ":=" && !isNextMember(brackets)) {
        brackets.vPass(token_);
        if (isWord("FOR") && member.kind == ExpressMemberKind::Inverse) {
            use = ExpressUse::InverseFor;
            member.type = textFrom(begin);
        } else if (isWord() && brackets.isOutside() && !isTypeKeyword(token_.text)) {
            member.names.push_back({use, {token_.text, token_.position}});
        }
        vNext();
    }
    if (use == ExpressUse::Type)
        member.type = textFrom(begin);
    if (token_.text != ":=")
        return;
    vNext();
    vExpressionRead(member);
}

void PositionReader::vExpressionRead(ExpressMember& member) {
    const auto begin = offset();
    member.expressionBegin = token_.position;
    Brackets brackets;
    do {
        if (isStatementEnd())
            break;
        brackets.vPass(token_);
        vNext();
    } while (!isNextMember(brackets));
    member.expression = textFrom(begin);
}

// unique_rule = [ label ] attribute { ',' attribute } ';'
void PositionReader::vUniqueRead(ExpressMember& member) {
    const Brackets outside;
    while (!isStatementEnd() && !isNextMember(outside)) {
        if (isWord() && !(isSameExpressWord(token_.text, "SELF") && ahead_.isSymbol('\\')))
            member.names.push_back({ExpressUse::UniqueAttribute, {token_.text, token_.position}});
        vNext();
    }
}

// Functions, procedures and rules: everything up to the end, local ones included.
void PositionReader::vBodyRead(ExpressDeclaration& declaration, const Statement& statement) {
    if (statement.kind == ExpressDeclarationKind::Rule && isWord("FOR")) {
        vNext();
        if (token_.isSymbol('('))
            vListRead(ExpressUse::RuleEntity, declaration.names);
    }
    const auto begin = offset();
    declaration.bodyBegin = token_.position;
    std::size_t locals = 0;
    while (!isAtEnd()) {
        const auto* const inner = isWord() ? pStatement(token_.text) : nullptr;
        // Local ones are indented: what begins a line is the next declaration, and an end is missing.
        if (inner && inner->kind != ExpressDeclarationKind::Constant &&
            (token_.position.column == 1 || inner->kind <= ExpressDeclarationKind::Entity ||
             inner->kind == ExpressDeclarationKind::Rule))
            break;
        if (inner && inner->kind == statement.kind)
            ++locals;
        else if ((isWord() && isSchemaWord(token_.text)) || (isWord(statement.end) && locals-- == 0))
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

} // namespace

bool isSameExpressWord(std::string_view left, std::string_view right) {
    return isEqualIgnoringCase(left, right);
}

ExpressPositions expressPositions(std::string_view text) {
    ExpressPositions positions;
    if (isUtf16(text)) {
        positions.encoding = ExpressEncoding::Utf16;
        return positions;
    }
    positions.hasReturnsOnly =
        text.find('\r') != std::string_view::npos && text.find('\n') == std::string_view::npos;
    PositionReader(text).vRead(positions);
    return positions;
}

} // namespace kiv::kit
