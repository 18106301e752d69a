/// @file
/// What is wrong between documents: family X, a GUID in two documents, and one name with different types.
///
/// Private to the kit.
///
///     AcrossRun run;
///     run.vAdd(document.path, outline, context);
///     const auto findings = run.getFindings();
///
/// Cost: that of looking at each name once, and of sorting what was found.
///
/// Ownership: keeps copies of names, GUIDs, paths and places, most of them in memory of its own, all of which
///            it returns at the end.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/SetOutline.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/NameKeys.h"
#include "kiv/Host/Id/KivId.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Findings/Rule.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kiv::kit {

std::span<const Rule> getAcrossRules();
/// Of family G: those between documents.
std::span<const Rule> getAcrossGuidRules();

struct LessIgnoringCase {
    bool operator()(std::string_view left, std::string_view right) const {
        return std::ranges::lexicographical_compare(left, right, {}, getLower, getLower);
    }
};

class AcrossRun {
public:
    /// Findings of one code.
    static constexpr std::size_t maxFindingsPerCode = 10'000;

    AcrossRun() = default;
    AcrossRun(const AcrossRun&) = delete;
    AcrossRun& operator=(const AcrossRun&) = delete;

    /// What is known to be wrong with the types of a document.
    struct TypeFaults {
        /// They may name one that is unknown: they are compared only when other documents have them too.
        bool mayBeUnknown = false;
        /// In the order of the text. The types of members that have one inside are not compared.
        std::vector<TextPosition> places;
    };

    /// `path` is what the document is called in findings.
    void vAdd(std::string_view path, const SetOutline& outline, std::string_view context,
              const TypeFaults& faults);
    void vAdd(std::string_view path, const SetOutline& outline, std::string_view context) {
        vAdd(path, outline, context, {});
    }

    /// In the order of paths, lines, columns and codes.
    std::vector<Finding> getFindings() const;

private:
    /// A place in one of the documents that were added.
    struct Spot {
        std::size_t document = 0;
        TextPosition position;
    };
    struct Document {
        std::string_view path;
        std::string_view context;
        std::string_view shownName;
        /// Upper-cased.
        std::string_view setName;
    };
    struct Named {
        Spot spot;
        std::string_view name;
    };
    using Spots = std::pmr::vector<Spot>;
    using Items = std::pmr::vector<std::string_view>;
    /// The places of an enumeration by its items, in alphabetical order.
    struct Enumeration {
        /// As it was written first.
        std::string_view name;
        std::pmr::map<Items, Spots> variants;
    };
    struct GuidUse {
        Spot spot;
        std::string_view name;
        bool isSet = false;
    };
    struct GuidRepeat {
        GuidUse use;
        Spot first;
    };
    /// The type of a member as a text, and where the names of the schema in it are among those of its
    /// document. Empty where a type is missing or unknown.
    struct MemberType {
        std::pmr::string text;
        std::size_t firstName = 0;
        std::size_t nameCount = 0;
    };
    struct MemberTypes {
        std::pmr::vector<MemberType> types;
        std::pmr::vector<std::string_view> names;

        std::span<const std::string_view> namesOf(const MemberType& type) const {
            return std::span(names).subspan(type.firstName, type.nameCount);
        }
    };
    /// The places of each type that members of one name have; letter case is a mistake of another kind.
    using Variants = std::pmr::map<std::string_view, Spots, LessIgnoringCase>;
    /// By name.
    using Types = std::pmr::unordered_map<std::string_view, Variants>;
    /// A member with a name and a type, of the document that is being added.
    struct TypedMember {
        bool isQuantity = false;
        /// As it is kept.
        std::string_view name;
        std::string_view text;
        std::span<const std::string_view> typeNames;
        Spot spot;
    };
    /// A member whose type may be unknown.
    struct Doubtful {
        bool isQuantity = false;
        std::string_view name;
        std::string_view text;
        Items typeNames;
        Spot spot;
    };
    /// The place of the spelling that was met first, and the other spellings.
    struct Spellings {
        Spot first;
        std::map<std::string_view, Spot> others;
    };
    using Names = std::pmr::unordered_map<std::string_view, Spellings, HashIgnoringCase, SameIgnoringCase>;
    struct GuidHash {
        std::size_t operator()(const Guid& guid) const;
    };
    class Collector;

    /// A copy that lives as long as this.
    std::string_view kept(std::string_view text);

    static MemberTypes memberTypesOf(const SetOutline& outline, std::pmr::memory_resource* memory);
    static std::vector<bool> repeatedMembers(const SetOutline& outline, const MemberTypes& types);
    void vSetAdd(const SetOutline& outline);
    /// Whether there is one inside the member.
    static bool isFaulty(const SetOutline& outline, const MemberOutline& member, const TypeFaults& faults);
    void vMembersAdd(const SetOutline& outline, const TypeFaults& faults);
    void vDoubtfulAdd(const TypedMember& member);
    void vTypeAdd(const TypedMember& member);
    /// `areItemsRight` says whether they are to be compared.
    void vEnumerationAdd(const SetOutline& outline, const MemberOutline& member, bool areItemsRight);
    /// Of the set when `member` is null.
    void vGuidAdd(const SetOutline& outline, const MemberOutline* member);
    /// The name as it is kept.
    std::string_view spellingAdd(Names& names, std::string_view name, TextPosition position);

    void vSetsFind(Collector& findings) const;
    void vEnumerationsFind(Collector& findings) const;
    static void vSpellingsFind(Collector& findings, const Names& names, std::string_view what);
    void vGuidsFind(Collector& findings) const;
    void vGuidsOfOneFind(Collector& findings, std::span<const GuidRepeat* const> repeats) const;
    void vTypesFind(Collector& findings, bool isQuantity) const;
    static void vVariantsFind(Collector& findings, std::string_view name, const Variants& variants);
    bool boIsKnown(const Doubtful& member) const;

    // First, so that it is given back last.
    std::pmr::monotonic_buffer_resource memory_;
    std::vector<Document> documents_;
    std::pmr::unordered_map<std::string_view, std::pmr::vector<Named>> sets_{&memory_};
    // By context and name.
    std::pmr::unordered_map<std::string_view, Enumeration> enumerations_{&memory_};
    Names memberNames_{&memory_};
    Names enumerationNames_{&memory_};
    // The first use of each.
    std::pmr::unordered_map<Guid, Spot, GuidHash> guids_{&memory_};
    std::vector<GuidRepeat> guidRepeats_;
    // A property is no quantity, whatever both are called.
    Types propertyTypes_{&memory_};
    Types quantityTypes_{&memory_};
    std::vector<Doubtful> doubtful_;
    // The types of documents in which all are known.
    std::pmr::unordered_set<std::string_view, HashIgnoringCase, SameIgnoringCase> knownTypes_{&memory_};
};

} // namespace kiv::kit
