#include "Kit/Findings/Rules/SchemaRules.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// E010 to E017: names that are declared twice, and names that are used and not declared.
namespace kiv::kit {

namespace {

using Kind = ExpressDeclarationKind;

/// What a rule says of a name that is used.
struct UseRule {
    std::string_view code;
    /// "the supertype"
    std::string_view role;
    SchemaReport report;
    /// Entities, types, or both may be named.
    bool takesEntities;
    bool takesTypes;
};

constexpr UseRule SupertypeRule{"E011", "the supertype", SchemaReport::Supertype, true, false};
constexpr UseRule SubtypeRule{"E012", "the subtype", SchemaReport::Subtype, true, false};
constexpr UseRule TypeRule{"E013", "the type", SchemaReport::Other, true, true};
constexpr UseRule UnderlyingRule{"E013", "the type", SchemaReport::Underlying, false, true};
constexpr UseRule ElementRule{"E013", "the type", SchemaReport::Element, true, true};
constexpr UseRule InverseRule{"E013", "the entity", SchemaReport::Inverse, true, false};
constexpr UseRule MemberRule{"E014", "the member", SchemaReport::SelectMember, true, true};
constexpr UseRule RedeclaredRule{"E016", "the entity", SchemaReport::Redeclared, true, false};
constexpr UseRule RuleEntityRule{"E011", "the entity", SchemaReport::Other, true, false};

std::string_view kindText(Kind kind) {
    static constexpr std::array<std::string_view, 6> Texts = {"a type", "an entity",   "a function",
                                                              "a rule", "a procedure", "a constant"};
    return Texts[static_cast<std::size_t>(kind)];
}

std::string sQualified(std::string_view owner, std::string_view name) {
    constexpr std::size_t MaxOwner = 60;
    return sNamed(std::string(owner.substr(0, MaxOwner)) + '.' + std::string(name.substr(0, MaxOwner)));
}

/// Takes the report that a name is the reason of.
void vReportTake(SchemaRun& run, Finding& finding, const UseRule& use) {
    if (use.report == SchemaReport::Other || run.boTake(finding, use.report))
        return;
    // Of some lists the whole is reported, not what it is made of.
    if (use.report == SchemaReport::Element)
        run.boTake(finding, SchemaReport::Underlying);
}

/// Checks one name; `owner` is what uses it. False when the name is not declared as it must be.
bool boUseCheck(SchemaRun& run, const ExpressWord& word, const std::string& owner, const UseRule& use) {
    auto* const found = run.pDeclared(word.text);
    const auto kind = found ? found->declaration->kind : Kind::Type;
    if (found && ((use.takesEntities && kind == Kind::Entity) || (use.takesTypes && kind == Kind::Type))) {
        // Whoever names what was lost says nothing new.
        if (found->isLost() && found->finding)
            vReportTake(run, *found->finding, use);
        return !found->isLost();
    }
    if (!found && run.isKnown(word.text))
        return true;
    auto message = std::string(use.role) + ' ' + sNamed(word.text) + " of " + owner;
    message +=
        found ? " is " + std::string(kindText(kind)) + (use.takesTypes ? ", not a type" : ", not an entity")
              : " is not declared";
    auto& finding = run.add(use.code, word.position, std::move(message));
    finding.subject = owner;
    if (found)
        run.vNoteAt(finding, found->declaration->name.position, "it is declared here");
    else if (use.takesEntities && use.takesTypes)
        run.vNearestNote(finding, word.text, {Kind::Entity, Kind::Type});
    else
        run.vNearestNote(finding, word.text, {use.takesEntities ? Kind::Entity : Kind::Type});
    vReportTake(run, finding, use);
    return false;
}

bool isAggregate(std::string_view type) {
    const auto upper = sUpperWord(type);
    return std::ranges::any_of(
               std::array<std::string_view, 4>{"ARRAY", "LIST", "SET", "BAG"},
               [&](std::string_view word) { return upper.find(word) != std::string::npos; }) &&
           upper.find("OF") != std::string::npos;
}

void vAttributeCheck(SchemaRun& run, const ExpressMember& member, const std::string& owner) {
    if (member.names.empty())
        return;
    const auto& use = isAggregate(member.type) ? ElementRule : TypeRule;
    for (const auto& name : member.names) {
        if (name.use == ExpressUse::Type)
            boUseCheck(run, name.word, owner, use);
    }
}

/// Says why an attribute that is declared is not found all the same, or which one can be meant.
void vAttributeNote(SchemaRun& run, Finding& finding, const Declared& entity, std::string_view name) {
    if (run.hasAttribute(entity, name))
        finding.notes.push_back(
            {"only explicit attributes are found, in the letter case of their declaration", {}});
    else
        run.vNearestAttributeNote(finding, name, entity);
}

std::string sNoAttribute(std::string_view entity, std::string_view name) {
    return "the entity " + sNamed(entity) + " has no explicit attribute " + sNamed(name);
}

void vInverseForCheck(SchemaRun& run, const std::string& owner, const ExpressWord& forWord,
                      const Declared& referred) {
    if (run.hasExplicitAttribute(referred, forWord.text))
        return;
    auto& finding =
        run.add("E015", forWord.position, sNoAttribute(referred.declaration->name.text, forWord.text));
    finding.subject = owner;
    vAttributeNote(run, finding, referred, forWord.text);
    run.boTake(finding, SchemaReport::Inverse);
}

/// Gives it to the last finding when that is about the word.
void vElementReportTake(SchemaRun& run, const ExpressWord& word) {
    auto* const finding = run.pLast();
    if (finding && finding->place.position == word.position)
        run.boTake(*finding, SchemaReport::Element);
}

void vInverseCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member) {
    const auto owner = sQualified(entity.declaration->name.text, member.name.text);
    Declared* referred = nullptr;
    for (const auto& name : member.names) {
        if (name.use == ExpressUse::Type) {
            const bool isFound = boUseCheck(run, name.word, owner, InverseRule);
            // Of a list its element is reported too.
            if (!isFound && isAggregate(member.type))
                vElementReportTake(run, name.word);
            referred = isFound ? run.pDeclared(name.word.text) : nullptr;
        } else if (name.use == ExpressUse::InverseFor && referred &&
                   referred->declaration->kind == Kind::Entity) {
            vInverseForCheck(run, owner, name.word, *referred);
        }
    }
}

void vRedeclaredCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member,
                      const std::string& owner, const ExpressWord& above) {
    const bool isFound = boUseCheck(run, above, owner, RedeclaredRule);
    const auto* const from = isFound ? run.pDeclared(above.text) : nullptr;
    if (!from || member.name.text.empty())
        return;
    const bool isAbove = run.isSupertype(*from, entity);
    if (isAbove && run.hasExplicitAttribute(*from, member.name.text))
        return;
    auto& finding = isAbove
                        ? run.add("E016", member.name.position, sNoAttribute(above.text, member.name.text))
                        : run.add("E016", above.position,
                                  "the entity " + sNamed(above.text) + " is not a supertype of " +
                                      sNamed(entity.declaration->name.text));
    finding.subject = owner;
    if (isAbove)
        vAttributeNote(run, finding, *from, member.name.text);
    run.boTake(finding, SchemaReport::Redeclared);
}

void vUniqueCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member) {
    for (const auto& name : member.names) {
        const auto* const other = run.pDeclared(name.word.text);
        // SELF\Entity.Attribute names an entity too.
        if (run.hasAttribute(entity, name.word.text) || (other && other->declaration->kind == Kind::Entity))
            continue;
        auto& finding = run.add("E017", name.word.position,
                                "the entity " + sNamed(entity.declaration->name.text) + " has no attribute " +
                                    sNamed(name.word.text));
        finding.subject = sQualified(entity.declaration->name.text, member.name.text);
        run.vNearestAttributeNote(finding, name.word.text, entity);
    }
}

void vMemberCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member) {
    if (run.lostMembers.contains(&member))
        return;
    const auto owner = sQualified(entity.declaration->name.text, member.name.text);
    if (member.kind == ExpressMemberKind::Unique)
        return vUniqueCheck(run, entity, member);
    if (member.kind == ExpressMemberKind::Inverse)
        return vInverseCheck(run, entity, member);
    // The library keeps derived attributes as text: what they are made of is never looked up.
    for (const auto& name : member.names) {
        if (name.use == ExpressUse::RedeclaredEntity && member.kind == ExpressMemberKind::Derived)
            vRedeclaredCheck(run, entity, member, owner, name.word);
        else if (name.use == ExpressUse::Type && member.kind == ExpressMemberKind::Derived)
            boUseCheck(run, name.word, owner, TypeRule);
    }
    if (member.kind == ExpressMemberKind::Attribute)
        vAttributeCheck(run, member, owner);
}

const UseRule* pUseRule(ExpressUse use, const UseRule& type) {
    switch (use) {
    case ExpressUse::Supertype:
        return &SupertypeRule;
    case ExpressUse::Subtype:
        return &SubtypeRule;
    case ExpressUse::SelectMember:
        return &MemberRule;
    case ExpressUse::RuleEntity:
        return &RuleEntityRule;
    case ExpressUse::Type:
        return &type;
    default:
        return nullptr;
    }
}

/// For the name that a TYPE is made of.
const UseRule& typeUseRule(const ExpressDeclaration& declaration) {
    const bool isList =
        declaration.kind == Kind::Type && isAggregate(declaration.text.substr(0, declaration.text.find(';')));
    return isList ? ElementRule : UnderlyingRule;
}

/// Names in one list, each of which may be there once.
class Repetitions {
public:
    explicit Repetitions(SchemaRun& run) : run_(run) {}

    /// `what` begins the message: "the attribute".
    void vAdd(const ExpressWord& word, std::string_view what, const std::string& owner, Severity severity) {
        const auto [place, isNew] = seen_.try_emplace(sUpperWord(word.text), word.position);
        if (isNew || word.text.empty())
            return;
        auto& finding = run_.add("E010", word.position,
                                 std::string(what) + ' ' + sNamed(word.text) + owner + " is declared twice");
        finding.severity = severity;
        finding.subject = std::string(word.text);
        run_.vNoteAt(finding, place->second, "first declared here");
    }

private:
    SchemaRun& run_;
    std::unordered_map<std::string, TextPosition> seen_;
};

bool isRedeclared(const ExpressMember& member) {
    return !member.names.empty() && member.names.front().use == ExpressUse::RedeclaredEntity;
}

void vTwiceInDeclaration(SchemaRun& run, const ExpressDeclaration& declaration) {
    const auto owner = " of " + sNamed(declaration.name.text);
    Repetitions listed(run);
    Repetitions attributes(run);
    Repetitions labels(run);
    for (const auto& name : declaration.names) {
        if (name.use == ExpressUse::EnumerationItem)
            listed.vAdd(name.word, "the item", owner, Severity::Error);
        else if (name.use == ExpressUse::SelectMember)
            listed.vAdd(name.word, "the member", owner, Severity::Warning);
    }
    for (const auto& member : declaration.members) {
        if (member.kind > ExpressMemberKind::Derived)
            labels.vAdd(member.name, "the rule", owner, Severity::Warning);
        else if (!isRedeclared(member))
            attributes.vAdd(member.name, "the attribute", owner, Severity::Error);
    }
}

} // namespace

void vNamesDeclaredTwiceCheck(SchemaRun& run) {
    Repetitions declarations(run);
    for (const auto& declared : run.declared) {
        const auto& declaration = *declared.declaration;
        declarations.vAdd(declaration.name, "the name", "", Severity::Error);
        vTwiceInDeclaration(run, declaration);
    }
}

void vUsedNamesCheck(SchemaRun& run) {
    for (const auto& declared : run.declared) {
        const auto& declaration = *declared.declaration;
        const auto owner = sNamed(declaration.name.text);
        const auto& type = typeUseRule(declaration);
        for (const auto& name : declaration.names) {
            if (const auto* const use = pUseRule(name.use, type))
                boUseCheck(run, name.word, owner, *use);
        }
        if (declaration.kind != Kind::Entity)
            continue;
        for (const auto& member : declaration.members)
            vMemberCheck(run, declared, member);
    }
}

} // namespace kiv::kit
