#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Positions/ExpressScanner.h"

#include <algorithm>
#include <array>
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

const std::unordered_set<std::string_view>& builtIns() {
    static const auto Names = [] {
        std::unordered_set<std::string_view> names(Functions.begin(), Functions.end());
        names.insert(OtherWords.begin(), OtherWords.end());
        return names;
    }();
    return Names;
}

/// Words before a '(' in the body of a function that call nothing.
const std::unordered_set<std::string_view>& bodyWords() {
    static const std::unordered_set<std::string_view> Words{
        "IF",    "THEN",   "ELSE",   "CASE",  "OF",        "OTHERWISE", "REPEAT",    "TO",     "BY",
        "WHILE", "UNTIL",  "RETURN", "BEGIN", "ALIAS",     "FOR",       "LOCAL",     "ESCAPE", "SKIP",
        "WHERE", "STRING", "BINARY", "REAL",  "END_LOCAL", "FUNCTION",  "PROCEDURE", "VAR"};
    return Words;
}

/// Where names are judged: an expression of an entity or a type, or the body of a function or global rule,
/// whose variables are not known here.
enum class Scope { Expression, Body };

class ExpressionReader {
public:
    ExpressionReader(SchemaRun& run, const Declared& owner, Scope scope, std::string subject);

    void vRead(std::string_view expression, const TextPosition& begin);

private:
    void vTokensRead(std::string_view expression, const TextPosition& begin);
    void vVariablesRead();
    void vTokenCheck(std::size_t index);
    void vStringCheck(const ExpressToken& token);
    void vGroupCheck(std::size_t index);
    void vGroupAttributeCheck(const Declared& entity, const ExpressToken& attribute);
    void vCallCheck(const ExpressToken& name);
    void vPlainCheck(std::size_t index);
    void vItemCheck(const Declared& type, const ExpressToken& item);
    bool isVariable(const std::string& upper) const { return variables_.contains(upper); }
    bool isSymbolAt(std::size_t index, char symbol) const {
        return index < tokens_.size() && tokens_[index].isSymbol(symbol);
    }
    bool isWordAt(std::size_t index) const {
        return index < tokens_.size() && tokens_[index].kind == ExpressTokenKind::Word;
    }
    Finding& add(const TextPosition& position, const std::string& message);
    Finding* pMissingAdd(std::string key, const TextPosition& position, const std::string& message);

    SchemaRun& run_;
    const Declared& owner_;
    Scope scope_;
    std::string subject_;
    std::vector<ExpressToken> tokens_;
    std::unordered_set<std::string> variables_;
};

ExpressionReader::ExpressionReader(SchemaRun& run, const Declared& owner, Scope scope, std::string subject) :
    run_(run), owner_(owner), scope_(scope), subject_(std::move(subject)) {}

Finding& ExpressionReader::add(const TextPosition& position, const std::string& message) {
    auto& finding = run_.add("E018", position, message + " in " + subject_);
    finding.subject = subject_;
    return finding;
}

/// Null when the name has a finding already, of which this use becomes a note.
Finding* ExpressionReader::pMissingAdd(std::string key, const TextPosition& position,
                                       const std::string& message) {
    if (run_.pMissingBefore(key, position, "used in " + subject_))
        return nullptr;
    auto& finding = add(position, message);
    run_.vMissingKeep(std::move(key), finding);
    return &finding;
}

void ExpressionReader::vRead(std::string_view expression, const TextPosition& begin) {
    if (expression.empty())
        return;
    vTokensRead(expression, begin);
    vVariablesRead();
    for (std::size_t index = 0; index < tokens_.size(); ++index)
        vTokenCheck(index);
}

void ExpressionReader::vTokensRead(std::string_view expression, const TextPosition& begin) {
    const auto offset = static_cast<std::size_t>(expression.data() - run_.text.data());
    ExpressScanner scanner(run_.text, {offset, begin.line, begin.column}, offset + expression.size());
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next())
        tokens_.push_back(token);
}

/// QUERY (variable <* ..., and local functions.
void ExpressionReader::vVariablesRead() {
    for (std::size_t index = 0; index < tokens_.size(); ++index) {
        const auto upper = isWordAt(index) ? sUpperWord(tokens_[index].text) : std::string();
        if ((upper == "FUNCTION" || upper == "PROCEDURE") && isWordAt(index + 1))
            variables_.insert(sUpperWord(tokens_[index + 1].text));
        if (upper == "QUERY" && isSymbolAt(index + 1, '(') && isWordAt(index + 2))
            variables_.insert(sUpperWord(tokens_[index + 2].text));
    }
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
        return;
    if (isSymbolAt(index + 1, '('))
        return vCallCheck(token);
    if (scope_ == Scope::Expression)
        vPlainCheck(index);
}

/// 'IFC4.IFCWALL': what TYPEOF and USEDIN give, the name of this schema and a name of it.
void ExpressionReader::vStringCheck(const ExpressToken& token) {
    if (!run_.schema || token.text.size() < 2 || token.text.back() != '\'')
        return;
    const auto content = token.text.substr(1, token.text.size() - 2);
    const auto dot = content.find('.');
    if (dot == std::string_view::npos || !isSameExpressWord(content.substr(0, dot), run_.schema->getName()))
        return;
    auto name = content.substr(dot + 1);
    // A role of USEDIN goes on with an attribute.
    name = name.substr(0, name.find('.'));
    const auto isPart = [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
               (letter >= '0' && letter <= '9') || letter == '_';
    };
    if (name.empty() || !std::ranges::all_of(name, isPart) || run_.isKnown(name))
        return;
    auto position = token.position;
    position.column += dot + 2;
    position.length = name.size();
    auto* const finding =
        pMissingAdd(SchemaRun::sMissingKey(name), position, "the name " + sNamed(name) + " is not declared");
    if (finding)
        run_.vNearestNote(*finding, name, {Kind::Entity, Kind::Type});
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
        auto& finding = add(name.position, sNamed(name.text) + " is not an entity");
        return run_.vNearestNote(finding, name.text, {Kind::Entity});
    }
    if (run_.isKnown(name.text))
        return;
    auto* const finding =
        pMissingAdd(SchemaRun::sMissingKey(name.text), name.position, sNamed(name.text) + " is not declared");
    if (finding)
        run_.vNearestNote(*finding, name.text, {Kind::Entity});
}

void ExpressionReader::vGroupAttributeCheck(const Declared& entity, const ExpressToken& attribute) {
    if (run_.hasAttribute(entity, attribute.text))
        return;
    auto* const finding = pMissingAdd(run_.sMissingKey(entity, attribute.text), attribute.position,
                                      "the entity " + sNamed(entity.declaration->name.text) +
                                          " has no attribute " + sNamed(attribute.text));
    if (finding)
        run_.vNearestAttributeNote(*finding, attribute.text, entity);
}

/// name ( ... )
void ExpressionReader::vCallCheck(const ExpressToken& name) {
    const auto upper = sUpperWord(name.text);
    if (builtIns().contains(upper) || isVariable(upper) || run_.isKnown(name.text) ||
        (scope_ == Scope::Body && bodyWords().contains(upper)) || upper.starts_with("END_"))
        return;
    auto* const finding = pMissingAdd(SchemaRun::sMissingKey(name.text), name.position,
                                      "the function " + sNamed(name.text) + " is not declared");
    if (!finding)
        return;
    // The functions of EXPRESS itself are meant as often as those of the schema.
    std::vector<std::string_view> names(Functions.begin(), Functions.end());
    run_.vNearestNote(*finding, name.text, {Kind::Function, Kind::Entity}, std::move(names));
}

/// Type.ITEM
void ExpressionReader::vItemCheck(const Declared& type, const ExpressToken& item) {
    const auto& names = type.declaration->names;
    if (names.empty() || names.front().use != ExpressUse::EnumerationItem)
        return;
    if (run_.hasAttribute(type, item.text))
        return;
    auto* const finding =
        pMissingAdd(run_.sMissingKey(type, item.text), item.position,
                    "the type " + sNamed(type.declaration->name.text) + " has no item " + sNamed(item.text));
    if (finding)
        run_.vNoteAt(*finding, type.declaration->name.position, "the type is declared here");
}

/// An attribute, a variable, a constant, an item, or what a type or SELF is before a dot.
void ExpressionReader::vPlainCheck(std::size_t index) {
    const auto& name = tokens_[index];
    const auto upper = sUpperWord(name.text);
    const bool isQualified = isSymbolAt(index + 1, '.') && isWordAt(index + 2);
    if (upper == "SELF" && isQualified && owner_.declaration->kind == Kind::Entity) {
        const auto& attribute = tokens_[index + 2];
        if (run_.hasAttribute(owner_, attribute.text))
            return;
        auto* const finding = pMissingAdd(run_.sMissingKey(owner_, attribute.text), attribute.position,
                                          "the attribute " + sNamed(attribute.text) + " is not declared");
        if (finding)
            run_.vNearestAttributeNote(*finding, attribute.text, owner_);
        return;
    }
    // What begins with an underscore is no name: the rule is not understood, which is said elsewhere.
    if (builtIns().contains(upper) || isVariable(upper) || upper.starts_with('_'))
        return;
    if (owner_.declaration->kind == Kind::Entity && run_.hasAttribute(owner_, name.text))
        return;
    if (const auto* const type = run_.pDeclared(name.text)) {
        if (isQualified && type->declaration->kind == Kind::Type)
            vItemCheck(*type, tokens_[index + 2]);
        return;
    }
    if (run_.isKnown(name.text) || run_.isItem(name.text))
        return;
    // It is a name of the schema when it was missed as one before, and else may be an attribute.
    if (run_.pMissingBefore(SchemaRun::sMissingKey(name.text), name.position, "used in " + subject_))
        return;
    auto* const finding = pMissingAdd(run_.sMissingKey(owner_, name.text), name.position,
                                      "the name " + sNamed(name.text) + " is not declared");
    if (finding)
        run_.vNearestAttributeNote(*finding, name.text, owner_);
}

std::string sRuleSubject(const ExpressDeclaration& declaration, const ExpressMember& member) {
    const auto what = member.kind == ExpressMemberKind::Derived ? "the attribute " : "the rule ";
    return what + sNamed(member.name.text) + " of " + sNamed(declaration.name.text);
}

} // namespace

void vExpressionNamesCheck(SchemaRun& run) {
    for (const auto& declared : run.declared) {
        const auto& declaration = *declared.declaration;
        for (const auto& member : declaration.members) {
            if (!member.expression.empty())
                ExpressionReader(run, declared, Scope::Expression, sRuleSubject(declaration, member))
                    .vRead(member.expression, member.expressionBegin);
        }
        ExpressionReader(run, declared, Scope::Body, sNamed(declaration.name.text))
            .vRead(declaration.body, declaration.bodyBegin);
    }
}

} // namespace kiv::kit
