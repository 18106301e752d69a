#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Positions/ExpressScanner.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAggregate.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSimpleType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

// E006, E007, E020 and E022: parts of a declaration that the library does not read, and names that are none.
namespace kiv::kit {

namespace {

using ifc::def::schema::AttributeBase;
using ifc::def::schema::DataTypeEnum;
using ifc::def::schema::DataTypeListInterface;
using ifc::def::schema::DataTypeSelect;
using ifc::def::schema::DataTypeString;
using ifc::def::schema::DeriveValue;
using ifc::def::schema::Entity;
using ifc::def::schema::Type;
using ifc::def::schema::UniqueRule;
using ifc::def::schema::Where;

constexpr std::string_view OwnLine =
    "each is read from a line of its own that has \" : \" in it, with the blanks";

constexpr std::string_view CapitalsOnly = "keywords are found in capitals only";

/// Why a keyword is not found, or which one is meant.
std::string sKeywordHint(std::string_view word, std::string_view keyword) {
    return isSameExpressWord(word, keyword) ? std::string(CapitalsOnly) : sMeant(keyword);
}

/// What a keyword that is not found cost the type of an attribute, or a type.
struct TypeLoss {
    bool isType = false;
    bool isElement = false;
    bool isOptional = false;
    bool isFixed = false;

    bool isAny() const { return isType || isElement || isOptional || isFixed; }
};

/// Whether the elements of a list are not found, or those of one in it.
bool isElementLost(const ifc::def::schema::ObjectBase* type) {
    for (const auto* list = DataTypeListInterface::pFrom(type); list;
         list = DataTypeListInterface::pFrom(list->pElement())) {
        if (!list->pElement())
            return true;
    }
    return false;
}

/// A type as the library has it.
struct DataTypeAtPlace {
    const ifc::def::schema::ObjectBase* type = nullptr;
    /// Those in its text.
    std::span<const ExpressName> names;
    bool isInverse = false;
    /// What a TYPE is made of, and not the type of an attribute.
    bool isUnderlying = false;
};

/// Why a type is not read although its words are those of EXPRESS; empty when it is none of these.
std::string_view unreadTypeReason(std::string_view text) {
    ExpressScanner scanner(text);
    ExpressToken previous;
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        if (token.text == "BAG")
            return "BAG is not read: of lists only LIST, SET and ARRAY are";
        if (token.text == "GENERIC" || token.text == "AGGREGATE" || token.text == "GENERIC_ENTITY")
            return "only parameters and variables of functions can have such a type";
        if (token.text == "OPTIONAL" && previous.text == "OF")
            return "OPTIONAL elements of an ARRAY are not read";
        if (token.isSymbol('(') && previous.text == "REAL")
            return "the precision of REAL is not read: leave it out";
        previous = token;
    }
    return {};
}

/// What a list is of, and a list in it; another type is what it is.
const ifc::def::schema::ObjectBase* innermostOf(const ifc::def::schema::ObjectBase* type) {
    while (const auto* const list = DataTypeListInterface::pFrom(type))
        type = list->pElement();
    return type;
}

/// Whether the text gives a length that is not read: "STRING (255)".
bool isLengthLost(std::string_view text, const ifc::def::schema::ObjectBase* type) {
    const auto* const string = dynamic_cast<const DataTypeString*>(innermostOf(type));
    if (!string || string->getWidth() != 0)
        return false;
    ExpressScanner scanner(text);
    auto token = scanner.next();
    while (token.kind != ExpressTokenKind::End && token.text != "STRING")
        token = scanner.next();
    const auto bracket = scanner.next();
    if (!bracket.isSymbol('(') && !bracket.isSymbol('['))
        return false;
    const auto length = scanner.next();
    return length.kind == ExpressTokenKind::Number &&
           length.text.find_first_not_of('0') != std::string_view::npos;
}

/// One declaration as the text has it, beside what the library has of it.
class PartsCheck {
public:
    PartsCheck(SchemaRun& run, const Declared& declared) : run_(run), declaration_(*declared.declaration) {}

    void vEntityCheck(const Entity& entity);
    void vTypeCheck(const Type& type);
    void vWhereCheck(const Where* where);

private:
    Finding& lostAdd(const ExpressWord& word, const std::string& what, std::string_view hint);
    Finding& partLostAdd(const ExpressWord& word, const std::string& part, std::string_view hint);
    void vSupertypeCheck(const Entity& entity);
    void vListCheck(ExpressUse use, std::span<const std::string_view> read, const std::string& what,
                    std::string_view hint);
    template <class Read, class NameOf>
    bool isReadInOrder(ExpressMemberKind kind, const Read& read, NameOf nameOf) const;
    template <class Read, class NameOf>
    void vMembersCheck(ExpressMemberKind kind, const Read& read, NameOf nameOf, std::string_view what);
    void vLostStatementAdd(std::span<const ExpressMember* const> members, const std::string& what);
    void vDerivedCheck(const Entity& entity);
    void vUniqueRulesCheck(const Entity& entity);
    void vUniqueCheck(const ExpressWord& word, std::string_view type);
    void vTypeTextAdd(const ExpressMember& attribute, std::string_view read);
    void vTypeTextsCheck(const Entity& entity);
    Finding& wordsAdd(std::span<const ExpressMisspelt> words, const std::string& owner, const TypeLoss& loss);
    void vUnreadTypeCheck(const ExpressWord& word, std::string_view text, const DataTypeAtPlace& read);
    void vAttributeWordsCheck(const ExpressMember& member, const AttributeBase& attribute);
    void vInverseWordsCheck(const Entity& entity);
    void vTypeWordsCheck(const Type& type);
    void vRuleCheck(const ExpressMember& rule);
    void vNoRulesCheck(const Where& where);
    std::size_t indexOf(const ExpressMember& member) const {
        return static_cast<std::size_t>(&member - declaration_.members.data());
    }

    SchemaRun& run_;
    const ExpressDeclaration& declaration_;
};

Finding& PartsCheck::lostAdd(const ExpressWord& word, const std::string& what, std::string_view hint) {
    return partLostAdd(word, what + (word.text.empty() ? " without a name" : ' ' + sNamed(word.text)), hint);
}

Finding& PartsCheck::partLostAdd(const ExpressWord& word, const std::string& part, std::string_view hint) {
    auto& finding = run_.add("E006", word, part + " of " + sOwner(declaration_) + " is not read");
    finding.subject = declaration_.name.text;
    if (!hint.empty())
        finding.notes.push_back({std::string(hint), {}});
    return finding;
}

void PartsCheck::vSupertypeCheck(const Entity& entity) {
    std::array<const ExpressWord*, 2> first{};
    std::size_t count = 0;
    for (const auto& name : declaration_.names) {
        if (name.use == ExpressUse::Supertype && count < first.size())
            first[count++] = &name.word;
    }
    if (count == 0 || trimmed(entity.getSupertypeName()) == first.front()->text)
        return;
    const auto hint = count > 1 ? "an entity can have one supertype"
                                : "it is read from one line \"SUBTYPE OF (Name)\" below that of the "
                                  "keyword, with one blank after OF";
    auto& finding = lostAdd(*first[count - 1], "the supertype", hint);
    if (!entity.getSupertypeName().empty())
        run_.boTake(finding, SchemaReport::Supertype);
}

/// Finds the first of the names that is not read as it is.
void PartsCheck::vListCheck(ExpressUse use, std::span<const std::string_view> read, const std::string& what,
                            std::string_view hint) {
    auto next = read.begin();
    for (const auto& name : declaration_.names) {
        if (name.use != use)
            continue;
        if (next == read.end() || name.word.text != *next) {
            lostAdd(name.word, what, hint);
            return;
        }
        ++next;
    }
    if (next != read.end())
        run_.add("E006", declaration_.name,
                 what + ' ' + sNamed(*next) + " of " + sOwner(declaration_) +
                     " is read from a comment or another text")
            .subject = declaration_.name.text;
}

/// Whether all of a kind are read in the order of the text, as most are.
template <class Read, class NameOf>
bool PartsCheck::isReadInOrder(ExpressMemberKind kind, const Read& read, NameOf nameOf) const {
    auto next = read.begin();
    for (const auto& member : declaration_.members) {
        if (member.kind != kind)
            continue;
        if (next == read.end() || nameOf(*next) != member.name.text)
            return false;
        ++next;
    }
    return true;
}

template <class Read, class NameOf>
void PartsCheck::vMembersCheck(ExpressMemberKind kind, const Read& read, NameOf nameOf,
                               std::string_view what) {
    if (isReadInOrder(kind, read, nameOf))
        return;
    std::unordered_set<std::string_view> names;
    for (const auto& one : read)
        names.insert(nameOf(one));
    std::vector<const ExpressMember*> lost;
    for (const auto& member : declaration_.members) {
        if (member.kind == kind && !names.contains(member.name.text))
            lost.push_back(&member);
    }
    run_.lostMembers.insert(lost.begin(), lost.end());
    for (auto first = lost.begin(); first != lost.end();) {
        const auto isOther = [first](const auto* member) { return !isSameStatement(**first, *member); };
        const auto end = std::find_if(first + 1, lost.end(), isOther);
        vLostStatementAdd({first, end}, std::string(what));
        first = end;
    }
}

/// FOR in other letters than capitals ends no type.
bool hasLostFor(std::span<const ExpressMisspelt> misspelt) {
    return !misspelt.empty() && misspelt.back().keyword == "FOR";
}

/// Attributes of one statement are lost for one reason.
void PartsCheck::vLostStatementAdd(std::span<const ExpressMember* const> members, const std::string& what) {
    const auto misspelt = misspeltIn(declaration_, indexOf(*members.front()));
    const bool isForLost = hasLostFor(misspelt);
    auto& finding = lostAdd(members.front()->name, what, isForLost ? std::string_view() : OwnLine);
    if (isForLost) {
        const auto& [word, keyword] = misspelt.back();
        run_.vNoteAt(finding, word,
                     sNamed(word.text) + " is not read as a keyword: " + sKeywordHint(word.text, keyword));
    }
    const auto others = members.subspan(1);
    const auto listed = std::min(others.size(), SchemaRun::maxPlaces);
    for (const auto* other : others.first(listed))
        run_.vNoteAt(finding, other->name,
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

/// Without the keyword at its beginning, if that is in capitals.
std::string_view withoutOptional(std::string_view type) {
    constexpr std::string_view Optional = "OPTIONAL ";
    return type.starts_with(Optional) ? type.substr(Optional.size()) : type;
}

/// Most are the same text, but for blanks around it.
bool isSameType(std::string_view left, std::string_view right) {
    const auto isSame = [left](std::string_view type) { return trimmed(left) == trimmed(type); };
    return isSame(right) || isSame(withoutOptional(right)) || typeWords(left) == typeWords(right);
}

/// The word UNIQUE is understood after LIST [...] OF alone. After what is no keyword of a list something else
/// is wrong.
bool isUniqueMisread(const std::vector<std::string_view>& words) {
    bool isOther = false;
    bool isAfterOf = false;
    for (const auto word : words) {
        if (word == "UNIQUE" && isAfterOf && isOther)
            return true;
        isAfterOf = word == "OF";
        if (word == "LIST" || word == "SET" || word == "ARRAY" || word == "BAG")
            isOther = word != "LIST";
    }
    return false;
}

void PartsCheck::vUniqueCheck(const ExpressWord& word, std::string_view type) {
    if (type.find("UNIQUE") == std::string_view::npos || !isUniqueMisread(typeWords(type)))
        return;
    auto& finding =
        run_.add("E006", word, "the type of the elements of " + sNamed(word.text) + " is not found");
    finding.subject = declaration_.name.text;
    finding.notes.push_back(
        {"only LIST can be of UNIQUE elements; elsewhere the word is read as a part of the name", {}});
    run_.boTake(finding, SchemaReport::Element);
}

/// Whether OPTIONAL comes after something else, as only the elements of an ARRAY may have it.
bool isOptionalInside(std::string_view type) {
    ExpressScanner scanner(type);
    scanner.next();
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        if (token.text == "OPTIONAL")
            return true;
    }
    return false;
}

void PartsCheck::vTypeTextAdd(const ExpressMember& attribute, std::string_view read) {
    auto& finding = run_.add("E006", attribute.name,
                             "the type of " + sNamed(attribute.name.text) + " of " + sOwner(declaration_) +
                                 " is read as " + sNamed(read));
    finding.subject = declaration_.name.text;
    finding.notes.push_back({isOptionalInside(attribute.type)
                                 ? "the type is read from the word after \"OPTIONAL\" on"
                                 : "an attribute is read from one line",
                             {}});
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
        if (isSame && !isSameType(read->getTypeText(), member.type))
            vTypeTextAdd(member, read->getTypeText());
        if (isSame)
            vUniqueCheck(member.name, member.type);
        if (isSame)
            vAttributeWordsCheck(member, *read);
        if (isSame)
            vUnreadTypeCheck(member.name, member.type, {read->pFirstType(), member.names, false, false});
        if (isSame)
            ++read;
    }
}

/// Keywords in a type that are not found, of which something came: they are one mistake.
Finding& PartsCheck::wordsAdd(std::span<const ExpressMisspelt> words, const std::string& owner,
                              const TypeLoss& loss) {
    const auto& first = words.front().word;
    auto& finding =
        run_.add("E006", first, sNamed(first.text) + " in " + owner + " is not read as a keyword");
    finding.subject = declaration_.name.text;
    finding.notes.push_back({sKeywordHint(first.text, words.front().keyword), {}});
    for (const auto& [word, keyword] : words.subspan(1))
        run_.vNoteAt(finding, word, sNamed(word.text) + " is not read as one either");
    if (loss.isType)
        finding.notes.push_back({"its type is not found", {}});
    if (loss.isElement)
        finding.notes.push_back({"the type of its elements is not found", {}});
    if (loss.isOptional)
        finding.notes.push_back({"it is not read as OPTIONAL", {}});
    if (loss.isFixed)
        finding.notes.push_back({"it is not read as FIXED", {}});
    if (loss.isElement)
        run_.boTake(finding, SchemaReport::Element);
    return finding;
}

void PartsCheck::vUnreadTypeCheck(const ExpressWord& word, std::string_view text,
                                  const DataTypeAtPlace& read) {
    const bool isLost = !read.type || isElementLost(read.type);
    const bool isShort = isLengthLost(text, read.type);
    if (!isLost && !isShort)
        return;
    // A name that is not declared is why then.
    const auto isMissing = [this](const ExpressName& name) {
        return name.use == ExpressUse::Type && !run_.isKnown(name.word.text);
    };
    if (std::ranges::any_of(read.names, isMissing))
        return;
    const auto reason = isLost ? unreadTypeReason(text) : std::string_view();
    if (!reason.empty()) {
        auto& finding = run_.add("E006", word,
                                 (read.type ? "the type of the elements of " : "the type of ") +
                                     sNamed(word.text) + " is not found");
        finding.subject = declaration_.name.text;
        finding.notes.push_back({std::string(reason), {}});
        if (read.type)
            run_.boTake(finding, SchemaReport::Element);
        else if (read.isUnderlying)
            run_.boTake(finding, SchemaReport::Underlying);
        if (read.isInverse)
            run_.boTake(finding, SchemaReport::Inverse);
    }
    if (isShort) {
        auto& finding = run_.add("E006", word, "the length of " + sNamed(word.text) + " is not read");
        finding.subject = declaration_.name.text;
        finding.notes.push_back({"it is read from round brackets right after STRING, without a blank", {}});
    }
}

void PartsCheck::vAttributeWordsCheck(const ExpressMember& member, const AttributeBase& attribute) {
    const auto misspelt = misspeltIn(declaration_, indexOf(member));
    if (misspelt.empty())
        return;
    const auto isOptional = [](const ExpressMisspelt& word) { return word.keyword == "OPTIONAL"; };
    TypeLoss loss;
    loss.isType = !attribute.pFirstType();
    loss.isElement = isElementLost(attribute.pFirstType());
    loss.isOptional = !attribute.isOptional() && std::ranges::any_of(misspelt, isOptional);
    if (!loss.isAny())
        return;
    const auto owner = sQualified(declaration_, member.name.text);
    auto& finding = wordsAdd(misspelt, owner, loss);
    if (member.kind == ExpressMemberKind::Inverse && (loss.isType || loss.isElement))
        run_.boTake(finding, SchemaReport::Inverse);
}

void PartsCheck::vInverseWordsCheck(const Entity& entity) {
    auto read = entity.getAttributesInverse().begin();
    for (const auto& member : declaration_.members) {
        if (member.kind != ExpressMemberKind::Inverse)
            continue;
        if (read == entity.getAttributesInverse().end())
            return;
        if (read->getName() != member.name.text)
            continue;
        vAttributeWordsCheck(member, *read);
        vUnreadTypeCheck(member.name, member.type, {read->pFirstType(), member.names, true, false});
        ++read;
    }
}

void PartsCheck::vTypeWordsCheck(const Type& type) {
    const auto& words = declaration_.mistakes->typeMisspelt;
    if (words.empty())
        return;
    const auto* const string = dynamic_cast<const DataTypeString*>(type.pUnderlying());
    TypeLoss loss;
    loss.isType = !type.pUnderlying();
    loss.isElement = isElementLost(type.pUnderlying());
    loss.isFixed = string && !string->isFixed() && words.back().keyword == "FIXED";
    if (!loss.isAny())
        return;
    auto& finding = wordsAdd(words, sOwner(declaration_), loss);
    if (loss.isType)
        run_.boTake(finding, SchemaReport::Underlying);
}

/// What comes after the last dot of "SELF\Entity.Attribute".
std::string_view derivedName(std::string_view name) {
    const auto dot = name.rfind('.');
    return trimmed(dot == std::string_view::npos ? name : name.substr(dot + 1));
}

void PartsCheck::vDerivedCheck(const Entity& entity) {
    const auto nameOf = [](const DeriveValue& value) { return derivedName(value.getName()); };
    const auto what = "the derived attribute";
    if (const auto* const derive = entity.pDerive())
        vMembersCheck(ExpressMemberKind::Derived, derive->getValues(), nameOf, what);
    else
        vMembersCheck(ExpressMemberKind::Derived, std::span<const DeriveValue>(), nameOf, what);
}

void PartsCheck::vUniqueRulesCheck(const Entity& entity) {
    const auto nameOf = [](const UniqueRule& rule) { return trimmed(rule.label); };
    const auto what = "the UNIQUE rule";
    if (const auto* const unique = entity.pUnique())
        vMembersCheck(ExpressMemberKind::Unique, unique->getRules(), nameOf, what);
    else
        vMembersCheck(ExpressMemberKind::Unique, std::span<const UniqueRule>(), nameOf, what);
}

void PartsCheck::vEntityCheck(const Entity& entity) {
    vSupertypeCheck(entity);
    vListCheck(
        ExpressUse::Subtype, entity.getSupertypeOfNames(), "the subtype",
        "subtypes are read from \"SUPERTYPE OF (ONEOF\" on one line and the names in brackets after it");
    if (declaration_.isAbstract && !entity.isAbstract())
        partLostAdd(declaration_.name, "ABSTRACT",
                    "it is read from the first line below that of the keyword");
    const auto attributeName = [](const AttributeBase& attribute) -> std::string_view {
        return attribute.getName();
    };
    vMembersCheck(ExpressMemberKind::Attribute, entity.getAttributes(), attributeName, "the attribute");
    vMembersCheck(ExpressMemberKind::Inverse, entity.getAttributesInverse(), attributeName,
                  "the inverse attribute");
    vDerivedCheck(entity);
    vUniqueRulesCheck(entity);
    vTypeTextsCheck(entity);
    vInverseWordsCheck(entity);
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
    vTypeWordsCheck(type);
    vUnreadTypeCheck(declaration_.name, declaration_.typeText,
                     {type.pUnderlying(), declaration_.names, false, true});
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
    auto& finding =
        run_.add("E007", rule.name,
                 "the rule " + sNamed(rule.name.text) + " of " + sOwner(declaration_) + " is cut short");
    finding.subject = declaration_.name.text;
    finding.notes.push_back({std::string(cutReason(rule.expression)), {}});
}

/// WHERE without a rule is reported as one that is not understood.
void PartsCheck::vNoRulesCheck(const Where& where) {
    auto& finding =
        run_.add("E007", declaration_.name, "the WHERE clause of " + sOwner(declaration_) + " has no rule");
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
    message += " of " + sOwner(declaration_) + " cannot be read";
    if (after > 0)
        message += ", and the " + (after > 1 ? std::to_string(after) + " rules" : std::string("rule")) +
                   " after it " + (after > 1 ? "are" : "is") + " lost";
    auto& finding = run_.add("E007", lost.name, message);
    finding.subject = declaration_.name.text;
    if (const auto reason = cutReason(lost.expression); !reason.empty())
        finding.notes.push_back({std::string(reason), {}});
    if (run_.isKept(finding))
        run_.unreadRules.emplace(&lost, &finding);
    if (where)
        run_.boRuleTake(finding, where->getText());
}

/// A comment in it that nothing closes is the mistake then.
bool boHasOpenComment(const SchemaRun& run, const ExpressDeclaration& declaration) {
    if (run.positions.openComment.text.empty())
        return false;
    const auto line = run.positionOf(run.positions.openComment).line;
    return line >= run.positionOf(declaration.keyword).line && line <= run.positionOf(declaration.end).line;
}

/// What the keyword would have begun is lost, and why is said here.
void vMisspeltAdd(SchemaRun& run, const ExpressDeclaration& declaration, std::size_t index) {
    const auto& [word, keyword] = declaration.mistakes->misspelt[index];
    auto& finding =
        run.add("E006", word, sNamed(word.text) + " in " + sOwner(declaration) + " is not read as a keyword");
    finding.subject = declaration.name.text;
    finding.notes.push_back({sKeywordHint(word.text, keyword), {}});
    // An entity that is not abstract is found at its name, and this finding is at the word itself.
    auto begin = run.positionOf(keyword == "ABSTRACT" ? declaration.keyword : word);
    begin.column += 1;
    const bool isLast = index + 1 == declaration.mistakes->misspelt.size();
    run.vConsequencesTake(
        finding, begin,
        run.positionOf(isLast ? declaration.end : declaration.mistakes->misspelt[index + 1].word));
}

} // namespace

void vMisspeltKeywordsCheck(SchemaRun& run) {
    for (const auto& declared : run.declared) {
        const auto& misspelt = declared.declaration->mistakes->misspelt;
        if (declared.isLost() || declared.finding)
            continue;
        for (std::size_t index = 0; index < misspelt.size(); ++index)
            vMisspeltAdd(run, *declared.declaration, index);
    }
}

namespace {

std::string sGap(const ExpressGap& gap) {
    if (gap.isSurplus)
        return "there is a " + std::string(gap.missing) + " too many after " + sNamed(gap.last.text);
    const auto* const side = gap.isInside ? "in " : gap.isBefore ? "before " : "after ";
    return std::string(gap.missing) + " is missing " + side + sNamed(gap.last.text);
}

/// Whether it has an attribute whose name is empty.
bool hasNameless(const Entity* entity) {
    const auto isNameless = [](const AttributeBase& attribute) { return attribute.getName().empty(); };
    return entity && (std::ranges::any_of(entity->getAttributes(), isNameless) ||
                      std::ranges::any_of(entity->getAttributesInverse(), isNameless));
}

/// What is reported of a type, or of a list, that is made of nothing.
void vMissingTypeTake(SchemaRun& run, const Declared& declared, const ExpressGap& gap, Finding& finding) {
    finding.severity = Severity::Error;
    if (isSameExpressWord(gap.last.text, "OF") || isSameExpressWord(gap.last.text, "UNIQUE"))
        run.boTake(finding, SchemaReport::Element);
    else if (!gap.isInMember)
        run.boTake(finding, SchemaReport::Underlying);
    if (declared.declaration->kind == ExpressDeclarationKind::Entity && gap.missing != "a type")
        run.boTake(finding, SchemaReport::Inverse);
}

/// Without "=" the type is made of nothing, nor with "[" in the place of "(", and its bounds are none without
/// ":".
void vGapLossAdd(SchemaRun& run, const Declared& declared, const ExpressGap& gap, Finding& finding) {
    const auto* const type = Type::pFrom(declared.object);
    if ((gap.missing == "\"=\"" || gap.missing == "\"(\"") && type && !type->pUnderlying()) {
        finding.severity = Severity::Error;
        if (!finding.origin)
            run.boTake(finding, SchemaReport::Underlying);
    }
    if (gap.missing == "a type" || gap.missing == "an entity" || isSameExpressWord(gap.last.text, "FOR"))
        vMissingTypeTake(run, declared, gap, finding);
    if (gap.isBefore && hasNameless(Entity::pFrom(declared.object)))
        finding.severity = Severity::Error;
    if (gap.isInside) {
        finding.severity = Severity::Error;
        finding.notes.push_back({"the bounds are not read", {}});
    }
}

/// A list that is not closed goes on to the next bracket, beyond the end of its declaration.
void vLostEndTake(SchemaRun& run, Declared& declared, Finding& finding) {
    if (!declared.finding || !run.isKept(*declared.finding) || declared.finding->code != "E004")
        return;
    declared.finding->message = "the end of the declaration is not seen because of that";
    run.vFindingTake(finding, *declared.finding);
    finding.severity = Severity::Error;
    declared.finding = &finding;
}

void vBoundsAdd(SchemaRun& run, const ExpressDeclaration& declaration) {
    for (const auto& bounds : declaration.mistakes->wrongBounds)
        run.add("E022", bounds,
                "the bounds " + sNamed(bounds.text) +
                    " are not two integers, or one and \"?\" for no upper bound")
            .subject = declaration.name.text;
    for (const auto& bounds : declaration.mistakes->swappedBounds)
        run.add("E022", bounds,
                "the bounds " + sNamed(bounds.text) + " are swapped: the first is greater than the second")
            .subject = declaration.name.text;
}

} // namespace

void vGapsCheck(SchemaRun& run) {
    for (auto& declared : run.declared) {
        if (declared.isLost())
            continue;
        vBoundsAdd(run, *declared.declaration);
        for (const auto& gap : declared.declaration->mistakes->gaps) {
            auto& finding = run.add("E022", gap.last, sGap(gap));
            finding.subject = declared.declaration->name.text;
            // What came of it stays a finding of its own.
            if (!run.isKept(finding))
                continue;
            if (gap.isSurplus)
                run.surplusColons.emplace(gap.last.text.data() + gap.last.text.size(), &finding);
            if (gap.missing == "\")\"" || gap.missing == "\"(\"" || isSameExpressWord(gap.last.text, "OF"))
                vLostEndTake(run, declared, finding);
            const auto line = finding.place.position.line;
            run.vConsequencesTake(finding, {line, 1, 0},
                                  gap.isInMember ? TextPosition{line + 1, 1, 0}
                                                 : run.positionOf(declared.declaration->end));
            vGapLossAdd(run, declared, gap, finding);
        }
    }
}

namespace {

std::string sIllegalName(std::string_view name) {
    if (isDigit(name.front()))
        return "the name " + sNamed(name) + " begins with a digit";
    if (name.front() == '_')
        return "the name " + sNamed(name) + " begins with \"_\"";
    const auto* const stranger = std::ranges::find_if_not(name, isNameLetter);
    const auto* const end = std::find_if_not(stranger + 1, name.end(), isContinuation);
    return "the name " + sNamed(name) + " has " + sNamed({stranger, end}) + " in it";
}

} // namespace

void vIllegalNamesCheck(SchemaRun& run) {
    for (const auto& declared : run.declared) {
        for (const auto& [name, place] : declared.declaration->mistakes->illegalNames) {
            // A name that is read as another has a finding.
            if (declared.finding && name.text.data() == declared.declaration->name.text.data())
                continue;
            auto position = run.positionOf(place);
            // Also when it is a byte that is no character of UTF-8.
            position.length = 1;
            auto& finding = run.add("E020", position, sIllegalName(name.text));
            finding.subject = name.text;
            finding.notes.push_back({"names are letters, digits and \"_\", and begin with a letter", {}});
            run.vMeantKeep(declared, name.text, finding);
            // A blank that does not break lines is a part of the name, and keeps it from being found.
            const auto begin = run.positionOf(name);
            auto after = begin;
            ++after.column;
            run.vConsequencesTake(finding, begin, after);
        }
    }
}

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
