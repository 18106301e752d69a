#include "Kit/Findings/Rules/AcrossRules.h"

#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/SetVocabulary.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <tuple>
#include <utility>

namespace kiv::kit {

namespace {

constexpr std::size_t maxSharedNameSize = 250;
constexpr std::size_t maxTypeSize = 120;

std::string_view shownKindOf(PropertyKind kind) {
    switch (kind) {
    case PropertyKind::SingleValue:
        return "a single value";
    case PropertyKind::EnumeratedValue:
        return "an enumeration";
    case PropertyKind::BoundedValue:
        return "a bounded value";
    case PropertyKind::TableValue:
        return "a table";
    case PropertyKind::ReferenceValue:
        return "a reference";
    case PropertyKind::ListValue:
        return "a list";
    case PropertyKind::Complex:
        return "a complex property";
    case PropertyKind::None:
    case PropertyKind::Simple:
        break;
    }
    return {};
}

/// The name of an enumeration as readers keep it.
std::string_view enumerationName(std::string_view name) {
    constexpr std::string_view Prefix = "PEnum_";
    return name.starts_with(Prefix) ? name.substr(Prefix.size()) : name;
}

/// What most places have; of two variants, the one that was met first.
template <class Variants>
auto usualOf(const Variants& variants) {
    return std::ranges::min_element(variants, [](const auto& left, const auto& right) {
        const auto& a = left.second;
        const auto& b = right.second;
        return a.size() != b.size() ? a.size() > b.size() : a.front().document < b.front().document;
    });
}

/// The items that only the one list has, as a text; empty when there are none. Both lists are in order. Takes
/// time in proportion to the shorter list, as one that is long may be compared with many others.
std::string sOnly(const std::vector<std::string>& in, const std::vector<std::string>& notIn) {
    constexpr std::size_t maxShown = 12;
    const auto& shorter = in.size() < notIn.size() ? in : notIn;
    const auto& longer = in.size() < notIn.size() ? notIn : in;
    const auto common = std::ranges::count_if(
        shorter, [&](const std::string& item) { return std::ranges::binary_search(longer, item); });
    const auto count = in.size() - static_cast<std::size_t>(common);
    std::vector<std::string_view> shown;
    for (auto item = in.begin(); item != in.end() && shown.size() != std::min(count, maxShown); ++item) {
        if (!std::ranges::binary_search(notIn, *item))
            shown.emplace_back(*item);
    }
    return sQuotedFirst(shown, count);
}

/// For a message: hosts need not name contexts.
std::string sContext(std::string_view name) {
    return name.empty() ? "another context" : "the context " + sQuoted(name);
}

/// Whether a member has the name of one before it in its list, which is a mistake of its own.
class RepeatedMembers {
public:
    bool boTake(const MemberOutline& member, std::string_view name) {
        return !names_.emplace(member.owner, name).second;
    }

private:
    std::set<std::pair<std::int32_t, std::string_view>> names_;
};

} // namespace

/// Makes findings, up to the limit of each code.
class AcrossRun::Collector {
public:
    explicit Collector(const AcrossRun& run) : run_(run) {}

    Place placeOf(const Spot& spot) const { return {run_.documents_[spot.document].path, spot.position}; }

    Finding& add(std::string_view code, const Spot& spot, std::string message, std::string_view subject) {
        const auto* rule = pRuleFind(code);
        auto& finding = room(rule ? rule->code : std::string_view());
        finding.severity = rule ? rule->severity : Severity::Error;
        finding.message = std::move(message);
        finding.place = placeOf(spot);
        finding.subject = cut(subject, maxSharedNameSize);
        return finding;
    }

    std::vector<Finding> take() {
        std::ranges::sort(findings_, {}, [](const Finding& finding) {
            const auto& place = finding.place;
            return std::tie(place.path, place.position.line, place.position.column, finding.code,
                            finding.message);
        });
        return std::move(findings_);
    }

private:
    /// A new finding of that code; once the code has as many as it may have, one that is not kept.
    Finding& room(std::string_view code) {
        auto& count = counts_[code];
        if (count == maxFindingsPerCode) {
            surplus_ = Finding();
            surplus_.code = code;
            return surplus_;
        }
        ++count;
        auto& finding = findings_.emplace_back();
        finding.code = code;
        return finding;
    }

    const AcrossRun& run_;
    std::vector<Finding> findings_;
    std::unordered_map<std::string_view, std::size_t> counts_;
    Finding surplus_;
};

/// The types of all members as texts that can be compared and shown: "a single value of IfcLabel". Empty
/// where a type is missing or unknown.
std::vector<AcrossRun::MemberType> AcrossRun::memberTypesOf(const SetOutline& outline) {
    std::vector<MemberType> types(outline.members.size());
    for (std::size_t i = 0; i != types.size(); ++i) {
        const auto& member = outline.members[i];
        const auto quantity = trimmed(outline.textOf(member.type));
        if (outline.kind == SetKind::PropertySet)
            types[i].text = shownKindOf(member.kind);
        else if (std::ranges::find(QuantityTypes, quantity) != std::end(QuantityTypes))
            types[i].text = quantity;
    }
    for (const auto& type : outline.types) {
        auto& member = types[static_cast<std::size_t>(type.member)];
        // What a time series is made of is not the type of the property.
        const bool isCounted = type.use != TypeUse::ReferenceDataType || member.names.empty();
        if (!type.attribute || !isCounted || member.text.empty())
            continue;
        const auto name = cut(trimmed(type.attribute->value.value), maxTypeSize);
        member.text.append(member.names.empty() ? " of " : ", ").append(name);
        member.names.push_back(sUpperCase(name));
    }
    return types;
}

void AcrossRun::vAdd(std::string_view path, const SetOutline& outline, std::string_view context,
                     bool mayHaveUnknownType) {
    if (outline.kind == SetKind::None || outline.isPrefixed)
        return;
    const auto name = outline.setName();
    documents_.push_back({std::string(path), std::string(context), std::string(name), sUpperCase(name)});
    vSetAdd(outline);
    vMembersAdd(outline, mayHaveUnknownType);
}

void AcrossRun::vSetAdd(const SetOutline& outline) {
    const auto name = outline.setName();
    if (name.empty())
        return;
    const Spot spot{documents_.size() - 1, outline.elementOf(outline.name).trimmedText.position};
    sets_[documents_.back().setName].push_back({spot, std::string(name)});
    vGuidAdd(outline, nullptr);
}

void AcrossRun::vMembersAdd(const SetOutline& outline, bool mayHaveUnknownType) {
    auto types = memberTypesOf(outline);
    RepeatedMembers repeated;
    for (std::size_t i = 0; i != types.size(); ++i) {
        const auto& member = outline.members[i];
        const auto name = outline.memberName(member);
        vEnumerationAdd(outline, member);
        if (name.empty())
            continue;
        const auto position = outline.elementOf(member.name).trimmedText.position;
        vGuidAdd(outline, &member);
        vSpellingAdd('M', name, position);
        if (types[i].text.empty() || repeated.boTake(member, name))
            continue;
        // A property is no quantity, whatever both are called.
        const char kind = outline.kind == SetKind::QuantitySet ? 'Q' : 'P';
        vTypeAdd(std::string(1, kind).append(name), std::move(types[i]), {documents_.size() - 1, position},
                 mayHaveUnknownType);
    }
}

void AcrossRun::vTypeAdd(std::string key, MemberType type, const Spot& spot, bool mayHaveUnknownType) {
    if (mayHaveUnknownType) {
        doubtful_.push_back({std::move(key), std::move(type), spot});
        return;
    }
    knownTypes_.insert(type.names.begin(), type.names.end());
    types_[std::move(key)][std::move(type.text)].push_back(spot);
}

void AcrossRun::vEnumerationAdd(const SetOutline& outline, const MemberOutline& member) {
    if (member.enumeration == NoXmlElement)
        return;
    const auto* attribute = outline.xml->pAttribute(outline.elementOf(member.enumeration), "name");
    const auto name = attribute ? trimmed(attribute->value.value) : std::string_view();
    if (name.empty())
        return;
    std::vector<std::string> items;
    for (const auto list : childrenOf(*outline.xml, member.kindElement, "EnumList")) {
        for (const auto child : XmlChildren(*outline.xml, list)) {
            if (const auto item = trimmed(outline.textOf(child)); !item.empty())
                items.emplace_back(item);
        }
    }
    // The order says nothing.
    std::ranges::sort(items);
    items.erase(std::unique(items.begin(), items.end()), items.end());
    const Spot spot{documents_.size() - 1, attribute->value.position};
    vSpellingAdd('E', name, spot.position);
    // That there are none is found in the document itself.
    if (items.empty())
        return;
    // What hosts add may hide what is standard, enumerations included.
    std::string key = std::string(documents_.back().context).append(1, '\n').append(enumerationName(name));
    enumerationNames_.try_emplace(key, name);
    enumerations_[std::move(key)][std::move(items)].push_back(spot);
}

void AcrossRun::vGuidAdd(const SetOutline& outline, const MemberOutline* member) {
    const auto& element = outline.elementOf(member ? member->element : 0);
    const auto* attribute = outline.xml->pAttribute(element, "ifdguid");
    Guid guid;
    if (!attribute || !guid.boSet(attribute->value.value) || guid.isNull())
        return;
    const Spot spot{documents_.size() - 1, attribute->value.position};
    const auto [place, isNew] = guids_.try_emplace(guid, spot);
    const auto& first = place->second;
    // Twice in one document is another mistake, and of copies of one set the set is the mistake.
    if (isNew || first.document == spot.document ||
        documents_[first.document].setName == documents_.back().setName)
        return;
    auto name = member ? outline.subjectOf(*member) : std::string(outline.setName());
    guidRepeats_.push_back({{spot, std::move(name), !member}, first});
}

void AcrossRun::vSpellingAdd(char kind, std::string_view name, TextPosition position) {
    auto& spellings = spellings_[std::string(1, kind).append(sUpperCase(name))];
    if (!spellings.contains(name))
        spellings.emplace(name, Spot{documents_.size() - 1, position});
}

void AcrossRun::vSetsFind(Collector& findings) const {
    for (const auto& [key, uses] : sets_) {
        std::unordered_map<std::string_view, const Named*> firstOfContext;
        for (const auto& use : uses) {
            const auto [first, isFirst] =
                firstOfContext.try_emplace(documents_[use.spot.document].context, &use);
            const bool isHidden = isFirst && &use != &uses.front();
            if (isFirst && !isHidden)
                continue;
            const auto& other = isHidden ? uses.front() : *first->second;
            // One document may belong to several contexts.
            if (documents_[use.spot.document].path == documents_[other.spot.document].path)
                continue;
            auto& finding =
                isHidden
                    ? findings.add("X002", use.spot,
                                   "there is a set " + sQuoted(use.name) + " in " +
                                       sContext(documents_[other.spot.document].context) + " too",
                                   use.name)
                    : findings.add("X001", use.spot, "there are two sets " + sQuoted(use.name), use.name);
            finding.notes.push_back(
                {"the other one is " + sQuoted(other.name), findings.placeOf(other.spot)});
        }
    }
}

void AcrossRun::vEnumerationsFind(Collector& findings) const {
    for (const auto& [key, variants] : enumerations_) {
        const auto usual = usualOf(variants);
        const auto& name = enumerationNames_.at(key);
        for (auto other = variants.begin(); other != variants.end(); ++other) {
            if (other == usual)
                continue;
            const auto onlyHere = sOnly(other->first, usual->first);
            const auto onlyThere = sOnly(usual->first, other->first);
            for (const auto& spot : other->second) {
                auto& finding = findings.add(
                    "X003", spot, "the enumeration " + sQuoted(name) + " has other items elsewhere", name);
                finding.notes.push_back({"it is here too", findings.placeOf(usual->second.front())});
                if (!onlyHere.empty())
                    finding.notes.push_back({"only the one here has " + onlyHere, std::nullopt});
                if (!onlyThere.empty())
                    finding.notes.push_back({"only the other has " + onlyThere, std::nullopt});
            }
        }
    }
}

void AcrossRun::vSpellingsFind(Collector& findings) const {
    const auto isBefore = [](const auto& left, const auto& right) {
        return std::tie(left.second.document, left.second.position) <
               std::tie(right.second.document, right.second.position);
    };
    for (const auto& [key, spellings] : spellings_) {
        if (spellings.size() == 1)
            continue;
        const auto first = std::ranges::min_element(spellings, isBefore);
        for (auto other = spellings.begin(); other != spellings.end(); ++other) {
            if (other == first)
                continue;
            auto& finding = findings.add("X004", other->second,
                                         std::string(key.front() == 'E' ? "the enumeration " : "the name ") +
                                             sQuoted(other->first) + " differs from " +
                                             sQuoted(first->first) + " in letter case only",
                                         other->first);
            finding.notes.push_back({sQuoted(first->first) + " is here", findings.placeOf(first->second)});
        }
    }
}

void AcrossRun::vGuidsFind(Collector& findings) const {
    // Who copies a set copies all its GUIDs: one mistake.
    std::map<std::pair<std::size_t, std::size_t>, std::vector<const GuidRepeat*>> repeats;
    for (const auto& repeat : guidRepeats_)
        repeats[{repeat.use.spot.document, repeat.first.document}].push_back(&repeat);
    for (const auto& [documents, ofOne] : repeats)
        vGuidsOfOneFind(findings, ofOne);
}

/// The GUIDs that one document has from another.
void AcrossRun::vGuidsOfOneFind(Collector& findings, std::span<const GuidRepeat* const> repeats) const {
    const auto& [use, first] = *repeats.front();
    const bool isOne = repeats.size() == 1;
    const auto name = isOne ? std::string_view(use.name) : documents_[use.spot.document].shownName;
    auto message = isOne ? std::string("the GUID of the ") + (use.isSet ? "set " : "member ") +
                               sQuoted(name) + " is in another document too"
                         : std::to_string(repeats.size()) + " GUIDs of the set " + sQuoted(name) +
                               " are in another document too";
    auto& finding = findings.add("G101", use.spot, std::move(message), name);
    // Look-ups by GUID are for members alone.
    if (isOne && use.isSet)
        finding.severity = Severity::Warning;
    finding.notes.push_back({"it is used here", findings.placeOf(first)});
    constexpr std::size_t maxNotes = 5;
    for (const auto* other : repeats.subspan(1, std::min(repeats.size() - 1, maxNotes)))
        finding.notes.push_back(
            {"so is that of the member " + sQuoted(other->use.name), findings.placeOf(other->use.spot)});
}

/// Whether documents without a mistake in their types have all of these.
bool AcrossRun::boIsKnown(const MemberType& type) const {
    return std::ranges::all_of(type.names,
                               [this](const std::string& name) { return knownTypes_.contains(name); });
}

void AcrossRun::vTypesFind(Collector& findings) const {
    auto allTypes = types_;
    for (const auto& [key, type, spot] : doubtful_) {
        if (boIsKnown(type))
            allTypes[key][type.text].push_back(spot);
    }
    for (const auto& [key, types] : allTypes) {
        if (types.size() == 1)
            continue;
        const auto name = std::string_view(key).substr(1);
        const auto usual = usualOf(types);
        for (auto other = types.begin(); other != types.end(); ++other) {
            if (other == usual)
                continue;
            for (const auto& spot : other->second) {
                auto& finding = findings.add("D003", spot,
                                             sQuoted(name) + " is " + other->first + " here and " +
                                                 usual->first + " in other sets",
                                             name);
                finding.notes.push_back(
                    {"here it is " + usual->first, findings.placeOf(usual->second.front())});
            }
        }
    }
}

std::vector<Finding> AcrossRun::getFindings() const {
    Collector findings(*this);
    vSetsFind(findings);
    vEnumerationsFind(findings);
    vSpellingsFind(findings);
    vGuidsFind(findings);
    vTypesFind(findings);
    return findings.take();
}

} // namespace kiv::kit
