/// @file
/// How the rules look at one schema and add what they find.
///
///     void vTypesCheck(SchemaRun& run) {
///         for (const auto& declared : run.declared)
///             if (declared.isLost())
///                 run.add("E002", declared.declaration->name, "...");
///     }
///
/// Private to the kit.
///
/// Ownership: refers to the text, the schema and the assertions, which outlive it.
/// Threads:   each run is used by one thread.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Positions/SchemaLines.h"
#include "Kit/Text/NameIndex.h"
#include "Kit/Text/NameKeys.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Documents/Assertion.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Positions/ExpressPositions.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kiv::kit {

/// The upper-cased name.
std::string sUpperWord(std::string_view word);

/// In quotes, cut when it is very long: "\"IfcWal\"".
std::string sNamed(std::string_view name);

/// "ENTITY".
std::string_view keywordOf(ExpressDeclarationKind kind);

/// Whose something is: its name in quotes, or "the ENTITY without a name".
std::string sOwner(const ExpressDeclaration& declaration);

/// "\"Wall.Height\"", or "\"Height\" of the ENTITY without a name".
std::string sQualified(const ExpressDeclaration& declaration, std::string_view member);

/// Whether names may have it.
bool isNameLetter(char letter);

/// "did you mean \"Wall\"?"
std::string sMeant(std::string_view name);

/// Whether both are attributes of one statement: "Width, Height : REAL;".
bool isSameStatement(const ExpressMember& left, const ExpressMember& right);

/// A declaration of the text, with what the library made of it.
struct Declared {
    const ExpressDeclaration* declaration = nullptr;
    /// Null when the library does not begin a declaration here.
    const SchemaStatement* statement = nullptr;
    /// Null when the library has no object of this name from here.
    const ifc::def::schema::ObjectBase* object = nullptr;
    /// The finding that says why it is lost or misread, which then also explains what follows from that.
    Finding* finding = nullptr;
    /// IFC has one; with more, nothing is known of what is inherited.
    static constexpr std::size_t MaxSupertypes = 4;
    /// Its supertypes, as indices of declarations.
    std::array<std::uint32_t, MaxSupertypes> supertypeList{};
    std::uint8_t supertypeCount = 0;
    /// All supertypes are declared, and not too many.
    bool isLineKnown = true;

    bool isLost() const { return object == nullptr; }
    std::span<const std::uint32_t> supertypes() const {
        return std::span(supertypeList).first(supertypeCount);
    }
};

/// A declaration without the line that begins it, or without the name in it.
struct Headless {
    /// Says so.
    Finding* finding = nullptr;
    bool isEntity = false;
    /// Its end is one of those where nothing is open.
    bool hasStrayEnd = false;
};

/// What the library reports of a schema.
enum class SchemaReport : std::uint8_t {
    Supertype,
    Subtype,
    Inverse,
    Redeclared,
    Underlying,
    SelectMember,
    Element,
    Rule,
    Other,
    Count
};

/// One schema, and the findings in it.
class SchemaRun {
public:
    static constexpr std::size_t maxFindingsPerCode = 1'000;
    static constexpr std::size_t maxNotes = 10;
    /// Of the other places in which a missing name is used, this many are listed.
    static constexpr std::size_t maxPlaces = 5;

    SchemaRun(const ifc::def::schema::Schema* readSchema, std::span<const Assertion> reports,
              std::string_view wholeText, std::string shownPath);
    SchemaRun(const SchemaRun&) = delete;
    SchemaRun& operator=(const SchemaRun&) = delete;

    const ifc::def::schema::Schema* schema;
    std::string_view text;
    ExpressPositions positions;
    SchemaLines lines;
    /// The finding about a comment that nothing closes, which then also explains what is misread after it;
    /// null when there is none.
    Finding* pOpenComment = nullptr;
    /// Members that are not read: what they name is never looked up.
    std::unordered_set<const ExpressMember*> lostMembers;
    /// Findings about a ":" too many, by the end of the name before it: that this is no type is the same
    /// mistake.
    std::unordered_map<const char*, Finding*> surplusColons;
    /// Rules that cannot be read, with the findings that say so: what is unknown in them may be why.
    std::unordered_map<const ExpressMember*, Finding*> unreadRules;
    std::vector<Headless> headless;
    /// The finding about a schema without END_SCHEMA, of which a cut-off file is the likely reason; null when
    /// there is none.
    Finding* pSchemaEndMissing = nullptr;
    /// The last declaration lacks its end too.
    bool isCutInside = false;
    /// The declarations of the last schema, in the order of the text.
    std::vector<Declared> declared;

    /// A finding of the rule with that code. It stays where it is until the run ends.
    Finding& add(std::string_view code, const TextPosition& position, std::string message);
    Finding& add(std::string_view code, const ExpressWord& word, std::string message) {
        return add(code, positionOf(word), std::move(message));
    }
    TextPosition positionOf(const ExpressWord& word) const { return positions.positionOf(word); }
    /// False for what is over the limit.
    bool isKept(const Finding& finding) const { return &finding != &surplus_; }
    void vNoteAt(Finding& finding, const TextPosition& position, std::string message) const;
    void vNoteAt(Finding& finding, const ExpressWord& word, std::string message) const {
        vNoteAt(finding, positionOf(word), std::move(message));
    }
    /// Whether names are still offered: each costs a look at all of them, so that only the first findings
    /// have some.
    bool isNearestOffered() const { return nearestLeft_ != 0; }
    /// Offers the name of these kinds, or of the further names, that is most like `name`.
    void vNearestNote(Finding& finding, std::string_view name,
                      std::initializer_list<ExpressDeclarationKind> kinds,
                      std::vector<std::string_view> names = {});
    /// Offers the attribute of an entity or its supertypes that is most like `name`, or the name of these
    /// kinds.
    void vNearestAttributeNote(Finding& finding, std::string_view name, const Declared& entity,
                               std::initializer_list<ExpressDeclarationKind> kinds = {});

    /// The first declaration of that name, in any letter case; null when there is none.
    Declared* pDeclared(std::string_view name);
    /// Whether anything has that name, be it only for the library.
    bool isKnown(std::string_view name);
    /// Whether the text ends with that word of it, which may be a part of a longer one.
    bool isCutOff(std::string_view word) const;
    /// Before it is asked whether any declaration has an item or an attribute: not all runs do.
    void vPartNamesJoin();
    /// Whether any enumeration has that item.
    bool isItem(std::string_view name) const { return partNumber(items_, name) != NameIndex::None; }
    /// Whether an entity has an attribute of that name, from its supertypes too, or an enumeration has that
    /// item. Also true when that cannot be known.
    bool hasAttribute(const Declared& entity, std::string_view name) const;
    /// Whether any entity has an attribute of that name. Also true when that cannot be known.
    bool isAttribute(std::string_view name) const {
        return !areLinesKnown_ || partNumber(attributeNames_, name) != NameIndex::None;
    }
    /// The same for explicit attributes of exactly that name, letter case included.
    bool hasExplicitAttribute(const Declared& entity, std::string_view name) const;

    /// Names that are missing: each has one finding, with the code and at the place of its first use. Its
    /// other uses are notes of that, whatever code they would have had: to declare the name, or to mend the
    /// declaration that it was meant to be, mends them all.
    ///
    /// Keys compare names of the schema, and those that belong to an entity or a type: items, and attributes,
    /// which all entities share whose topmost supertype is the same, as one declaration can serve them all.
    static std::string sMissingKey(std::string_view name) { return sUpperWord(name); }
    /// For an attribute of an entity that is not known.
    static std::string sMissingAttributeKey(std::string_view name) { return '.' + sUpperWord(name); }
    std::string sMissingKey(const Declared& owner, std::string_view name) const;
    /// The finding about a missing name that was used before, of which this use becomes a note: "it is also "
    /// with what it is used for. Null at the first use.
    Finding* pMissingBefore(const std::string& key, const ExpressWord& word, const std::string& use);
    /// The finding is about the first use.
    void vMissingKeep(std::string key, Finding& finding);
    /// The finding is about a name of that declaration, or one in it, with something that names do not have.
    /// Uses of the name without that become notes of the finding, unless that is declared too.
    void vMeantKeep(const Declared& owner, std::string_view name, Finding& finding);
    /// Says of each how many uses are not listed; once there are no more.
    void vMissingCount();
    /// The finding about a name of the schema, when it is the only one that is missing; otherwise null. Those
    /// that look like typing mistakes do not count: they are used once and offer a name of about the length.
    Finding* pOnlyMissing();

    /// Whether one entity is above another, or is the same. Also true when that cannot be known.
    bool isSupertype(const Declared& above, const Declared& entity) const;

    /// Findings about parts that are passed over, from one place to another, are what came of this one: they
    /// become notes of it, which then is an error.
    void vConsequencesTake(Finding& finding, const TextPosition& begin, const TextPosition& end);

    /// The other finding becomes the first notes of this one, but for the name that it offers.
    static void vFindingTake(Finding& finding, Finding& other);

    /// Makes the next report of that kind a note of the finding; false when there is none left.
    bool boTake(Finding& finding, SchemaReport report);
    /// The report of the rules with this text.
    bool boRuleTake(Finding& finding, std::string_view rules);
    /// What no finding has taken, but for repetitions of what one has.
    std::vector<const Assertion*> untaken() const;

    /// The finding that was added last; null when there is none.
    Finding* pLast() { return findings_.empty() ? nullptr : &findings_.back(); }
    /// The first finding about something that is read as something else; null when there is none.
    Finding* pMisreading();
    static void vReportNote(Finding& finding, const Assertion& record);

    /// Where something is found, in the order of the text.
    std::vector<TextPosition> findingPlaces() const;

    /// What says that a name is not declared, in the order of the text.
    std::vector<Finding*> missingFindings();

    std::vector<Finding> takeFindings();

private:
    /// An attribute of an entity, or an item of an enumeration.
    struct Part {
        const ExpressWord* name = nullptr;
        /// The index of the declaration that has it.
        std::uint32_t declaration = 0;
        bool isItem = false;
        bool isExplicit = false;
    };

    struct Missing {
        Finding* finding = nullptr;
        /// Besides the first.
        std::size_t useCount = 0;
        /// Of the last use that is listed.
        std::size_t lastNote = 0;
    };

    void vDeclaredJoin(std::span<const ExpressDeclaration> declarations);
    template <class Take>
    void vPartsWalk(Take take) const;
    void vPartsJoin();
    /// Which numbers are those of the name: of a declaration, and of parts.
    auto isNamed(std::string_view name) const {
        return [this, name](std::size_t number) {
            return SameIgnoringCase()(declared[number].declaration->name.text, name);
        };
    }
    auto isPartNamed(std::string_view name) const {
        return
            [this, name](std::size_t number) { return SameIgnoringCase()(parts_[number].name->text, name); };
    }
    auto isOwnPart(std::uint32_t declaration, std::string_view name) const {
        return [this, declaration, name](std::size_t number) {
            return parts_[number].declaration == declaration &&
                   SameIgnoringCase()(parts_[number].name->text, name);
        };
    }
    auto isOwnExplicit(std::uint32_t declaration, std::string_view name) const {
        return [this, declaration, name](std::size_t number) {
            return parts_[number].declaration == declaration && parts_[number].name->text == name;
        };
    }
    std::size_t partNumber(const NameIndex& index, std::string_view name) const;
    bool hasOwnPart(const Declared& entity, std::string_view name) const;
    bool hasOwnExplicit(const Declared& entity, std::string_view name) const;
    void vReportsSort();
    void vReportTake(Finding& finding, std::size_t index);
    void vSupertypesJoin();
    using HasOwn = bool (SchemaRun::*)(const Declared&, std::string_view) const;
    /// Whether the entity or one above it has the part, or that cannot be known.
    bool hasPart(HasOwn hasOwn, const Declared& entity, std::string_view name) const;
    /// The entity and those above it, not more than a limit.
    std::vector<const Declared*> lineOf(const Declared& entity, bool& isWhole) const;
    void vNearestOfNote(Finding& finding, std::string_view name, std::span<const std::string_view> names);

    std::string path_;
    std::deque<Finding> findings_;
    std::unordered_map<std::string_view, std::size_t> counts_;
    // Takes what is over the limit.
    Finding surplus_;
    NameIndex byName_;
    // All supertypes are declared.
    bool areLinesKnown_ = true;
    // In the order of the declarations.
    std::vector<Part> parts_;
    // Numbers of parts: by their names, and by the declaration and the name; of explicit attributes the
    // letter case counts.
    NameIndex attributeNames_;
    NameIndex items_;
    NameIndex ownParts_;
    NameIndex ownExplicits_;
    std::unordered_map<std::string, Missing> missing_;
    std::span<const Assertion> reports_;
    std::vector<bool> isTaken_;
    std::array<std::deque<std::size_t>, static_cast<std::size_t>(SchemaReport::Count)> reportsOf_;
    // By the text of the clause.
    std::unordered_map<std::string_view, std::size_t> ruleReports_;
    std::size_t nearestLeft_;
};

} // namespace kiv::kit
