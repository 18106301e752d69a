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
#include "kiv/Host/Id/KivId.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Findings/Rule.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
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
    using Enumeration = std::map<std::vector<std::string>, std::vector<Spot>>;
    struct GuidUse {
        Spot spot;
        std::string name;
        bool isSet = false;
    };
    struct GuidRepeat {
        GuidUse use;
        Spot first;
    };
    /// The type of a member as a text, and the names of the schema in it.
    struct MemberType {
        std::string text;
        std::vector<std::string> names;
    };
    /// A member whose type may be unknown.
    struct Doubtful {
        std::string key;
        MemberType type;
        Spot spot;
    };
    /// The places of each type; letter case is a mistake of another kind.
    using Types = std::map<std::string, std::vector<Spot>, LessIgnoringCase>;
    class Collector;

    static std::vector<MemberType> memberTypesOf(const SetOutline& outline);
    void vSetAdd(const SetOutline& outline);
    void vMembersAdd(const SetOutline& outline, bool mayHaveUnknownType);
    void vTypeAdd(std::string key, MemberType type, const Spot& spot, bool mayHaveUnknownType);
    void vEnumerationAdd(const SetOutline& outline, const MemberOutline& member);
    /// Of the set when `member` is null.
    void vGuidAdd(const SetOutline& outline, const MemberOutline* member);
    void vSpellingAdd(char kind, std::string_view name, TextPosition position);

    void vSetsFind(Collector& findings) const;
    void vEnumerationsFind(Collector& findings) const;
    void vSpellingsFind(Collector& findings) const;
    void vGuidsFind(Collector& findings) const;
    void vGuidsOfOneFind(Collector& findings, std::span<const GuidRepeat* const> repeats) const;
    void vTypesFind(Collector& findings) const;
    bool boIsKnown(const MemberType& type) const;

    std::vector<Document> documents_;
    std::unordered_map<std::string, std::vector<Named>> sets_;
    // By context and name.
    std::unordered_map<std::string, Enumeration> enumerations_;
    // By the same keys, as they were written first.
    std::unordered_map<std::string, std::string> enumerationNames_;
    // By the upper-cased name, after a letter for its kind.
    std::unordered_map<std::string, std::map<std::string, Spot, std::less<>>> spellings_;
    // The first use of each.
    std::map<Guid, Spot> guids_;
    std::vector<GuidRepeat> guidRepeats_;
    // By name, after a letter for its kind.
    std::unordered_map<std::string, Types> types_;
    std::vector<Doubtful> doubtful_;
    // The types, upper-cased, of documents in which all are known.
    std::unordered_set<std::string> knownTypes_;
};

} // namespace kiv::kit
