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
/// Ownership: keeps copies of names, GUIDs, paths and places.
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
#include <functional>
#include <map>
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

/// With which views find texts.
struct TextHash {
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

class AcrossRun {
public:
    /// Findings of one code.
    static constexpr std::size_t maxFindingsPerCode = 10'000;

    /// `path` is what the document is called in findings. Types of a document that may name an
    /// unknown one are compared only when other documents have them too.
    void vAdd(std::string_view path, const SetOutline& outline, std::string_view context,
              bool mayHaveUnknownType = false);

    /// In the order of paths, lines, columns and codes.
    std::vector<Finding> getFindings() const;

private:
    /// A place in one of the documents that were added.
    struct Spot {
        std::size_t document = 0;
        TextPosition position;
    };
    struct Document {
        std::string path;
        std::string context;
        std::string shownName;
        /// Upper-cased.
        std::string setName;
    };
    struct Named {
        Spot spot;
        std::string name;
    };
    /// The places of an enumeration by its items, in alphabetical order.
    struct Enumeration {
        /// As it was written first.
        std::string name;
        std::map<std::vector<std::string>, std::vector<Spot>> variants;
    };
    struct GuidUse {
        Spot spot;
        std::string name;
        bool isSet = false;
    };
    struct GuidRepeat {
        GuidUse use;
        Spot first;
    };
    /// The type of a member as a text, and where the names of the schema in it are among those of its
    /// document. Empty where a type is missing or unknown.
    struct MemberType {
        std::string text;
        std::size_t firstName = 0;
        std::size_t nameCount = 0;
    };
    struct MemberTypes {
        std::vector<MemberType> types;
        std::vector<std::string_view> names;

        std::span<const std::string_view> namesOf(const MemberType& type) const {
            return std::span(names).subspan(type.firstName, type.nameCount);
        }
    };
    /// The places of each type that members of one name have; letter case is a mistake of another kind.
    using Variants = std::map<std::string, std::vector<Spot>, LessIgnoringCase>;
    /// By name.
    using Types = std::unordered_map<std::string, Variants, TextHash, std::equal_to<>>;
    /// A member whose type may be unknown.
    struct Doubtful {
        bool isQuantity = false;
        std::string name;
        std::string text;
        std::vector<std::string> names;
        Spot spot;
    };
    /// The place of the spelling that was met first, and the other spellings.
    struct Spellings {
        Spot first;
        std::map<std::string, Spot, std::less<>> others;
    };
    using Names = std::unordered_map<std::string, Spellings, HashIgnoringCase, SameIgnoringCase>;
    class Collector;

    static MemberTypes memberTypesOf(const SetOutline& outline);
    static std::vector<bool> repeatedMembers(const SetOutline& outline, const MemberTypes& types);
    void vSetAdd(const SetOutline& outline);
    void vMembersAdd(const SetOutline& outline, bool mayHaveUnknownType);
    void vEnumerationAdd(const SetOutline& outline, const MemberOutline& member);
    /// Of the set when `member` is null.
    void vGuidAdd(const SetOutline& outline, const MemberOutline* member);
    void vSpellingAdd(Names& names, std::string_view name, TextPosition position);

    void vSetsFind(Collector& findings) const;
    void vEnumerationsFind(Collector& findings) const;
    static void vSpellingsFind(Collector& findings, const Names& names, std::string_view what);
    void vGuidsFind(Collector& findings) const;
    void vGuidsOfOneFind(Collector& findings, std::span<const GuidRepeat* const> repeats) const;
    void vTypesFind(Collector& findings, bool isQuantity) const;
    static void vVariantsFind(Collector& findings, std::string_view name, const Variants& variants);
    bool boIsKnown(const Doubtful& member) const;

    std::vector<Document> documents_;
    std::unordered_map<std::string, std::vector<Named>> sets_;
    // By context and name.
    std::unordered_map<std::string, Enumeration> enumerations_;
    Names memberNames_;
    Names enumerationNames_;
    // The first use of each.
    std::map<Guid, Spot> guids_;
    std::vector<GuidRepeat> guidRepeats_;
    // A property is no quantity, whatever both are called.
    Types propertyTypes_;
    Types quantityTypes_;
    std::vector<Doubtful> doubtful_;
    // The types of documents in which all are known.
    std::unordered_set<std::string, HashIgnoringCase, SameIgnoringCase> knownTypes_;
};

} // namespace kiv::kit
