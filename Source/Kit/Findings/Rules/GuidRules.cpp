#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/ExampleDocuments.h"
#include "Kit/Findings/Rules/RuleNames.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Host/Id/KivId.h"

#include <map>
#include <memory_resource>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

constexpr std::string_view HexDigits = "0123456789abcdefABCDEF";

std::string sMalformed(std::string_view value) {
    if (trimmedBlanks(value).empty())
        return "the GUID is empty";
    return sQuoted(value) + " is no GUID";
}

std::string sFormNote(std::string_view value) {
    std::size_t digits = 0;
    for (const char character : value)
        digits += HexDigits.find(character) == std::string_view::npos ? 0 : 1;
    const auto other = value.find_first_not_of("0123456789abcdefABCDEF-{}");
    if (other == std::string_view::npos && digits != 32 && !value.empty())
        return "it has " + std::to_string(digits) + " hexadecimal digits, a GUID has 32";
    // What has about as many characters as a GUID has a wrong one.
    if (other != std::string_view::npos && isAscii(value[other]) && (digits == 31 || digits == 30))
        return "character " + std::to_string(other + 1) + ", " + sQuoted(value.substr(other, 1)) +
               ", is no hexadecimal digit";
    return "a GUID has 32 hexadecimal digits, with or without hyphens, or the 22 characters of IFC";
}

/// A definition with a GUID.
struct GuidOwner {
    const XmlAttribute* guid = nullptr;
    XmlIndex parent = NoXmlElement;
    /// Empty when it has none.
    std::string_view name;
};

/// By the GUID, the first that has it.
using KnownGuids = std::pmr::map<kiv::Guid, GuidOwner>;

GuidOwner ownerOf(const RuleRun& run, XmlIndex element, const XmlAttribute& guid) {
    const auto name = childOf(run.xml, element, "Name");
    return {&guid, run.xml.getElement(element).parent,
            name == NoXmlElement ? std::string_view() : run.xml.getElement(name).trimmedText};
}

/// Whether both are members of one name in one list: the copy is the mistake then, not its GUID.
bool boIsCopy(const GuidOwner& member, const GuidOwner& other) {
    return member.parent == other.parent && !member.name.empty() && member.name == other.name;
}

void vMalformedAdd(RuleRun& run, XmlIndex element, const XmlAttribute& attribute) {
    const auto value = attribute.value;
    const auto trimmed = trimmedBlanks(value);
    auto& draft = run.addAtValue("G001", element, attribute, sMalformed(value));
    if (trimmed.empty())
        draft.vNote("leave \"ifdguid\" out when there is no GUID").vEdit(run.xml.bytesOf(attribute), "");
    else if (trimmed != value && kiv::Guid().boSet(trimmed))
        draft.vNote("white space is no part of a GUID").vEdit(run.xml.valueOf(attribute).bytes, trimmed);
    else
        draft.vNote(sFormNote(value));
}

void vGuidCheck(RuleRun& run, XmlIndex element, KnownGuids& known) {
    const auto* attribute = run.xml.pAttribute(run.xml.getElement(element), "ifdguid");
    if (!attribute)
        return;
    kiv::Guid guid;
    if (!guid.boSet(attribute->value)) {
        vMalformedAdd(run, element, *attribute);
        return;
    }
    if (guid == kiv::Guid())
        return;
    const auto owner = ownerOf(run, element, *attribute);
    const auto [first, isNew] = known.emplace(guid, owner);
    if (!isNew && !boIsCopy(owner, first->second))
        run.addAtValue("G002", element, *attribute,
                       "the GUID " + sQuoted(attribute->value) + " is used twice in this document")
            .vNoteAt("the first use is here", run.xml.valuePositionOf(*first->second.guid));
}

} // namespace

std::span<const Rule> getGuidRules() {
    static const Rule rules[] = {
        {"G001", "malformed-guid", Severity::Error, "The value of \"ifdguid\" is no GUID.",
         "A GUID that cannot be read is lost: the set, property or quantity has none then and is not found "
         "by it.\n\n"
         "A GUID is written with 32 hexadecimal digits, with or without hyphens and braces, or with the 22 "
         "characters of IFC. Leave the attribute out when there is no GUID.",
         changed(WallSet,
                 {{"<PropertySetDef>", R"(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efd">)"}}),
         changed(WallSet, {{"<PropertySetDef>",
                            R"(<PropertySetDef ifdguid="aa3b8880-d215-11e1-8000-00215ad4efdf">)"}})},
        {"G002",
         "repeated-guid",
         Severity::Error,
         "Two definitions of one document have the same GUID.",
         "A GUID identifies one definition. When two have the same one, a look-up by GUID finds only one of "
         "them; usually one definition was copied from the other.\n\nGive each a GUID of its own. GUIDs are "
         "compared, not texts: with and without hyphens they are the same. The null GUID may be repeated.",
         {R"xml(<QtoSetDef>
  <IfcVersion version="IFC4"/>
  <Name>Qto_WallBaseQuantities</Name>
  <Definition>Quantities of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <QtoDefs>
    <QtoDef ifdguid="aa3b8880d21511e1800000215ad4efdf">
      <Name>Width</Name><Definition>How wide.</Definition><QtoType>Q_LENGTH</QtoType>
    </QtoDef>
    <QtoDef ifdguid="AA3B8880-D215-11E1-8000-00215AD4EFDF">
      <Name>Height</Name><Definition>How high.</Definition><QtoType>Q_LENGTH</QtoType>
    </QtoDef>
  </QtoDefs>
</QtoSetDef>
)xml"},
         {R"xml(<QtoSetDef>
  <IfcVersion version="IFC4"/>
  <Name>Qto_WallBaseQuantities</Name>
  <Definition>Quantities of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <QtoDefs>
    <QtoDef ifdguid="aa3b8880d21511e1800000215ad4efdf">
      <Name>Width</Name><Definition>How wide.</Definition><QtoType>Q_LENGTH</QtoType>
    </QtoDef>
    <QtoDef ifdguid="aa3b8880d21511e1800000215ad4efe0">
      <Name>Height</Name><Definition>How high.</Definition><QtoType>Q_LENGTH</QtoType>
    </QtoDef>
  </QtoDefs>
</QtoSetDef>
)xml"}},
    };
    return rules;
}

void vGuidsCheck(RuleRun& run) {
    if (run.outline.kind == SetKind::None)
        return;
    KnownGuids known(run.pMemory());
    vGuidCheck(run, 0, known);
    // Members that are overridden by a later type of their owner are read too.
    const auto count = static_cast<XmlIndex>(run.xml.getElements().size());
    for (XmlIndex element = 1; element != count; ++element) {
        if (run.xml.getElement(element).attributeCount == 0)
            continue;
        const auto* rule = run.vocabulary.pRuleOf(element);
        if (rule && (rule->name == "PropertyDef" || rule->name == "QtoDef"))
            vGuidCheck(run, element, known);
    }
}

} // namespace kiv::kit
