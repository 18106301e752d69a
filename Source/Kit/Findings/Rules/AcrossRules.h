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
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Findings/Rule.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kit {

std::span<const Rule> getAcrossRules();
/// Of family G: those between documents.
std::span<const Rule> getAcrossGuidRules();

class AcrossRun {
public:
    /// Findings of one code.
    static constexpr std::size_t maxFindingsPerCode = 10'000;

    /// `path` is what the document is called in findings.
    void vAdd(std::string_view path, const SetOutline& outline, std::string_view context);

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
    class Collector;

    void vSetAdd(const SetOutline& outline);
    void vMembersAdd(const SetOutline& outline);
    void vEnumerationAdd(const SetOutline& outline, const MemberOutline& member);
    void vGuidAdd(const SetOutline& outline, XmlIndex element, std::string name, bool isSet);
    void vSpellingAdd(char kind, std::string_view name, TextPosition position);

    void vSetsFind(Collector& findings) const;
    void vEnumerationsFind(Collector& findings) const;
    void vSpellingsFind(Collector& findings) const;
    void vGuidsFind(Collector& findings) const;
    void vTypesFind(Collector& findings) const;

    std::vector<Document> documents_;
    std::unordered_map<std::string, std::vector<Named>> sets_;
    // By context and name.
    std::unordered_map<std::string, Enumeration> enumerations_;
    // By the upper-cased name, after a letter for its kind.
    std::unordered_map<std::string, std::map<std::string, Spot, std::less<>>> spellings_;
    std::unordered_map<std::string, GuidUse> guids_;
    std::vector<GuidRepeat> guidRepeats_;
    // By name, then by type.
    std::unordered_map<std::string, std::map<std::string, std::vector<Spot>>> types_;
};

} // namespace kiv::kit
