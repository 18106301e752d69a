#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Positions/ExpressScanner.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

// E006 and E007: parts of a declaration that the library does not read.
namespace kiv::kit {

namespace {

using ifc::def::schema::DataTypeEnum;
using ifc::def::schema::DataTypeSelect;
using ifc::def::schema::Entity;
using ifc::def::schema::Type;
using ifc::def::schema::Where;
using Words = std::unordered_set<std::string_view>;

constexpr std::string_view OwnLine =
    "each is read from a line of its own that has \" : \" in it, with the blanks";

/// One declaration as the text has it, beside what the library has of it.
class PartsCheck {
public:
    PartsCheck(SchemaRun& run, const Declared& declared) : run_(run), declaration_(*declared.declaration) {}

    void vEntityCheck(const Entity& entity);
    void vTypeCheck(const Type& type);
    void vWhereCheck(const Where* where);

private:
    Finding& lostAdd(const ExpressWord& word, const std::string& what, std::string_view hint);
    std::vector<ExpressWord> wordsOf(ExpressUse use) const;
    void vSupertypeCheck(const Entity& entity);
    void vListCheck(ExpressUse use, std::span<const std::string_view> read, const std::string& what,
                    std::string_view hint);
    void vMembersCheck(ExpressMemberKind kind, const Words& read, const std::string& what);
    void vLostStatementAdd(std::span<const ExpressMember* const> members, const std::string& what);
    void vUniqueCheck(const ExpressWord& word, std::string_view type);
    void vTypeTextAdd(const ExpressMember& attribute, std::string_view read);
    void vTypeTextsCheck(const Entity& entity);
    void vRuleCheck(const ExpressMember& rule);
    void vNoRulesCheck(const Where& where);

    SchemaRun& run_;
    const ExpressDeclaration& declaration_;
};

Finding& PartsCheck::lostAdd(const ExpressWord& word, const std::string& what, std::string_view hint) {
    auto& finding =
        run_.add("E006", word.position,
                 what + ' ' + sNamed(word.text) + " of " + sNamed(declaration_.name.text) + " is not read");
    finding.subject = declaration_.name.text;
    if (!hint.empty())
        finding.notes.push_back({std::string(hint), {}});
    return finding;
}

std::vector<ExpressWord> PartsCheck::wordsOf(ExpressUse use) const {
    std::vector<ExpressWord> words;
    for (const auto& name : declaration_.names) {
        if (name.use == use)
            words.push_back(name.word);
    }
    return words;
}

void PartsCheck::vSupertypeCheck(const Entity& entity) {
    const auto supertypes = wordsOf(ExpressUse::Supertype);
    if (supertypes.empty() || trimmed(entity.getSupertypeName()) == supertypes.front().text)
        return;
    const auto hint = supertypes.size() > 1
                          ? "an entity can have one supertype"
                          : "it is read from one line \"SUBTYPE OF (Name)\" below that of the "
                            "keyword, with one blank after OF";
    auto& finding =
        lostAdd(supertypes.size() > 1 ? supertypes[1] : supertypes.front(), "the supertype", hint);
    if (!entity.getSupertypeName().empty())
        run_.boTake(finding, SchemaReport::Supertype);
}

/// Finds the first of the names that is not read as it is.
void PartsCheck::vListCheck(ExpressUse use, std::span<const std::string_view> read, const std::string& what,
                            std::string_view hint) {
    const auto words = wordsOf(use);
    const auto isSame = [](const ExpressWord& word, std::string_view name) { return word.text == name; };
    const auto [word, name] = std::ranges::mismatch(words, read, isSame);
    if (word != words.end())
        lostAdd(*word, what, hint);
    else if (name != read.end())
        run_.add("E006", declaration_.name.position,
                 what + ' ' + sNamed(*name) + " of " + sNamed(declaration_.name.text) +
                     " is read from a comment or another text")
            .subject = declaration_.name.text;
}

void PartsCheck::vMembersCheck(ExpressMemberKind kind, const Words& read, const std::string& what) {
    std::vector<const ExpressMember*> lost;
    for (const auto& member : declaration_.members) {
        if (member.kind == kind && !read.contains(member.name.text))
            lost.push_back(&member);
    }
    run_.lostMembers.insert(lost.begin(), lost.end());
    for (auto first = lost.begin(); first != lost.end();) {
        const auto isOther = [first](const auto* member) { return !isSameStatement(**first, *member); };
        const auto end = std::find_if(first + 1, lost.end(), isOther);
        vLostStatementAdd({first, end}, what);
        first = end;
    }
}

/// Attributes of one statement are lost for one reason.
void PartsCheck::vLostStatementAdd(std::span<const ExpressMember* const> members, const std::string& what) {
    auto& finding = lostAdd(members.front()->name, what, OwnLine);
    const auto others = members.subspan(1);
    const auto listed = std::min(others.size(), SchemaRun::maxPlaces);
    for (const auto* other : others.first(listed))
        run_.vNoteAt(finding, other->name.position,
                     sNamed(other->name.text) + " of the same statement is not read either");
    if (const auto more = others.size() - listed; more > 0)
        finding.notes.back().message +=
            (more == 1 ? ", nor is " : ", nor are ") + std::to_string(more) + " more";
}

/// The words of a type, without comments, and without what comes before the type itself.
std::vector<std::string_view> typeWords(std::string_view type) {
    ExpressScanner scanner(type);
    std::vector<std::string_view> words;
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        if (!isSameExpressWord(token.text, "OPTIONAL"))
            words.push_back(token.text);
    }
    return words;
}

/// The word UNIQUE is understood after LIST [...] OF alone.
bool isUniqueMisread(const std::vector<std::string_view>& words) {
    bool isList = false;
    bool isAfterOf = false;
    for (const auto word : words) {
        if (word == "UNIQUE" && isAfterOf && !isList)
            return true;
        isAfterOf = word == "OF";
        if (word == "LIST" || word == "SET" || word == "ARRAY")
            isList = word == "LIST";
    }
    return false;
}

void PartsCheck::vUniqueCheck(const ExpressWord& word, std::string_view type) {
    if (!isUniqueMisread(typeWords(type)))
        return;
    auto& finding =
        run_.add("E006", word.position, "the type of the elements of " + sNamed(word.text) + " is not found");
    finding.subject = declaration_.name.text;
    finding.notes.push_back(
        {"only LIST can be of UNIQUE elements; elsewhere the word is read as a part of the name", {}});
    run_.boTake(finding, SchemaReport::Element);
}

void PartsCheck::vTypeTextAdd(const ExpressMember& attribute, std::string_view read) {
    auto& finding = run_.add("E006", attribute.name.position,
                             "the type of " + sNamed(attribute.name.text) + " of " +
                                 sNamed(declaration_.name.text) + " is read as " + sNamed(read));
    finding.subject = declaration_.name.text;
    finding.notes.push_back({"an attribute is read from one line", {}});
    if (trimmed(read).ends_with("OF"))
        run_.boTake(finding, SchemaReport::Element);
}

void PartsCheck::vTypeTextsCheck(const Entity& entity) {
    auto read = entity.getAttributes().begin();
    for (const auto& member : declaration_.members) {
        if (member.kind != ExpressMemberKind::Attribute)
            continue;
        if (read == entity.getAttributes().end())
            return;
        const bool isSame = read->getName() == member.name.text;
        if (isSame && typeWords(read->getTypeText()) != typeWords(member.type))
            vTypeTextAdd(member, read->getTypeText());
        if (isSame)
            vUniqueCheck(member.name, member.type);
        if (isSame)
            ++read;
    }
}

/// What comes after the last dot of "SELF\Entity.Attribute".
std::string_view derivedName(std::string_view name) {
    const auto dot = name.rfind('.');
    return trimmed(dot == std::string_view::npos ? name : name.substr(dot + 1));
}

void PartsCheck::vEntityCheck(const Entity& entity) {
    vSupertypeCheck(entity);
    vListCheck(
        ExpressUse::Subtype, entity.getSupertypeOfNames(), "the subtype",
        "subtypes are read from \"SUPERTYPE OF (ONEOF\" on one line and the names in brackets after it");
    if (declaration_.isAbstract && !entity.isAbstract())
        lostAdd(declaration_.name, "ABSTRACT", "it is read from the first line below that of the keyword");
    Words attributes;
    Words inverses;
    Words derived;
    Words unique;
    for (const auto& attribute : entity.getAttributes())
        attributes.insert(attribute.getName());
    for (const auto& inverse : entity.getAttributesInverse())
        inverses.insert(inverse.getName());
    if (entity.pDerive()) {
        for (const auto& value : entity.pDerive()->getValues())
            derived.insert(derivedName(value.getName()));
    }
    if (entity.pUnique()) {
        for (const auto& rule : entity.pUnique()->getRules())
            unique.insert(trimmed(rule.label));
    }
    vMembersCheck(ExpressMemberKind::Attribute, attributes, "the attribute");
    vMembersCheck(ExpressMemberKind::Inverse, inverses, "the inverse attribute");
    vMembersCheck(ExpressMemberKind::Derived, derived, "the derived attribute");
    vMembersCheck(ExpressMemberKind::Unique, unique, "the UNIQUE rule");
    vTypeTextsCheck(entity);
    vWhereCheck(entity.pWhere());
}

void PartsCheck::vTypeCheck(const Type& type) {
    constexpr std::string_view Hint =
        "names are separated by commas, blanks and tabs; comments are read as names";
    if (!declaration_.names.empty() && type.getUnderlyingText().empty()) {
        auto& finding =
            lostAdd(declaration_.names.front().word, "the type", "it is read from the line of the keyword");
        run_.boTake(finding, SchemaReport::Underlying);
    } else if (const auto* const items = dynamic_cast<const DataTypeEnum*>(type.pUnderlying())) {
        vListCheck(ExpressUse::EnumerationItem, items->getItems(), "the item", Hint);
    } else if (const auto* const members = dynamic_cast<const DataTypeSelect*>(type.pUnderlying())) {
        vListCheck(ExpressUse::SelectMember, members->getMemberNames(), "the member", Hint);
    }
    vUniqueCheck(declaration_.name, type.getUnderlyingText());
    vWhereCheck(type.pWhere());
}

/// A likely reason for which an expression is refused or cut; empty when there is none.
std::string_view cutReason(std::string_view expression) {
    if (expression.find("--") != std::string_view::npos)
        return "a comment that begins with \"--\" ends the rule; use (* and *)";
    if (expression.find("END_") != std::string_view::npos)
        return "\"END_\" ends the rules of the declaration, wherever it is";
    const auto semicolon = expression.find(';');
    if (semicolon != std::string_view::npos && expression.find('\n', semicolon) != std::string_view::npos)
        return "a line with \";\" is the last of its rule, wherever the \";\" is";
    ExpressScanner scanner(expression);
    bool isAfterBracket = false;
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        if (isAfterBracket && (token.isSymbol('.') || token.isSymbol('\\') || token.isSymbol('[')))
            return "nothing can be selected from the result of a call or of brackets: \").\" is not "
                   "understood";
        isAfterBracket = token.isSymbol(')');
    }
    return {};
}

/// A rule that was read may still lack its end.
void PartsCheck::vRuleCheck(const ExpressMember& rule) {
    const auto comment = rule.expression.find("--");
    const auto semicolon = rule.expression.find(';');
    const bool isCut = comment != std::string_view::npos ||
                       (semicolon != std::string_view::npos &&
                        rule.expression.find('\n', semicolon) != std::string_view::npos);
    if (!isCut)
        return;
    auto& finding = run_.add("E007", rule.name.position,
                             "the rule " + sNamed(rule.name.text) + " of " + sNamed(declaration_.name.text) +
                                 " is cut short");
    finding.subject = declaration_.name.text;
    finding.notes.push_back({std::string(cutReason(rule.expression)), {}});
}

/// WHERE without a rule is reported as one that is not understood.
void PartsCheck::vNoRulesCheck(const Where& where) {
    auto& finding = run_.add("E007", declaration_.name.position,
                             "the WHERE clause of " + sNamed(declaration_.name.text) + " has no rule");
    finding.subject = declaration_.name.text;
    run_.boRuleTake(finding, where.getText());
}

void PartsCheck::vWhereCheck(const Where* where) {
    std::vector<const ExpressMember*> rules;
    for (const auto& member : declaration_.members) {
        if (member.kind == ExpressMemberKind::Where)
            rules.push_back(&member);
    }
    std::size_t readCount = 0;
    if (where) {
        for (const auto& rule : where->getRules()) {
            if (readCount == rules.size() || rule.label.getView() != rules[readCount]->name.text)
                break;
            vRuleCheck(*rules[readCount++]);
        }
    }
    if (where && rules.empty())
        vNoRulesCheck(*where);
    if (readCount == rules.size())
        return;
    const auto& lost = *rules[readCount];
    const auto after = rules.size() - readCount - 1;
    auto message = lost.name.text.empty() ? "a rule without label" : "the rule " + sNamed(lost.name.text);
    message += " of " + sNamed(declaration_.name.text) + " cannot be read";
    if (after > 0)
        message += ", and the " + (after > 1 ? std::to_string(after) + " rules" : std::string("rule")) +
                   " after it " + (after > 1 ? "are" : "is") + " lost";
    auto& finding = run_.add("E007", lost.name.position, message);
    finding.subject = declaration_.name.text;
    if (const auto reason = cutReason(lost.expression); !reason.empty())
        finding.notes.push_back({std::string(reason), {}});
    if (where)
        run_.boRuleTake(finding, where->getText());
}

/// A comment in it that nothing closes is the mistake then.
bool boHasOpenComment(const SchemaRun& run, const ExpressDeclaration& declaration) {
    const auto line = run.positions.openComment.line;
    return line >= declaration.keyword.position.line && line <= declaration.end.position.line;
}

} // namespace

void vLostPartsCheck(SchemaRun& run) {
    for (const auto& declared : run.declared) {
        // What has a finding already is misread as a whole.
        if (declared.isLost() || declared.finding || boHasOpenComment(run, *declared.declaration))
            continue;
        PartsCheck check(run, declared);
        if (const auto* const entity = Entity::pFrom(declared.object))
            check.vEntityCheck(*entity);
        else if (const auto* const type = Type::pFrom(declared.object))
            check.vTypeCheck(*type);
    }
}

} // namespace kiv::kit
