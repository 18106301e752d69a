/// @file
/// Elements that are not known in their place: what each was probably meant to be, and which several are one
/// mistake.
///
/// Private to the kit.
///
///     UnknownElements unknown(run);
///     unknown.vUnreadCheck(element); // "PropertyTyp" is not known inside "PropertyDef"
///
/// Ownership: refers to the run.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/RuleRun.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kit {

class UnknownElements {
public:
    explicit UnknownElements(RuleRun& run) : run_(run), xml_(run.xml) {}

    /// An element that its parent does not know and that is not read. The parent is read.
    void vUnreadCheck(XmlIndex element);
    /// An element that its parent does not know, whether it is read all the same or not.
    void vUnknownAdd(XmlIndex element);

private:
    /// The unknown children of one element.
    struct Strays {
        /// For each legal child, a child of that name; and how many unknown ones were probably meant to be
        /// one.
        std::vector<XmlIndex> present;
        std::vector<std::size_t> meant;
        /// The element that was left out around unknown ones, and how many they are; null when none was.
        const ElementRule* leftOut = nullptr;
        std::size_t leftOutCount = 0;
        /// The first of those, the number of its finding, and how many others were added to that.
        XmlIndex first = NoXmlElement;
        std::size_t draft = 0;
        std::size_t joined = 0;
    };
    /// What an unknown element was probably meant to be.
    struct Meaning {
        /// A legal one.
        LegalMatch match;
        /// One that belongs elsewhere, and where that is; empty otherwise.
        std::string_view name;
        std::string_view owner;
    };

    const ElementRule* pRuleOf(XmlIndex element) const { return run_.vocabulary.pRuleOf(element); }
    bool isUnknown(XmlIndex element) const {
        const auto* rule = pRuleOf(element);
        return !rule || rule->name != xml_.getElement(element).name;
    }
    Strays& straysOf(XmlIndex parent);
    void vLeftOutFind(XmlIndex parent, Strays& strays) const;
    Meaning meaningOf(XmlIndex element);
    bool boContentFits(XmlIndex element, const ElementRule& rule) const;
    bool boIsLeftOver(XmlIndex element);
    void vFirstNote(XmlIndex element);
    void vJoin(XmlIndex element, const std::string& why);
    bool boIsOfOtherKind(XmlIndex element) const;
    void vLaterKindAdd(XmlIndex element, XmlIndex first, const ElementRule& parent);
    bool boIsAttributeOfParent(XmlIndex element) const;
    static std::string sPlaceOf(const Meaning& meaning, const ElementRule& parent);
    void vUnknownNoteAdd(FindingDraft& draft, XmlIndex element, const Meaning& meaning);
    void vBecomeNote(FindingDraft& draft, XmlIndex element, const LegalMatch& match);
    void vPrefixedAdd(XmlIndex element, const ElementRule& parent);
    void vKindAdd(XmlIndex element);

    RuleRun& run_;
    const XmlPositions& xml_;
    /// By the element that contains them.
    std::unordered_map<XmlIndex, Strays> strays_;
    std::size_t searches_ = 0;
};

} // namespace kiv::kit
