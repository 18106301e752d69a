#include "Kit/Findings/SetOutline.h"

#include "Kit/Findings/RuleRun.h"
#include "Kit/Positions/XmlChildren.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kiv::kit {

namespace {

constexpr std::size_t maxSubjectPart = 120;
constexpr std::size_t maxSubjectDepth = 8;

/// Without the blanks around it; other white space stays.
std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view trimmedTextOf(const XmlPositions& xml, XmlIndex element) {
    return element == NoXmlElement ? std::string_view() : xml.getElement(element).trimmedText;
}

constexpr std::array<std::pair<std::string_view, PropertyKind>, 8> PropertyKinds = {{
    {"TypePropertySingleValue", PropertyKind::SingleValue},
    {"TypePropertyEnumeratedValue", PropertyKind::EnumeratedValue},
    {"TypePropertyBoundedValue", PropertyKind::BoundedValue},
    {"TypePropertyTableValue", PropertyKind::TableValue},
    {"TypePropertyReferenceValue", PropertyKind::ReferenceValue},
    {"TypePropertyListValue", PropertyKind::ListValue},
    {"TypeComplexProperty", PropertyKind::Complex},
    {"TypeSimpleProperty", PropertyKind::Simple},
}};

PropertyKind propertyKindOf(std::string_view tag) {
    const auto* const found =
        std::ranges::find(PropertyKinds, tag, [](const auto& entry) { return entry.first; });
    return found == PropertyKinds.end() ? PropertyKind::None : found->second;
}

/// Fills an outline by walking the document as the readers of sets do.
class OutlineReader {
public:
    OutlineReader(SetOutline& outline, const XmlPositions& xml, OutlineParts parts) :
        outline_(outline), xml_(xml), hasAliases_(parts == OutlineParts::All) {}

    void vSetRead(XmlIndex root);

private:
    std::string_view tagOf(XmlIndex element) const { return xml_.getElement(element).name; }

    /// Of several the last one counts that has a text.
    void vTextTake(XmlIndex& target, XmlIndex child) const {
        if (target == NoXmlElement || boHasText(xml_.getElement(child)) ||
            !boHasText(xml_.getElement(target)))
            target = child;
    }
    /// Of several the last one counts that has the attribute.
    void vAttributeTake(XmlIndex& target, XmlIndex child, std::string_view attribute) const {
        if (target == NoXmlElement || xml_.pAttribute(xml_.getElement(child), attribute) ||
            !xml_.pAttribute(xml_.getElement(target), attribute))
            target = child;
    }

    void vSetChildRead(XmlIndex child);
    void vClassesRead(XmlIndex list);
    void vMembersRead(XmlIndex list);
    void vMemberRead(XmlIndex element, std::int32_t owner);
    void vMemberChildRead(XmlIndex child, std::size_t member);
    void vPropertyTypeRead(std::size_t member);
    void vPropertyKindRead(std::size_t member);
    void vBoundedRead(std::size_t member);
    void vEnumeratedRead(std::size_t member);
    void vConstantsRead(XmlIndex list);
    void vReferenceRead(std::size_t member);
    void vComplexRead(std::size_t member);
    /// Takes the type names of a single value, or of a column of a table or list.
    void vTypesRead(XmlIndex parent, std::size_t member, TypeUse use);
    void vAliasesRead(XmlIndex list, std::string_view itemTag);

    SetOutline& outline_;
    const XmlPositions& xml_;
    bool hasAliases_;
};

void OutlineReader::vSetRead(XmlIndex root) {
    for (const auto child : XmlChildren(xml_, root))
        vSetChildRead(child);
}

void OutlineReader::vSetChildRead(XmlIndex child) {
    const auto tag = tagOf(child);
    const bool isPropertySet = outline_.kind == SetKind::PropertySet;
    if (tag == "Name")
        vTextTake(outline_.name, child);
    else if (tag == "Definition")
        vTextTake(outline_.definition, child);
    else if (tag == "IfcVersion")
        vAttributeTake(outline_.ifcVersion, child, "version");
    else if (tag == "ApplicableTypeValue")
        vTextTake(outline_.applicableTypeValue, child);
    else if (tag == "ApplicableClasses")
        vClassesRead(child);
    else if (tag == (isPropertySet ? "PropertyDefs" : "QtoDefs"))
        vMembersRead(child);
    else if (tag == (isPropertySet ? "PsetDefinitionAliases" : "QtoDefinitionAliases"))
        vAliasesRead(child, isPropertySet ? "PsetDefinitionAlias" : "QtoDefinitionAlias");
}

void OutlineReader::vClassesRead(XmlIndex list) {
    outline_.applicableClasses = list;
    for (const auto child : XmlChildren(xml_, list)) {
        // Blanks only: a tab or a line break stays in the name.
        const auto text = withoutBlanks(xml_.getElement(child).text);
        if (tagOf(child) != "ClassName" || text.empty())
            continue;
        const auto mark = std::min(text.find('/'), text.size());
        outline_.classes.push_back(
            {child, text, text.substr(0, mark), text.substr(std::min(mark + 1, text.size()))});
    }
}

void OutlineReader::vMembersRead(XmlIndex list) {
    const std::string_view tag = outline_.kind == SetKind::PropertySet ? "PropertyDef" : "QtoDef";
    for (const auto child : XmlChildren(xml_, list)) {
        if (tagOf(child) == tag)
            vMemberRead(child, -1);
    }
}

/// Complex properties make it call itself, as deep as a document may nest elements.
void OutlineReader::vMemberRead(XmlIndex element, std::int32_t owner) {
    const auto member = outline_.members.size();
    outline_.members.emplace_back();
    outline_.members[member].element = element;
    outline_.members[member].owner = owner;
    for (const auto child : XmlChildren(xml_, element))
        vMemberChildRead(child, member);
    if (outline_.kind == SetKind::PropertySet && outline_.members[member].type != NoXmlElement)
        vPropertyTypeRead(member);
}

void OutlineReader::vMemberChildRead(XmlIndex child, std::size_t member) {
    const auto tag = tagOf(child);
    auto& parts = outline_.members[member];
    if (tag == "Name")
        vTextTake(parts.name, child);
    else if (tag == "Definition")
        vTextTake(parts.definition, child);
    else if (tag == "NameAliases")
        vAliasesRead(child, "NameAlias");
    else if (tag == "DefinitionAliases")
        vAliasesRead(child, "DefinitionAlias");
    else if (tag == (outline_.kind == SetKind::PropertySet ? "PropertyType" : "QtoType"))
        parts.type = child;
}

void OutlineReader::vPropertyTypeRead(std::size_t member) {
    auto& parts = outline_.members[member];
    parts.kindElement = xml_.getElement(parts.type).firstChild;
    if (parts.kindElement == NoXmlElement)
        return;
    parts.kind = propertyKindOf(tagOf(parts.kindElement));
    vPropertyKindRead(member);
}

void OutlineReader::vPropertyKindRead(std::size_t member) {
    const auto kindElement = outline_.members[member].kindElement;
    switch (outline_.members[member].kind) {
    case PropertyKind::SingleValue:
        vTypesRead(kindElement, member, TypeUse::Value);
        break;
    case PropertyKind::BoundedValue:
        vBoundedRead(member);
        break;
    case PropertyKind::EnumeratedValue:
        vEnumeratedRead(member);
        break;
    case PropertyKind::ReferenceValue:
        vReferenceRead(member);
        break;
    case PropertyKind::TableValue:
    case PropertyKind::ListValue:
        for (const auto column : XmlChildren(xml_, kindElement)) {
            const auto tag = tagOf(column);
            if (tag == "DefiningValue" || tag == "DefinedValue" || tag == "ListValue")
                vTypesRead(column, member, TypeUse::Value);
        }
        break;
    case PropertyKind::Complex:
        vComplexRead(member);
        break;
    case PropertyKind::Simple:
        vTypesRead(kindElement, member, TypeUse::Simple);
        break;
    case PropertyKind::None:
        break;
    }
}

void OutlineReader::vBoundedRead(std::size_t member) {
    const auto kindElement = outline_.members[member].kindElement;
    vTypesRead(kindElement, member, TypeUse::Value);
    for (const auto child : XmlChildren(xml_, kindElement)) {
        if (tagOf(child) == "ValueRangeDef")
            outline_.members[member].range = child;
    }
}

void OutlineReader::vEnumeratedRead(std::size_t member) {
    auto& parts = outline_.members[member];
    for (const auto child : XmlChildren(xml_, parts.kindElement)) {
        if (tagOf(child) == "EnumList")
            parts.enumeration = child;
        else if (tagOf(child) == "ConstantList")
            vConstantsRead(parts.constants = child);
    }
}

void OutlineReader::vConstantsRead(XmlIndex list) {
    for (const auto constant : XmlChildren(xml_, list)) {
        for (const auto child : XmlChildren(xml_, constant)) {
            if (tagOf(child) == "NameAliases")
                vAliasesRead(child, "NameAlias");
            else if (tagOf(child) == "DefinitionAliases")
                vAliasesRead(child, "DefinitionAlias");
        }
    }
}

void OutlineReader::vReferenceRead(std::size_t member) {
    const auto kindElement = outline_.members[member].kindElement;
    const auto index = static_cast<std::int32_t>(member);
    if (const auto* reference = xml_.pAttribute(xml_.getElement(kindElement), "reftype"))
        outline_.types.push_back({kindElement, index, TypeUse::Reference, reference});
    vTypesRead(kindElement, member, TypeUse::ReferenceDataType);
}

void OutlineReader::vComplexRead(std::size_t member) {
    for (const auto child : XmlChildren(xml_, outline_.members[member].kindElement)) {
        if (tagOf(child) == "PropertyDef")
            vMemberRead(child, static_cast<std::int32_t>(member));
    }
}

void OutlineReader::vTypesRead(XmlIndex parent, std::size_t member, TypeUse use) {
    const auto first = outline_.types.size();
    auto unit = NoXmlElement;
    auto values = NoXmlElement;
    for (const auto child : XmlChildren(xml_, parent)) {
        const auto tag = tagOf(child);
        if (tag == "DataType")
            outline_.types.push_back({child, static_cast<std::int32_t>(member), use,
                                      xml_.pAttribute(xml_.getElement(child), "type")});
        else if (tag == "UnitType")
            vAttributeTake(unit, child, "type");
        else if (tag == "Values")
            values = child;
    }
    for (auto type = first; type != outline_.types.size(); ++type) {
        outline_.types[type].unit = unit;
        outline_.types[type].values = values;
    }
}

void OutlineReader::vAliasesRead(XmlIndex list, std::string_view itemTag) {
    if (!hasAliases_)
        return;
    for (const auto child : XmlChildren(xml_, list)) {
        if (tagOf(child) == itemTag)
            outline_.aliases.push_back({child, list, xml_.pAttribute(xml_.getElement(child), "lang")});
    }
}

} // namespace

SetOutline::SetOutline(const XmlPositions& positions, OutlineParts parts) : xml(&positions) {
    const auto* root = positions.pRoot();
    if (!root)
        return;
    isPrefixed = root->isPrefixed();
    if (root->localName() == "PropertySetDef")
        kind = SetKind::PropertySet;
    else if (root->localName() == "QtoSetDef")
        kind = SetKind::QuantitySet;
    if (kind == SetKind::None || isPrefixed)
        return;
    constexpr std::size_t UsualMembers = 8;
    members.reserve(UsualMembers);
    types.reserve(UsualMembers);
    OutlineReader(*this, positions, parts).vSetRead(0);
}

std::string_view SetOutline::textOf(XmlIndex index) const {
    return index == NoXmlElement ? std::string_view() : elementOf(index).text;
}

std::string_view SetOutline::setName() const {
    return trimmedTextOf(*xml, name);
}

std::string_view SetOutline::memberName(const MemberOutline& member) const {
    return trimmedTextOf(*xml, member.name);
}

std::string SetOutline::setSubject() const {
    return std::string(cut(setName(), maxSubjectPart));
}

std::string SetOutline::subjectOf(const MemberOutline& member) const {
    std::vector<std::string_view> names = {memberName(member)};
    for (auto owner = member.owner; owner >= 0 && names.size() != maxSubjectDepth;
         owner = members[static_cast<std::size_t>(owner)].owner)
        names.push_back(memberName(members[static_cast<std::size_t>(owner)]));
    std::string subject = setSubject();
    for (auto part = names.rbegin(); part != names.rend(); ++part)
        subject.append(1, '.').append(cut(*part, maxSubjectPart));
    return subject;
}

} // namespace kiv::kit
