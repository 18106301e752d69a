/// @file
/// How the rules look at one document and add what they find.
///
///     void vNamesCheck(RuleRun& run) {
///         for (const auto& member : run.outline.members)
///             if (run.outline.memberName(member).empty())
///                 run.add("N002", member.element, "the property has no name")
///                     .vNote("\"Name\" identifies a property within its set");
///     }
///
/// Private to the kit.
///
/// Ownership: refers to the document, its outline and the schemas, which outlive it.
/// Threads:   each run is used by one thread.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/SetOutline.h"
#include "Kit/Findings/SetVocabulary.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Findings/SetCheckContext.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kiv::kit {

struct LegalMatch;
struct SetDocument;

/// What a finding is about in the document; what the library reports of the same thing becomes a note of it.
struct FindingSubject {
    XmlIndex element = NoXmlElement;
    /// Null for the element itself or its text.
    const XmlAttribute* attribute = nullptr;

    friend bool operator==(const FindingSubject&, const FindingSubject&) = default;
};

/// A finding on its way, with what it is about.
struct FindingDraft {
    Finding finding;
    FindingSubject subject;
    /// False once an edit has no known place.
    bool isMendable = true;

    FindingDraft& vNote(std::string message);
    /// Refers to another place of the document.
    FindingDraft& vNoteAt(std::string message, TextPosition position);
    /// Offers to replace these bytes; without effect when they are unknown, and then no edit of the finding
    /// is offered.
    FindingDraft& vEdit(const ByteRange& bytes, std::string_view text);
    FindingDraft& vSubject(std::string subject);
    FindingDraft& vSeverity(Severity severity);
};

/// One document, and the findings in it.
///
/// Per code, and in all, a document has a limited number of findings (`maxFindingsPerCode`, `maxFindings`):
/// what comes after them is counted and not kept.
class RuleRun {
public:
    /// More findings of one code in one document say nothing new, and hostile documents have millions.
    static constexpr std::size_t maxFindingsPerCode = 10'000;
    static constexpr std::size_t maxFindings = 100'000;
    /// Longer values are cut in messages.
    static constexpr std::size_t maxQuotedSize = 120;

    RuleRun(const SetDocument& checked, const SetOutline& parts, const SetCheckContext& against);
    RuleRun(const RuleRun&) = delete;
    RuleRun& operator=(const RuleRun&) = delete;

    const SetDocument& document;
    const SetOutline& outline;
    const XmlPositions& xml;
    const SetCheckContext& context;
    const ifc::def::schema::Schema& schema;
    const SetVocabulary vocabulary;

    /// A finding at the name of an element; the severity is that of the rule. The result is valid until the
    /// next is added.
    FindingDraft& add(std::string_view code, XmlIndex element, std::string message);
    /// At the text of an element, or its name when it has no text.
    FindingDraft& addAtText(std::string_view code, XmlIndex element, std::string message);
    /// At the value of an attribute, or its name when the value is empty.
    FindingDraft& addAtValue(std::string_view code, XmlIndex element, const XmlAttribute& attribute,
                             std::string message);
    /// At the name of an attribute.
    FindingDraft& addAtAttribute(std::string_view code, XmlIndex element, const XmlAttribute& attribute,
                                 std::string message);

    /// Takes a finding whose code and place are set, within the limits.
    FindingDraft& draftTake(FindingDraft draft);

    /// Notes that what belongs in the element is there in a wrong way, and is found as such: to miss it would
    /// be the same mistake again.
    void vMisplacedNote(XmlIndex element) { misplaced_.insert(element); }
    bool boMisplaced(XmlIndex element) const { return misplaced_.contains(element); }

    /// Whether there is nothing inside, and what belongs there is an attribute or text.
    bool boElsewhere(XmlIndex element) const {
        return xml.getElement(element).firstChild == NoXmlElement && boMisplaced(element);
    }

    /// Notes that there are several of the element where one counts: what is wrong with one of them is the
    /// same mistake.
    void vRepeatedNote(XmlIndex element) { repeated_.insert(element); }
    bool boRepeated(XmlIndex element) const { return repeated_.contains(element); }

    /// Notes that there is text in the element where elements belong.
    void vStrayTextNote(XmlIndex element) { strayTexts_.insert(element); }
    bool boStrayText(XmlIndex element) const { return strayTexts_.contains(element); }

    /// Notes that the finding about the one element is about the other as well.
    void vJoin(XmlIndex element, XmlIndex found) { joined_.emplace(element, found); }
    /// The subject of the finding that is about this one as well; the same when there is none.
    FindingSubject joinedWith(const FindingSubject& subject) const;

    /// The last finding, when it is about the element or an attribute of it; otherwise null.
    FindingDraft* pLastOf(XmlIndex element);

    std::vector<FindingDraft>& getDrafts() { return drafts_; }

    /// For tables that live no longer than the run, which returns all of the memory at the end.
    std::pmr::memory_resource* pMemory() { return &memory_; }

private:
    FindingDraft& draftAdd(std::string_view code, FindingSubject subject, TextPosition position,
                           std::string message);

    // Enough for the tables of usual documents. First, so that it is given back last.
    std::array<std::byte, 16384> bytes_;
    std::pmr::monotonic_buffer_resource memory_{bytes_.data(), bytes_.size()};
    std::vector<FindingDraft> drafts_;
    std::unordered_map<std::string_view, std::size_t> counts_;
    std::unordered_set<XmlIndex> misplaced_;
    std::unordered_set<XmlIndex> strayTexts_;
    std::unordered_set<XmlIndex> repeated_;
    std::unordered_map<XmlIndex, XmlIndex> joined_;
    /// Takes what is over the limits.
    FindingDraft surplus_;
};

/// At most `size` bytes of a text, without cutting a code point.
std::string_view cut(std::string_view text, std::size_t size);

/// The value in quotes, cut when it is very long: "\"IfcWal\"".
std::string sQuoted(std::string_view value);

/// The name of an element, with its prefix, in quotes.
std::string sNameQuoted(const XmlElement& element);

/// The note about a name that is probably another one: how to write it, or a question.
std::string sMeant(const LegalMatch& match);

/// "\"A\", \"B\" and \"C\""; after `limit` of them "and 12 more".
std::string sQuotedList(const std::vector<std::string_view>& values, std::size_t limit = 12);

/// The same of that many values, of which the first are given.
std::string sQuotedFirst(std::span<const std::string_view> first, std::size_t count);

} // namespace kiv::kit
