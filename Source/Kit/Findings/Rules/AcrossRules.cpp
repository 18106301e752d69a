#include "Kit/Findings/Rules/AcrossRules.h"

#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/SetVocabulary.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <iterator>
#include <tuple>
#include <type_traits>
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

bool isOfReference(TypeUse use) {
    return use == TypeUse::Reference || use == TypeUse::ReferenceDataType;
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
std::string sOnly(std::span<const std::string_view> in, std::span<const std::string_view> notIn) {
    constexpr std::size_t maxShown = 12;
    const auto& shorter = in.size() < notIn.size() ? in : notIn;
    const auto& longer = in.size() < notIn.size() ? notIn : in;
    const auto common = std::ranges::count_if(
        shorter, [&](std::string_view item) { return std::ranges::binary_search(longer, item); });
    const auto count = in.size() - static_cast<std::size_t>(common);
    std::vector<std::string_view> shown;
    for (auto item = in.begin(); item != in.end() && shown.size() != std::min(count, maxShown); ++item) {
        if (!std::ranges::binary_search(notIn, *item))
            shown.push_back(*item);
    }
    return sQuotedFirst(shown, count);
}

/// For a message: hosts need not name contexts.
std::string sContext(std::string_view name) {
    return name.empty() ? "another context" : "the context " + sQuoted(name);
}

} // namespace

/// Makes findings, up to the limit of each code.
class AcrossRun::Collector {
public:
    explicit Collector(const AcrossRun& run) : run_(run) {}

    Place placeOf(const Spot& spot) const {
        return {std::string(run_.documents_[spot.document].path), spot.position};
    }

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

std::size_t AcrossRun::GuidHash::operator()(const Guid& guid) const {
    static_assert(std::has_unique_object_representations_v<Guid>);
    std::array<char, sizeof(Guid)> bytes{};
    std::memcpy(bytes.data(), &guid, bytes.size());
    return std::hash<std::string_view>()({bytes.data(), bytes.size()});
}

std::string_view AcrossRun::kept(std::string_view text) {
    auto* const copy = static_cast<char*>(memory_.allocate(text.size(), 1));
    std::ranges::copy(text, copy);
    return {copy, text.size()};
}

/// The types of all members as texts that can be compared and shown: "a single value of IfcLabel".
AcrossRun::MemberTypes AcrossRun::memberTypesOf(const SetOutline& outline,
                                                std::pmr::memory_resource* memory) {
    constexpr std::size_t UsualText = 64;
    MemberTypes all{std::pmr::vector<MemberType>(memory), std::pmr::vector<std::string_view>(memory)};
    all.types.reserve(outline.members.size());
    for (std::size_t i = 0; i != outline.members.size(); ++i)
        all.types.push_back({std::pmr::string(memory), 0, 0});
    all.names.reserve(outline.types.size());
    for (std::size_t i = 0; i != all.types.size(); ++i) {
        const auto& member = outline.members[i];
        const auto quantity = trimmed(outline.textOf(member.type));
        if (outline.kind == SetKind::PropertySet)
            all.types[i].text = shownKindOf(member.kind);
        else if (std::ranges::find(QuantityTypes, quantity) != std::end(QuantityTypes))
            all.types[i].text = quantity;
    }
    // The types of one member come one after the other.
    for (const auto& type : outline.types) {
        auto& member = all.types[static_cast<std::size_t>(type.member)];
        // What a time series is made of is not the type of the property.
        const bool isCounted = type.use != TypeUse::ReferenceDataType || member.nameCount == 0;
        if (!type.attribute || !isCounted || member.text.empty())
            continue;
        const auto name = cut(trimmed(type.attribute->value), maxTypeSize);
        if (name.empty())
            continue;
        if (member.nameCount == 0) {
            member.firstName = all.names.size();
            member.text.reserve(UsualText);
        }
        const auto* const before = isOfReference(type.use) ? " to " : " of ";
        member.text.append(member.nameCount == 0 ? before : ", ").append(name);
        all.names.push_back(name);
        ++member.nameCount;
    }
    return all;
}

/// The members with a name and a type that have the name of one before them in their list, which is a mistake
/// of its own.
std::vector<bool> AcrossRun::repeatedMembers(const SetOutline& outline, const MemberTypes& types) {
    struct Member {
        std::int32_t owner;
        std::string_view name;
        std::size_t index;

        auto operator<=>(const Member&) const = default;
    };
    std::vector<Member> members;
    members.reserve(outline.members.size());
    for (std::size_t i = 0; i != outline.members.size(); ++i) {
        const auto name = outline.memberName(outline.members[i]);
        if (!name.empty() && !types.types[i].text.empty())
            members.push_back({outline.members[i].owner, name, i});
    }
    std::ranges::sort(members);
    std::vector<bool> isRepeated(outline.members.size(), false);
    for (std::size_t i = 1; i < members.size(); ++i) {
        if (members[i].owner == members[i - 1].owner && members[i].name == members[i - 1].name)
            isRepeated[members[i].index] = true;
    }
    return isRepeated;
}

void AcrossRun::vAdd(std::string_view path, const SetOutline& outline, std::string_view context,
                     const TypeFaults& faults) {
    if (outline.kind == SetKind::None || outline.isPrefixed)
        return;
    const auto name = outline.setName();
    documents_.push_back({kept(path), kept(context), kept(name), kept(sUpperCase(name))});
    vSetAdd(outline);
    vMembersAdd(outline, faults);
}

void AcrossRun::vSetAdd(const SetOutline& outline) {
    const auto name = outline.setName();
    if (name.empty())
        return;
    const Spot spot{documents_.size() - 1, outline.xml->textPositionOf(outline.elementOf(outline.name))};
    sets_[documents_.back().setName].push_back({spot, documents_.back().shownName});
    vGuidAdd(outline, nullptr);
}

bool AcrossRun::isFaulty(const SetOutline& outline, const MemberOutline& member, const TypeFaults& faults) {
    if (faults.places.empty())
        return false;
    const auto& element = outline.elementOf(member.element);
    const auto first = std::ranges::lower_bound(faults.places, outline.xml->beginOf(element));
    return first != faults.places.end() && *first < outline.xml->endOf(element);
}

void AcrossRun::vMembersAdd(const SetOutline& outline, const TypeFaults& faults) {
    // The texts of usual documents need no other memory.
    std::array<std::byte, 8192> bytes;
    std::pmr::monotonic_buffer_resource memory(bytes.data(), bytes.size());
    const auto all = memberTypesOf(outline, &memory);
    const auto isRepeated = repeatedMembers(outline, all);
    for (std::size_t i = 0; i != all.types.size(); ++i) {
        const auto& member = outline.members[i];
        const auto name = outline.memberName(member);
        const bool isRight = !isFaulty(outline, member, faults);
        vEnumerationAdd(outline, member, isRight);
        if (name.empty())
            continue;
        const Spot spot{documents_.size() - 1, outline.xml->textPositionOf(outline.elementOf(member.name))};
        vGuidAdd(outline, &member);
        const auto keptName = spellingAdd(memberNames_, name, spot.position);
        const auto& type = all.types[i];
        if (type.text.empty() || isRepeated[i] || !isRight)
            continue;
        const TypedMember typed{outline.kind == SetKind::QuantitySet, keptName, type.text, all.namesOf(type),
                                spot};
        if (faults.mayBeUnknown)
            vDoubtfulAdd(typed);
        else
            vTypeAdd(typed);
    }
}

void AcrossRun::vDoubtfulAdd(const TypedMember& member) {
    auto& doubtful = doubtful_.emplace_back(
        Doubtful{member.isQuantity, member.name, kept(member.text), Items(&memory_), member.spot});
    for (const auto typeName : member.typeNames)
        doubtful.typeNames.push_back(kept(typeName));
}

void AcrossRun::vTypeAdd(const TypedMember& member) {
    for (const auto known : member.typeNames) {
        if (!knownTypes_.contains(known))
            knownTypes_.insert(kept(known));
    }
    // Of two sets of one name, one hides the other or is in its way, which says that they differ.
    const auto sets = sets_.find(documents_.back().setName);
    if (sets != sets_.end() && sets->second.size() > 1)
        return;
    auto& variants = (member.isQuantity ? quantityTypes_ : propertyTypes_)[member.name];
    auto variant = variants.find(member.text);
    if (variant == variants.end())
        variant = variants.emplace(kept(member.text), Spots(&memory_)).first;
    variant->second.push_back(member.spot);
}

void AcrossRun::vEnumerationAdd(const SetOutline& outline, const MemberOutline& member, bool areItemsRight) {
    if (member.enumeration == NoXmlElement)
        return;
    const auto* attribute = outline.xml->pAttribute(outline.elementOf(member.enumeration), "name");
    const auto name = attribute ? trimmed(attribute->value) : std::string_view();
    if (name.empty())
        return;
    Items items;
    for (const auto list : childrenOf(*outline.xml, member.kindElement, "EnumList")) {
        for (const auto child : XmlChildren(*outline.xml, list)) {
            if (const auto item = trimmed(outline.textOf(child)); !item.empty())
                items.push_back(item);
        }
    }
    // The order says nothing.
    std::ranges::sort(items);
    items.erase(std::unique(items.begin(), items.end()), items.end());
    const Spot spot{documents_.size() - 1, outline.xml->valuePositionOf(*attribute)};
    const auto keptName = spellingAdd(enumerationNames_, name, spot.position);
    // That there are none is found in the document itself.
    if (items.empty() || !areItemsRight)
        return;
    // What hosts add may hide what is standard, enumerations included.
    const auto key = std::string(documents_.back().context).append(1, '\n').append(enumerationName(name));
    auto place = enumerations_.find(key);
    if (place == enumerations_.end())
        place = enumerations_.emplace(kept(key), Enumeration{keptName, std::pmr::map<Items, Spots>(&memory_)})
                    .first;
    auto& variants = place->second.variants;
    auto variant = variants.find(items);
    if (variant == variants.end()) {
        std::ranges::transform(items, items.begin(), [this](std::string_view item) { return kept(item); });
        variant = variants.emplace(Items(items, &memory_), Spots(&memory_)).first;
    }
    variant->second.push_back(spot);
}

void AcrossRun::vGuidAdd(const SetOutline& outline, const MemberOutline* member) {
    const auto& element = outline.elementOf(member ? member->element : 0);
    const auto* attribute = outline.xml->pAttribute(element, "ifdguid");
    Guid guid;
    if (!attribute || !guid.boSet(attribute->value) || guid.isNull())
        return;
    const Spot spot{documents_.size() - 1, outline.xml->valuePositionOf(*attribute)};
    const auto [place, isNew] = guids_.try_emplace(guid, spot);
    const auto& first = place->second;
    // Twice in one document is another mistake, and of copies of one set the set is the mistake.
    if (isNew || first.document == spot.document ||
        documents_[first.document].setName == documents_.back().setName)
        return;
    const auto name = member ? kept(outline.subjectOf(*member)) : documents_.back().shownName;
    guidRepeats_.push_back({{spot, name, !member}, first});
}

std::string_view AcrossRun::spellingAdd(Names& names, std::string_view name, TextPosition position) {
    const Spot spot{documents_.size() - 1, position};
    const auto place = names.find(name);
    if (place == names.end())
        return names.emplace(kept(name), Spellings{spot, {}}).first->first;
    if (place->first == name)
        return place->first;
    auto& others = place->second.others;
    const auto other = others.find(name);
    return other == others.end() ? others.emplace(kept(name), spot).first->first : other->first;
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
    for (const auto& [key, enumeration] : enumerations_) {
        const auto& [name, variants] = enumeration;
        const auto usual = usualOf(variants);
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

void AcrossRun::vSpellingsFind(Collector& findings, const Names& names, std::string_view what) {
    const auto isBefore = [](const Named& left, const Named& right) {
        return std::tie(left.spot.document, left.spot.position) <
               std::tie(right.spot.document, right.spot.position);
    };
    for (const auto& [name, spellings] : names) {
        if (spellings.others.empty())
            continue;
        std::vector<Named> all{{spellings.first, name}};
        for (const auto& [other, spot] : spellings.others)
            all.push_back({spot, other});
        std::ranges::sort(all, isBefore);
        const auto& first = all.front();
        for (const auto& other : std::span(all).subspan(1)) {
            auto& finding = findings.add("X004", other.spot,
                                         std::string(what) + sQuoted(other.name) + " differs from " +
                                             sQuoted(first.name) + " in letter case only",
                                         other.name);
            finding.notes.push_back({sQuoted(first.name) + " is here", findings.placeOf(first.spot)});
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
bool AcrossRun::boIsKnown(const Doubtful& member) const {
    return std::ranges::all_of(member.typeNames,
                               [this](std::string_view name) { return knownTypes_.contains(name); });
}

void AcrossRun::vTypesFind(Collector& findings, bool isQuantity) const {
    const auto& types = isQuantity ? quantityTypes_ : propertyTypes_;
    // Those that members whose type may be unknown have too.
    Types joined;
    for (const auto& member : doubtful_) {
        if (member.isQuantity != isQuantity || !boIsKnown(member))
            continue;
        const auto [place, isNew] = joined.try_emplace(member.name);
        const auto known = types.find(member.name);
        if (isNew && known != types.end())
            place->second = known->second;
        place->second[member.text].push_back(member.spot);
    }
    for (const auto& [name, variants] : types) {
        if (variants.size() != 1 && !joined.contains(name))
            vVariantsFind(findings, name, variants);
    }
    for (const auto& [name, variants] : joined) {
        if (variants.size() != 1)
            vVariantsFind(findings, name, variants);
    }
}

void AcrossRun::vVariantsFind(Collector& findings, std::string_view name, const Variants& variants) {
    const auto usual = usualOf(variants);
    for (auto other = variants.begin(); other != variants.end(); ++other) {
        if (other == usual)
            continue;
        for (const auto& spot : other->second) {
            auto& finding = findings.add("D003", spot,
                                         sQuoted(name)
                                             .append(" is ")
                                             .append(other->first)
                                             .append(" here and ")
                                             .append(usual->first)
                                             .append(" in other sets"),
                                         name);
            finding.notes.push_back(
                {std::string("here it is ").append(usual->first), findings.placeOf(usual->second.front())});
        }
    }
}

std::vector<Finding> AcrossRun::getFindings() const {
    Collector findings(*this);
    vSetsFind(findings);
    vEnumerationsFind(findings);
    vSpellingsFind(findings, memberNames_, "the name ");
    vSpellingsFind(findings, enumerationNames_, "the enumeration ");
    vGuidsFind(findings);
    vTypesFind(findings, false);
    vTypesFind(findings, true);
    return findings.take();
}

} // namespace kiv::kit
