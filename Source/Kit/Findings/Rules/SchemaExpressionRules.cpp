#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Names/MisspeltKeyword.h"
#include "Kit/Positions/ExpressScanner.h"
#include "Kit/Text/NameKeys.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

// E018: names in the expressions of rules, derived attributes, functions and global rules.
namespace kiv::kit {

namespace {

using Kind = ExpressDeclarationKind;

/// The functions and procedures of EXPRESS (ISO 10303-11, clauses 15 and 16), and what else has brackets.
constexpr std::array<std::string_view, 32> Functions = {
    "ABS",     "ACOS",    "ASIN",    "ATAN",     "BLENGTH",      "COS",    "EXISTS", "EXP",
    "FORMAT",  "HIBOUND", "HIINDEX", "LENGTH",   "LOBOUND",      "LOG",    "LOG2",   "LOG10",
    "LOINDEX", "NVL",     "ODD",     "ROLESOF",  "SIN",          "SIZEOF", "SQRT",   "TAN",
    "TYPEOF",  "USEDIN",  "VALUE",   "VALUE_IN", "VALUE_UNIQUE", "INSERT", "REMOVE", "QUERY"};

/// Its constants and operators.
constexpr std::array<std::string_view, 15> OtherWords = {"CONST_E", "PI",  "SELF",  "TRUE", "FALSE",
                                                         "UNKNOWN", "AND", "ANDOR", "DIV",  "IN",
                                                         "LIKE",    "MOD", "NOT",   "OR",   "XOR"};

using WordsInAnyCase = std::unordered_set<std::string_view, HashIgnoringCase, SameIgnoringCase>;

const WordsInAnyCase& builtIns() {
    static const auto Names = [] {
        WordsInAnyCase names(Functions.begin(), Functions.end());
        names.insert(OtherWords.begin(), OtherWords.end());
        return names;
    }();
    return Names;
}

/// The keywords of bodies: statements, and types of variables.
constexpr std::array<std::string_view, 55> BodyWords = {
    "ALIAS",      "BEGIN",     "BY",           "CASE",         "CONSTANT", "ELSE",      "END",
    "END_ALIAS",  "END_CASE",  "END_CONSTANT", "END_FUNCTION", "END_IF",   "END_LOCAL", "END_PROCEDURE",
    "END_REPEAT", "END_RULE",  "ESCAPE",       "FOR",          "FUNCTION", "IF",        "LOCAL",
    "OF",         "OTHERWISE", "PROCEDURE",    "REPEAT",       "RETURN",   "RULE",      "SKIP",
    "THEN",       "TO",        "UNTIL",        "VAR",          "WHERE",    "WHILE",     "AGGREGATE",
    "ARRAY",      "BAG",       "BINARY",       "BOOLEAN",      "FIXED",    "GENERIC",   "GENERIC_ENTITY",
    "INTEGER",    "LIST",      "LOGICAL",      "NUMBER",       "OPTIONAL", "REAL",      "SET",
    "STRING",     "UNIQUE",    "ENUMERATION",  "SELECT",       "ENTITY",   "TYPE"};

const WordsInAnyCase& bodyWords() {
    static const WordsInAnyCase Words(BodyWords.begin(), BodyWords.end());
    return Words;
}

/// The keyword that a word of a body was to be; empty when it is like none.
std::string_view meantInBody(std::string_view word) {
    static const auto Words = [] {
        std::vector<std::string_view> words(OtherWords.begin(), OtherWords.end());
        words.insert(words.end(), BodyWords.begin(), BodyWords.end());
        words.insert(words.end(), Functions.begin(), Functions.end());
        return words;
    }();
    return misspeltKeyword(word, Words);
}

/// Where names are judged: an expression of an entity or a type, or the body of a function or global rule,
/// with the parameters and variables that it declares.
enum class Scope { Expression, Body };

class ExpressionReader {
public:
    /// Reads the expression of the member, or the body where that is null. `unread` is the finding that says
    /// that the rule cannot be read; null for none.
    ExpressionReader(SchemaRun& run, const Declared& owner, const ExpressMember* member,
                     Finding* unread = nullptr);

    void vRead(std::string_view expression);

private:
    void vTokensRead(std::string_view expression);
    void vVariablesRead();
    void vLocalsRead();
    std::size_t boundsAfter(std::size_t index, std::size_t before) const;
    void vLocalRead(std::size_t index);
    void vLocalAdd(std::size_t index);
    bool isLoopVariable(std::size_t index) const;
    bool isTypeAt(std::size_t index) const;
    void vTokenCheck(std::size_t index);
    void vStringCheck(const ExpressToken& token);
    void vOtherSchemaCheck(std::string_view name);
    void vGroupCheck(std::size_t index);
    bool isSelectedKnown(std::size_t index) const;
    void vSelectedCheck(std::size_t index);
    void vGroupAttributeCheck(const Declared& entity, const ExpressToken& attribute);
    void vCallCheck(const ExpressToken& name);
    void vPlainCheck(std::size_t index);
    void vItemCheck(const Declared& type, const ExpressToken& item);
    std::string_view meantFor(std::string_view word) const {
        return scope_ == Scope::Body ? meantInBody(word) : misspeltKeyword(word, OtherWords);
    }
    bool isVariable(std::string_view name) const { return variables_.contains(name); }
    bool isSymbolAt(std::size_t index, char symbol) const {
        return index < tokens_.size() && tokens_[index].isSymbol(symbol);
    }
    bool isWordAt(std::size_t index) const {
        return index < tokens_.size() && tokens_[index].kind == ExpressTokenKind::Word;
    }
    std::string sSubject() const;
    Finding& add(const ExpressWord& word, const std::string& message);
    Finding* pMissingAdd(std::string key, const ExpressWord& word, const std::string& message);

    SchemaRun& run_;
    const Declared& owner_;
    const ExpressMember* member_;
    Scope scope_;
    Finding* unread_;
    std::vector<ExpressToken> tokens_;
    WordsInAnyCase variables_;
    // Those of a body, as they are written, which are offered in the place of others.
    std::vector<std::string_view> locals_;
    // TYPEOF and its like are called: strings are names of what they give.
    bool asksForTypes_ = false;
};

ExpressionReader::ExpressionReader(SchemaRun& run, const Declared& owner, const ExpressMember* member,
                                   Finding* unread) :
    run_(run),
    owner_(owner),
    member_(member),
    scope_(member ? Scope::Expression : Scope::Body),
    unread_(unread) {}

/// What the expression is of; made for findings alone.
std::string ExpressionReader::sSubject() const {
    const auto& declaration = *owner_.declaration;
    if (!member_)
        return sOwner(declaration);
    const auto* const what = member_->kind == ExpressMemberKind::Derived ? "the attribute " : "the rule ";
    return what + (member_->name.text.empty() ? "without a name" : sNamed(member_->name.text)) + " of " +
           sOwner(declaration);
}

Finding& ExpressionReader::add(const ExpressWord& word, const std::string& message) {
    if (unread_) {
        run_.vNoteAt(*unread_, word, message);
        return *unread_;
    }
    auto& finding = run_.add("E018", word, message + " in " + sSubject());
    finding.subject = sSubject();
    return finding;
}

/// Null when the name has a finding already, of which this use becomes a note.
Finding* ExpressionReader::pMissingAdd(std::string key, const ExpressWord& word, const std::string& message) {
    if (run_.pMissingBefore(key, word, "used in " + sSubject()))
        return nullptr;
    auto& finding = add(word, message);
    // Elsewhere the name is another mistake than the rule that cannot be read.
    if (!unread_)
        run_.vMissingKeep(std::move(key), finding);
    return &finding;
}

void ExpressionReader::vRead(std::string_view expression) {
    if (expression.empty())
        return;
    vTokensRead(expression);
    vVariablesRead();
    if (scope_ == Scope::Body)
        vLocalsRead();
    for (std::size_t index = 0; index < tokens_.size(); ++index)
        vTokenCheck(index);
}

void ExpressionReader::vTokensRead(std::string_view expression) {
    constexpr std::size_t Usual = 32;
    tokens_.reserve(Usual);
    ExpressScanner scanner(expression, 0);
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next())
        tokens_.push_back(token);
}

/// QUERY (variable <* ..., and local functions.
void ExpressionReader::vVariablesRead() {
    const auto isOneOf = [](std::string_view word, std::initializer_list<std::string_view> keywords) {
        return std::ranges::any_of(
            keywords, [word](std::string_view keyword) { return isSameExpressWord(word, keyword); });
    };
    for (std::size_t index = 0; index < tokens_.size(); ++index) {
        if (!isWordAt(index))
            continue;
        const auto word = tokens_[index].text;
        if (isWordAt(index + 1) && isOneOf(word, {"FUNCTION", "PROCEDURE"}))
            variables_.insert(tokens_[index + 1].text);
        asksForTypes_ = asksForTypes_ || isOneOf(word, {"TYPEOF", "USEDIN", "ROLESOF"});
        // A misspelt QUERY is one mistake.
        const bool isQuery =
            isSameExpressWord(word, "QUERY") || (isSymbolAt(index + 3, '<') && isSymbolAt(index + 4, '*'));
        if (isQuery && isSymbolAt(index + 1, '(') && isWordAt(index + 2))
            variables_.insert(tokens_[index + 2].text);
    }
}

/// Parameters, variables and labels: what comes before a ':', but for the choices of CASE, and what REPEAT
/// and ALIAS declare.
void ExpressionReader::vLocalsRead() {
    std::size_t cases = 0;
    std::size_t bounds = 0;
    for (std::size_t index = 0; index < tokens_.size(); ++index) {
        bounds = boundsAfter(index, bounds);
        // The ':' of "Name[First:Last]" declares nothing.
        if (!isWordAt(index) || bounds > 0)
            continue;
        if (isSameExpressWord(tokens_[index].text, "CASE"))
            ++cases;
        else if (cases > 0 && isSameExpressWord(tokens_[index].text, "END_CASE"))
            --cases;
        if (isLoopVariable(index))
            vLocalAdd(index);
        if (cases == 0 && isSymbolAt(index + 1, ':') && !isTypeAt(index))
            vLocalRead(index);
        else if (isTypeAt(index) && isSymbolAt(index + 1, ':') && isWordAt(index + 2))
            vLocalAdd(index + 2);
    }
}

/// How deep in square brackets, once this token is passed. Those that are not closed end with the statement.
std::size_t ExpressionReader::boundsAfter(std::size_t index, std::size_t before) const {
    if (isSymbolAt(index, '['))
        return before + 1;
    if (isSymbolAt(index, ';'))
        return 0;
    return isSymbolAt(index, ']') && before > 0 ? before - 1 : before;
}

/// "REPEAT Index := 1 TO ..." or "ALIAS Name FOR ...". That such a keyword is misspelt is one mistake.
bool ExpressionReader::isLoopVariable(std::size_t index) const {
    if (index == 0 || !isWordAt(index - 1) || index + 1 == tokens_.size())
        return false;
    const auto& before = tokens_[index - 1].text;
    const auto& after = tokens_[index + 1].text;
    return (after == ":=" || isSameExpressWord(after, "FOR")) && !bodyWords().contains(tokens_[index].text) &&
           (isSameExpressWord(before, "REPEAT") || isSameExpressWord(before, "ALIAS") ||
            !bodyWords().contains(before));
}

void ExpressionReader::vLocalAdd(std::size_t index) {
    // No function has as many; each search looks at all of them.
    constexpr std::size_t MaxOffered = 500;
    if (variables_.insert(tokens_[index].text).second && locals_.size() < MaxOffered)
        locals_.push_back(tokens_[index].text);
}

/// Whether a type is there, which may have a label: "AGGREGATE : Label OF GENERIC : Other".
bool ExpressionReader::isTypeAt(std::size_t index) const {
    return index > 0 && (isSymbolAt(index - 1, ':') ||
                         (isWordAt(index - 1) && isSameExpressWord(tokens_[index - 1].text, "OF")));
}

/// All names of "A, B : REAL", of which the last is there.
void ExpressionReader::vLocalRead(std::size_t index) {
    vLocalAdd(index);
    for (; index >= 2 && isSymbolAt(index - 1, ',') && isWordAt(index - 2); index -= 2)
        vLocalAdd(index - 2);
}

void ExpressionReader::vTokenCheck(std::size_t index) {
    const auto& token = tokens_[index];
    if (token.kind == ExpressTokenKind::String)
        return vStringCheck(token);
    if (token.kind != ExpressTokenKind::Word)
        return;
    if (index > 0 && isSymbolAt(index - 1, '\\'))
        return vGroupCheck(index);
    if (index > 0 && isSymbolAt(index - 1, '.'))
        return vSelectedCheck(index);
    if (isSymbolAt(index + 1, '('))
        return vCallCheck(token);
    if (scope_ == Scope::Expression || !bodyWords().contains(token.text))
        vPlainCheck(index);
}

/// 'IFC4.IFCWALL': what TYPEOF and USEDIN give, the name of this schema and a name of it.
void ExpressionReader::vStringCheck(const ExpressToken& token) {
    if (token.text.size() < 2 || token.text.back() != '\'')
        return;
    const auto content = token.text.substr(1, token.text.size() - 2);
    const auto dot = content.find('.');
    if (dot == std::string_view::npos)
        return;
    auto name = content.substr(dot + 1);
    if (!isSameExpressWord(content.substr(0, dot), run_.schema->getName()))
        return vOtherSchemaCheck(content);
    // A role of USEDIN goes on with an attribute.
    name = name.substr(0, name.find('.'));
    const auto isPart = [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
               (letter >= '0' && letter <= '9') || letter == '_';
    };
    if (name.empty() || !std::ranges::all_of(name, isPart) || run_.isKnown(name))
        return;
    auto* const finding =
        pMissingAdd(SchemaRun::sMissingKey(name), {name}, "the name " + sNamed(name) + " is not declared");
    if (finding)
        run_.vNearestNote(*finding, name, {Kind::Entity, Kind::Type});
}

/// 'IFC2X3.IFCWALL' in the schema IFC4, which nothing gives.
void ExpressionReader::vOtherSchemaCheck(std::string_view name) {
    const auto dot = name.find('.');
    const auto schema = name.substr(0, dot);
    auto member = name.substr(dot + 1);
    member = member.substr(0, member.find('.'));
    // What has the name of an entity before the dot lacks the schema, or is another text.
    if (!asksForTypes_ || schema.empty() || !std::ranges::all_of(schema, isNameLetter) ||
        run_.isKnown(schema) || !run_.isKnown(member))
        return;
    add({name}, "the name " + sNamed(name) + " is of another schema than " + sNamed(run_.schema->getName()));
}

/// SELF\Entity.Attribute
void ExpressionReader::vGroupCheck(std::size_t index) {
    const auto& name = tokens_[index];
    const auto* const entity = run_.pDeclared(name.text);
    if (entity && entity->declaration->kind == Kind::Entity) {
        if (isSymbolAt(index + 1, '.') && isWordAt(index + 2))
            vGroupAttributeCheck(*entity, tokens_[index + 2]);
        return;
    }
    if (entity) {
        auto& finding = add({name.text}, sNamed(name.text) + " is not an entity");
        return run_.vNearestNote(finding, name.text, {Kind::Entity});
    }
    if (run_.isKnown(name.text))
        return;
    auto* const finding =
        pMissingAdd(SchemaRun::sMissingKey(name.text), {name.text}, sNamed(name.text) + " is not declared");
    if (finding)
        run_.vNearestNote(*finding, name.text, {Kind::Entity});
}

void ExpressionReader::vGroupAttributeCheck(const Declared& entity, const ExpressToken& attribute) {
    if (run_.hasAttribute(entity, attribute.text))
        return;
    auto* const finding = pMissingAdd(run_.sMissingKey(entity, attribute.text), {attribute.text},
                                      "the entity " + sNamed(entity.declaration->name.text) +
                                          " has no attribute " + sNamed(attribute.text));
    if (finding)
        run_.vNearestAttributeNote(*finding, attribute.text, entity);
}

/// Whether what is before the dot is looked at together with the name after it, or has a finding already.
bool ExpressionReader::isSelectedKnown(std::size_t index) const {
    if (index < 2)
        return true;
    const auto& before = tokens_[index - 2];
    if (before.kind != ExpressTokenKind::Word)
        return !before.isSymbol(')') && !before.isSymbol(']');
    if (index > 2 && isSymbolAt(index - 3, '\\'))
        return true;
    if (isSameExpressWord(before.text, "SELF"))
        return owner_.declaration->kind == Kind::Entity;
    return !isVariable(before.text) && !run_.isAttribute(before.text);
}

/// An attribute of what is not known: of a variable, of another attribute, or of the result of a call.
void ExpressionReader::vSelectedCheck(std::size_t index) {
    const auto& name = tokens_[index];
    if (isSelectedKnown(index) || run_.isAttribute(name.text) || run_.isItem(name.text) ||
        run_.isCutOff(name.text))
        return;
    auto* const finding = pMissingAdd(SchemaRun::sMissingAttributeKey(name.text), {name.text},
                                      "the attribute " + sNamed(name.text) + " is not declared");
    if (!finding || !run_.isNearestOffered())
        return;
    std::vector<std::string_view> names;
    for (const auto& one : run_.declared) {
        for (const auto& member : one.declaration->members) {
            if (member.kind <= ExpressMemberKind::Derived)
                names.push_back(member.name.text);
        }
    }
    run_.vNearestNote(*finding, name.text, {}, std::move(names));
}

/// name ( ... )
void ExpressionReader::vCallCheck(const ExpressToken& name) {
    if (builtIns().contains(name.text) || isVariable(name.text) || run_.isKnown(name.text) ||
        (scope_ == Scope::Body && bodyWords().contains(name.text)))
        return;
    auto* const finding = pMissingAdd(SchemaRun::sMissingKey(name.text), {name.text},
                                      "the function " + sNamed(name.text) + " is not declared");
    if (!finding)
        return;
    if (const auto keyword = meantFor(name.text); !keyword.empty()) {
        finding->notes.push_back({sMeant(keyword), {}});
        return;
    }
    // The functions of EXPRESS itself are meant as often as those of the schema.
    std::vector<std::string_view> names(Functions.begin(), Functions.end());
    run_.vNearestNote(*finding, name.text, {Kind::Function, Kind::Entity}, std::move(names));
}

/// Type.ITEM
void ExpressionReader::vItemCheck(const Declared& type, const ExpressToken& item) {
    const auto& names = type.declaration->names;
    if (names.empty() || names.back().use != ExpressUse::EnumerationItem)
        return;
    if (run_.hasAttribute(type, item.text))
        return;
    auto* const finding =
        pMissingAdd(run_.sMissingKey(type, item.text), {item.text},
                    "the type " + sNamed(type.declaration->name.text) + " has no item " + sNamed(item.text));
    if (!finding)
        return;
    if (run_.isNearestOffered()) {
        std::vector<std::string_view> items;
        for (const auto& name : names) {
            if (name.use == ExpressUse::EnumerationItem)
                items.push_back(name.word.text);
        }
        run_.vNearestNote(*finding, item.text, {}, std::move(items));
    }
    run_.vNoteAt(*finding, type.declaration->name, "the type is declared here");
}

/// An attribute, a variable, a constant, an item, or what a type or SELF is before a dot.
void ExpressionReader::vPlainCheck(std::size_t index) {
    const auto& name = tokens_[index];
    const bool isQualified = isSymbolAt(index + 1, '.') && isWordAt(index + 2);
    if (isQualified && isSameExpressWord(name.text, "SELF") && owner_.declaration->kind == Kind::Entity) {
        const auto& attribute = tokens_[index + 2];
        if (run_.hasAttribute(owner_, attribute.text))
            return;
        auto* const finding = pMissingAdd(run_.sMissingKey(owner_, attribute.text), {attribute.text},
                                          "the attribute " + sNamed(attribute.text) + " is not declared");
        if (finding)
            run_.vNearestAttributeNote(*finding, attribute.text, owner_);
        return;
    }
    // What begins with an underscore is no name: the rule is not understood, which is said elsewhere.
    if (builtIns().contains(name.text) || isVariable(name.text) || name.text.starts_with('_'))
        return;
    if (owner_.declaration->kind == Kind::Entity && run_.hasAttribute(owner_, name.text))
        return;
    if (const auto* const type = run_.pDeclared(name.text)) {
        if (isQualified && type->declaration->kind == Kind::Type)
            vItemCheck(*type, tokens_[index + 2]);
        return;
    }
    if (run_.isCutOff(name.text) || run_.isKnown(name.text) || run_.isItem(name.text))
        return;
    // It is a name of the schema when it was missed as one before, and else may be an attribute.
    if (run_.pMissingBefore(SchemaRun::sMissingKey(name.text), {name.text}, "used in " + sSubject()))
        return;
    auto* const finding = pMissingAdd(run_.sMissingKey(owner_, name.text), {name.text},
                                      "the name " + sNamed(name.text) + " is not declared");
    if (!finding)
        return;
    if (const auto keyword = meantFor(name.text); !keyword.empty())
        finding->notes.push_back({sMeant(keyword), {}});
    else if (scope_ == Scope::Body)
        run_.vNearestNote(*finding, name.text, {Kind::Type, Kind::Entity, Kind::Constant}, locals_);
    else if (isQualified)
        run_.vNearestAttributeNote(*finding, name.text, owner_, {Kind::Type});
    else
        run_.vNearestAttributeNote(*finding, name.text, owner_);
}

} // namespace

void vExpressionNamesCheck(SchemaRun& run) {
    run.vPartNamesJoin();
    for (const auto& declared : run.declared) {
        const auto& declaration = *declared.declaration;
        for (const auto& member : declaration.members) {
            // Of a rule without label it is not known what is an expression.
            const bool isRead = member.kind != ExpressMemberKind::Where || !member.name.text.empty();
            if (!isRead || member.expression.empty())
                continue;
            const auto unread = run.unreadRules.find(&member);
            ExpressionReader(run, declared, &member,
                             unread == run.unreadRules.end() ? nullptr : unread->second)
                .vRead(member.expression);
        }
        ExpressionReader(run, declared, nullptr).vRead(declaration.body);
    }
}

} // namespace kiv::kit
