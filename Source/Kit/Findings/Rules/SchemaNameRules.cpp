#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Names/MisspeltKeyword.h"
#include "Kit/Text/NameIndex.h"
#include "Kit/Text/NameKeys.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
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
constexpr UseRule ElementTypeRule{"E013", "the type", SchemaReport::Element, true, true};
constexpr UseRule InverseRule{"E013", "the entity", SchemaReport::Inverse, true, false};
constexpr UseRule MemberRule{"E014", "the member", SchemaReport::SelectMember, true, true};
constexpr UseRule RedeclaredRule{"E016", "the entity", SchemaReport::Redeclared, true, false};
constexpr UseRule RuleEntityRule{"E011", "the entity", SchemaReport::Other, true, false};

/// Unlike the others it takes attributes of any kind.
constexpr std::string_view UniqueCode = "E017";

std::string_view kindText(Kind kind) {
    static constexpr std::array<std::string_view, 6> Texts = {"a type", "an entity",   "a function",
                                                              "a rule", "a procedure", "a constant"};
    return Texts[static_cast<std::size_t>(kind)];
}

/// "the entity" with its name.
std::string sEntity(const ExpressDeclaration& entity) {
    return (entity.name.text.empty() ? "" : "the entity ") + sOwner(entity);
}

/// Takes the report that a name is the reason of.
void vReportTake(SchemaRun& run, Finding& finding, const UseRule& use) {
    if (use.report == SchemaReport::Other || run.boTake(finding, use.report))
        return;
    // Of some lists the whole is reported, not what it is made of.
    if (use.report == SchemaReport::Element)
        run.boTake(finding, SchemaReport::Underlying);
}

/// What uses a name: a declaration, or a member of it. Its text is made for findings alone.
struct User {
    const ExpressDeclaration& declaration;
    const ExpressMember* member = nullptr;

    std::string sShown() const {
        return member ? sQualified(declaration, member->name.text) : sOwner(declaration);
    }
};

/// What came of looking up a name.
struct UseResult {
    bool isFound = true;
    /// Explains what is reported of a name that is not found; null when nothing does.
    Finding* finding = nullptr;
};

std::string sUse(const UseRule& use, const ExpressWord& word, const User& user) {
    return std::string(use.role) + ' ' + sNamed(word.text) + " of " + user.sShown();
}

/// What a word in capitals may be meant for where a type is expected.
std::vector<std::string_view> typeKeywordsLike(std::string_view word) {
    static constexpr std::array<std::string_view, 15> Keywords = {
        "OPTIONAL", "STRING", "REAL", "INTEGER", "NUMBER", "BOOLEAN",     "LOGICAL", "BINARY",
        "LIST",     "SET",    "BAG",  "ARRAY",   "UNIQUE", "ENUMERATION", "SELECT"};
    const auto keyword = misspeltKeyword(word, Keywords);
    return keyword.empty() ? std::vector<std::string_view>() : std::vector{keyword};
}

/// The finding about a name that is not declared, which is a new one at its first use.
Finding& undeclaredFinding(SchemaRun& run, const ExpressWord& word, const User& user, const UseRule& use) {
    auto key = SchemaRun::sMissingKey(word.text);
    if (auto* const before = run.pMissingBefore(key, word, std::string(use.role) + " of " + user.sShown()))
        return *before;
    const auto message = sUse(use, word, user) + " is not declared";
    if (const auto colon = run.surplusColons.find(word.text.data() + word.text.size());
        colon != run.surplusColons.end()) {
        colon->second->severity = Severity::Error;
        colon->second->notes.push_back({message, {}});
        run.vMissingKeep(std::move(key), *colon->second);
        return *colon->second;
    }
    auto& finding = run.add(use.code, word, message);
    finding.subject = user.sShown();
    run.vMissingKeep(std::move(key), finding);
    auto keywords = use.code == TypeRule.code ? typeKeywordsLike(word.text) : std::vector<std::string_view>();
    if (use.takesEntities && use.takesTypes)
        run.vNearestNote(finding, word.text, {Kind::Entity, Kind::Type}, std::move(keywords));
    else
        run.vNearestNote(finding, word.text, {use.takesEntities ? Kind::Entity : Kind::Type},
                         std::move(keywords));
    return finding;
}

/// The finding about a name that is declared as something else.
Finding& otherKindAdd(SchemaRun& run, const ExpressWord& word, const User& user, const UseRule& use,
                      const ExpressDeclaration& declaration) {
    auto& finding = run.add(use.code, word,
                            sUse(use, word, user) + " is " + std::string(kindText(declaration.kind)) +
                                (use.takesTypes ? ", not a type" : ", not an entity"));
    finding.subject = user.sShown();
    run.vNoteAt(finding, declaration.name, "it is declared here");
    return finding;
}

/// Looks up one name.
UseResult useCheck(SchemaRun& run, const ExpressWord& word, const User& user, const UseRule& use) {
    auto* const found = run.pDeclared(word.text);
    if (!found && (run.isCutOff(word.text) || run.isKnown(word.text)))
        return {};
    const auto kind = found ? found->declaration->kind : Kind::Type;
    UseResult result{false, nullptr};
    if (!found) {
        result.finding = &undeclaredFinding(run, word, user, use);
    } else if ((use.takesEntities && kind == Kind::Entity) || (use.takesTypes && kind == Kind::Type)) {
        // Whoever names what was lost says nothing new.
        result = {!found->isLost(), found->isLost() ? found->finding : nullptr};
    } else {
        result.finding = &otherKindAdd(run, word, user, use, *found->declaration);
    }
    if (result.finding)
        vReportTake(run, *result.finding, use);
    return result;
}

bool isAggregate(std::string_view type) {
    const auto upper = sUpperWord(type);
    return std::ranges::any_of(
               std::array<std::string_view, 4>{"ARRAY", "LIST", "SET", "BAG"},
               [&](std::string_view word) { return upper.find(word) != std::string::npos; }) &&
           upper.find("OF") != std::string::npos;
}

/// A type that is looked at when it is first asked for, and not again: it may be long, and name many.
class TypeText {
public:
    explicit TypeText(std::string_view text) : text_(text) {}

    bool isAggregate() {
        if (!isKnown_)
            isAggregate_ = kit::isAggregate(text_);
        isKnown_ = true;
        return isAggregate_;
    }

private:
    std::string_view text_;
    bool isKnown_ = false;
    bool isAggregate_ = false;
};

/// Whether nothing is to be said of a name that may be that of a type or an entity.
bool isTypeOrEntity(SchemaRun& run, const ExpressWord& word) {
    const auto* const found = run.pDeclared(word.text);
    return found && !found->isLost() &&
           (found->declaration->kind == Kind::Entity || found->declaration->kind == Kind::Type);
}

void vAttributeCheck(SchemaRun& run, const ExpressMember& member, const User& user) {
    TypeText type(member.type);
    for (const auto& name : member.names) {
        if (name.use == ExpressUse::Type && !isTypeOrEntity(run, name.word))
            useCheck(run, name.word, user, type.isAggregate() ? ElementTypeRule : TypeRule);
    }
}

/// What uses an attribute, and how.
struct AttributeUse {
    std::string_view code;
    std::string_view role;
    const User& user;
};

/// The finding about an attribute that an entity lacks, or lacks as an explicit one. All uses of one that is
/// missing altogether have one finding.
Finding& attributeFinding(SchemaRun& run, const AttributeUse& use, const ExpressWord& word,
                          const Declared& entity) {
    const bool isMissing = !run.hasAttribute(entity, word.text);
    auto key = run.sMissingKey(entity, word.text);
    const auto note = std::string(use.role) + ' ' + use.user.sShown();
    if (auto* const before = isMissing ? run.pMissingBefore(key, word, note) : nullptr)
        return *before;
    const std::string what = use.code == UniqueCode ? " has no attribute " : " has no explicit attribute ";
    auto& finding = run.add(use.code, word, sEntity(*entity.declaration) + what + sNamed(word.text));
    finding.subject = use.user.sShown();
    if (!isMissing) {
        finding.notes.push_back(
            {"only explicit attributes are found, in the letter case of their declaration", {}});
        return finding;
    }
    run.vMissingKeep(std::move(key), finding);
    run.vNearestAttributeNote(finding, word.text, entity);
    return finding;
}

void vInverseForCheck(SchemaRun& run, const User& user, const ExpressWord& forWord,
                      const Declared& referred) {
    if (run.hasExplicitAttribute(referred, forWord.text))
        return;
    auto& finding = attributeFinding(run, {"E015", "inverted by", user}, forWord, referred);
    run.boTake(finding, SchemaReport::Inverse);
}

void vInverseCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member) {
    const User user{*entity.declaration, &member};
    TypeText type(member.type);
    Declared* referred = nullptr;
    for (const auto& name : member.names) {
        if (name.use == ExpressUse::Type) {
            const auto result = useCheck(run, name.word, user, InverseRule);
            // Of a list its element is reported too.
            if (result.finding && type.isAggregate())
                run.boTake(*result.finding, SchemaReport::Element);
            referred = result.isFound ? run.pDeclared(name.word.text) : nullptr;
        } else if (name.use == ExpressUse::InverseFor && referred &&
                   referred->declaration->kind == Kind::Entity) {
            vInverseForCheck(run, user, name.word, *referred);
        }
    }
}

/// The finding about attributes that an entity redeclares although it does not inherit them.
Finding& noSupertypeFinding(SchemaRun& run, const Declared& entity, const User& user,
                            const ExpressWord& above) {
    auto key = std::to_string(&entity - run.declared.data()) + '\\' + SchemaRun::sMissingKey(above.text);
    if (auto* const before = run.pMissingBefore(key, above, "the entity of " + user.sShown()))
        return *before;
    auto& finding =
        run.add("E016", above,
                "the entity " + sNamed(above.text) + " is not a supertype of " + sOwner(*entity.declaration));
    finding.subject = user.sShown();
    run.vMissingKeep(std::move(key), finding);
    return finding;
}

void vRedeclaredCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member, const User& user,
                      const ExpressWord& above) {
    const bool isFound = useCheck(run, above, user, RedeclaredRule).isFound;
    const auto* const from = isFound ? run.pDeclared(above.text) : nullptr;
    if (!from || member.name.text.empty())
        return;
    const bool isAbove = run.isSupertype(*from, entity);
    if (isAbove && run.hasExplicitAttribute(*from, member.name.text))
        return;
    auto& finding = isAbove ? attributeFinding(run, {"E016", "declared again as", user}, member.name, *from)
                            : noSupertypeFinding(run, entity, user, above);
    run.boTake(finding, SchemaReport::Redeclared);
}

void vUniqueCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member) {
    const User user{*entity.declaration, &member};
    for (const auto& name : member.names) {
        const auto* const other = run.pDeclared(name.word.text);
        // SELF\Entity.Attribute names an entity too.
        if (run.hasAttribute(entity, name.word.text) || (other && other->declaration->kind == Kind::Entity))
            continue;
        attributeFinding(run, {UniqueCode, "used in the rule", user}, name.word, entity);
    }
}

void vMemberCheck(SchemaRun& run, const Declared& entity, const ExpressMember& member) {
    if (run.lostMembers.contains(&member))
        return;
    const User user{*entity.declaration, &member};
    if (member.kind == ExpressMemberKind::Unique)
        return vUniqueCheck(run, entity, member);
    if (member.kind == ExpressMemberKind::Inverse)
        return vInverseCheck(run, entity, member);
    // The library keeps derived attributes as text: what they are made of is never looked up.
    for (const auto& name : member.names) {
        if (name.use == ExpressUse::RedeclaredEntity && member.kind == ExpressMemberKind::Derived)
            vRedeclaredCheck(run, entity, member, user, name.word);
        else if (name.use == ExpressUse::Type && member.kind == ExpressMemberKind::Derived)
            useCheck(run, name.word, user, TypeRule);
    }
    if (member.kind == ExpressMemberKind::Attribute)
        vAttributeCheck(run, member, user);
}

/// How a declaration uses names.
class UseRules {
public:
    explicit UseRules(const ExpressDeclaration& declaration) :
        isType_(declaration.kind == Kind::Type),
        statement_(declaration.text.substr(0, declaration.text.find(';'))) {}

    /// Null for names that are looked up elsewhere.
    const UseRule* pOf(ExpressUse use) {
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
            return isType_ && statement_.isAggregate() ? &ElementTypeRule : &UnderlyingRule;
        default:
            return nullptr;
        }
    }

private:
    bool isType_;
    TypeText statement_;
};

/// `declared` says what it is: "the name \"Wall\"".
Finding& repetitionAdd(SchemaRun& run, const ExpressWord& word, const ExpressWord& first,
                       const std::string& declared, Severity severity) {
    auto& finding = run.add("E010", word, declared + " is declared twice");
    finding.severity = severity;
    finding.subject = std::string(word.text);
    run.vNoteAt(finding, first, "first declared here");
    return finding;
}

/// Names in a list of one declaration, each of which may be there once.
class Repetitions {
public:
    explicit Repetitions(SchemaRun& run) : run_(run) {}

    /// Begins with another list, of at most that many names.
    void vBegin(std::size_t count) {
        seen_.clear();
        seen_.reserve(count);
        index_.vClear(count);
        last_ = {};
    }

    /// `what` begins the message: "the attribute". `owner` has it. `member` is the one of that name, null for
    /// other names: when a statement of several is there twice, all of them are one finding.
    void vAdd(const ExpressWord& word, std::string_view what, const ExpressDeclaration& owner,
              Severity severity, const ExpressMember* member = nullptr) {
        const auto isSame = [&](std::size_t number) {
            return SameIgnoringCase()(seen_[number].word.text, word.text);
        };
        const auto number = index_.add(HashIgnoringCase()(word.text), seen_.size(), isSame);
        if (number == seen_.size())
            return seen_.push_back({word, member});
        if (word.text.empty())
            return;
        const auto first = seen_[number];
        if (isRepeatedWith(member, first.member)) {
            run_.vNoteAt(*last_.finding, word,
                         sNamed(word.text) + " of the same statement is declared twice too");
            return;
        }
        auto& finding =
            repetitionAdd(run_, word, first.word,
                          std::string(what) + ' ' + sNamed(word.text) + " of " + sOwner(owner), severity);
        last_ = {member, first.member, &finding};
    }

private:
    struct First {
        ExpressWord word;
        const ExpressMember* member;
    };
    struct Last {
        const ExpressMember* member = nullptr;
        const ExpressMember* first = nullptr;
        Finding* finding = nullptr;
    };

    bool isRepeatedWith(const ExpressMember* member, const ExpressMember* first) const {
        return member && first && last_.member && last_.first && isSameStatement(*member, *last_.member) &&
               isSameStatement(*first, *last_.first);
    }

    SchemaRun& run_;
    std::vector<First> seen_;
    NameIndex index_;
    Last last_;
};

bool isRedeclared(const ExpressMember& member) {
    return !member.names.empty() && member.names.front().use == ExpressUse::RedeclaredEntity;
}

/// The memory of one declaration serves the next one too.
class RepetitionsInDeclarations {
public:
    explicit RepetitionsInDeclarations(SchemaRun& run) : listed_(run), attributes_(run), labels_(run) {}

    void vCheck(const ExpressDeclaration& declaration) {
        listed_.vBegin(declaration.names.size());
        attributes_.vBegin(declaration.members.size());
        labels_.vBegin(declaration.members.size());
        for (const auto& name : declaration.names) {
            if (name.use == ExpressUse::EnumerationItem)
                listed_.vAdd(name.word, "the item", declaration, Severity::Error);
            else if (name.use == ExpressUse::SelectMember)
                listed_.vAdd(name.word, "the member", declaration, Severity::Warning);
        }
        for (const auto& member : declaration.members) {
            if (member.kind > ExpressMemberKind::Derived)
                labels_.vAdd(member.name, "the rule", declaration, Severity::Warning);
            else if (!isRedeclared(member))
                attributes_.vAdd(member.name, "the attribute", declaration, Severity::Error, &member);
        }
    }

private:
    Repetitions listed_;
    Repetitions attributes_;
    Repetitions labels_;
};

} // namespace

void vNamesDeclaredTwiceCheck(SchemaRun& run) {
    RepetitionsInDeclarations inside(run);
    for (const auto& declared : run.declared) {
        const auto& declaration = *declared.declaration;
        const auto& name = declaration.name;
        // The run knows the first declaration of each name.
        const auto* const first = name.text.empty() ? nullptr : run.pDeclared(name.text);
        if (first && first != &declared)
            repetitionAdd(run, name, first->declaration->name, "the name " + sNamed(name.text),
                          Severity::Error);
        inside.vCheck(declaration);
    }
}

void vUsedNamesCheck(SchemaRun& run) {
    for (const auto& declared : run.declared) {
        const auto& declaration = *declared.declaration;
        const User user{declaration};
        UseRules rules(declaration);
        for (const auto& name : declaration.names) {
            if (const auto* const use = rules.pOf(name.use))
                useCheck(run, name.word, user, *use);
        }
        if (declaration.kind != Kind::Entity)
            continue;
        for (const auto& member : declaration.members)
            vMemberCheck(run, declared, member);
    }
}

} // namespace kiv::kit
