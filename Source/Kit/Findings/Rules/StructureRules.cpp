#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Findings/Rules/Structure/ElementAttributes.h"
#include "Kit/Findings/Rules/Structure/ElementCounts.h"
#include "Kit/Findings/Rules/Structure/ElementTexts.h"
#include "Kit/Findings/Rules/Structure/FixedValues.h"
#include "Kit/Findings/Rules/Structure/UnknownElements.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

constexpr std::string_view NamespaceHosts[] = {"http://buildingsmart-tech.org/",
                                               "http://www.buildingsmart-tech.org/"};

/// The structure of one document: its root, and then each of its elements.
class StructureCheck {
public:
    explicit StructureCheck(RuleRun& run) : run_(run), xml_(run.xml), unknown_(run), values_(run) {}

    void vCheck();

private:
    /// Whether the root is that of the one kind of set, and all else of the other, which is said.
    bool boWrongRoot();
    void vNamespaceCheck();
    void vElementCheck(XmlIndex element, const ElementRule& rule);
    void vUnreadCheck(XmlIndex element);

    RuleRun& run_;
    const XmlPositions& xml_;
    UnknownElements unknown_;
    FixedValues values_;
    bool isWrongRoot_ = false;
};

void StructureCheck::vCheck() {
    isWrongRoot_ = boWrongRoot();
    if (!isWrongRoot_) {
        vNamespaceCheck();
        values_.vTemplateTypeCheck();
    }
    const auto count = static_cast<XmlIndex>(xml_.getElements().size());
    for (XmlIndex element = 0; element != count; ++element) {
        if (const auto* rule = run_.vocabulary.pRuleOf(element))
            vElementCheck(element, *rule);
        else
            vUnreadCheck(element);
    }
    vMemberListsCheck(run_);
}

/// The namespaces of all releases are formed alike: the release is between these.
bool isSetNamespace(std::string_view uri, SetKind kind) {
    const std::string_view folder = kind == SetKind::PropertySet ? "xml/psd/PSD_" : "xml/qto/QTO_";
    constexpr std::string_view End = ".xsd";
    for (const auto host : NamespaceHosts) {
        const auto start = uri.substr(0, host.size());
        auto rest = uri.substr(std::min(host.size(), uri.size()));
        if (!isEqualIgnoringCase(start, host) || !rest.starts_with(folder) || !rest.ends_with(End))
            continue;
        rest.remove_prefix(folder.size());
        rest.remove_suffix(std::min(End.size(), rest.size()));
        // As in "PSD_R2x3".
        return pSchemaReleaseFind(rest) || (rest.starts_with('R') && pSchemaReleaseFind(rest.substr(1)));
    }
    return false;
}

bool StructureCheck::boWrongRoot() {
    const bool isPropertySet = run_.outline.kind == SetKind::PropertySet;
    const auto otherKind = isPropertySet ? SetKind::QuantitySet : SetKind::PropertySet;
    const auto& root = xml_.getElement(0);
    const auto* space = xml_.pAttribute(root, "xmlns");
    const auto* type = xml_.pAttribute(root, "templatetype");
    const bool isOther = space ? isSetNamespace(space->value, otherKind)
                               : type && type->value.starts_with(isPropertySet ? "QTO_" : "PSET_");
    const std::string_view own = isPropertySet ? "PropertyDefs" : "QtoDefs";
    const auto other = SetVocabulary::counterpart(own);
    if (!isOther || childOf(xml_, 0, own) != NoXmlElement || childOf(xml_, 0, other) == NoXmlElement)
        return false;
    run_.add("S018", 0,
             sNameQuoted(root) + (isPropertySet ? " is the root of a property set; this is a quantity set"
                                                : " is the root of a quantity set; this is a property set"))
        .vNote("here it would be " + sQuoted(isPropertySet ? "QtoSetDef" : "PropertySetDef"));
    // What the library reports follows from it.
    run_.vJoin(0, 0);
    return true;
}

void StructureCheck::vNamespaceCheck() {
    const auto* declared = xml_.pAttribute(xml_.getElement(0), "xmlns");
    if (!declared || declared->value.empty() || isSetNamespace(declared->value, run_.outline.kind))
        return;
    const bool isPropertySet = run_.outline.kind == SetKind::PropertySet;
    run_.addAtValue("S012", 0, *declared,
                    sQuoted(declared->value) + " is no namespace of " +
                        (isPropertySet ? "property sets" : "quantity sets"))
        .vNote(isPropertySet
                   ? "property sets of IFC 4 have \"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\""
                   : "quantity sets of IFC 4 have "
                     "\"http://www.buildingsmart-tech.org/xml/qto/QTO_IFC4.xsd\"");
}

void StructureCheck::vElementCheck(XmlIndex element, const ElementRule& rule) {
    const auto& parts = xml_.getElement(element);
    // Readers take an item of an enumeration, and a constant, whatever its name is.
    const auto* const parent = parts.parent == NoXmlElement ? nullptr : run_.vocabulary.pRuleOf(parts.parent);
    if (parent && parent->unknown == UnknownChild::ReadAnyway && parts.name != rule.name)
        unknown_.vUnknownAdd(element);
    if (rule.content == ContentKind::Ignored)
        return;
    const auto before = run_.getDrafts().size();
    vRepeatedChildrenCheck(run_, element, rule);
    vAttributesCheck(run_, element, rule);
    vTextCheck(run_, element, rule);
    vMissingChildrenCheck(run_, element, rule);
    vMissingAttributesCheck(run_, element, rule);
    if (rule.name == "UnitType")
        values_.vUnitTypeCheck(element);
    else if (rule.name == "QtoType")
        values_.vQuantityTypeCheck(element);
    for (auto i = before; rule.isUnread && i != run_.getDrafts().size(); ++i)
        run_.getDrafts()[i].vSeverity(Severity::Warning);
}

/// An element that is not read: one that its parent does not know, or something inside of such a one.
void StructureCheck::vUnreadCheck(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto* parent = parts.parent == NoXmlElement ? nullptr : run_.vocabulary.pRuleOf(parts.parent);
    if (!parent || parent->content == ContentKind::Ignored)
        return;
    if (isWrongRoot_ && parts.parent == 0 && SetVocabulary::boOfOther(run_.outline.kind, parts.name))
        run_.vJoin(element, 0);
    else
        unknown_.vUnreadCheck(element);
}

} // namespace

void vStructureCheck(RuleRun& run) {
    if (run.outline.kind != SetKind::None)
        StructureCheck(run).vCheck();
}

} // namespace kiv::kit
