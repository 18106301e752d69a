#include "Kit/Findings/LibraryReports.h"

#include "Kit/Findings/PredefinedTypes.h"
#include "Kit/Positions/XmlChildren.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Host/Id/KivId.h"
#include "kiv/Kit/Documents/SetDocument.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::schema::Entity;

/// What the library reports of set documents, by place in its sources.
enum class ReportKind : std::size_t {
    UnknownNode,
    UnknownNodeInRange,
    IllegalGuid,
    IllegalTemplateType,
    ClassNotFound,
    PredefinedTypeNotDeclared,
    PredefinedTypeNotDefinedType,
    PredefinedTypeIllegal,
    PropertyEntityNotFound,
    PropertyTypeUnknown,
    DataTypeNotFound,
    UnitTypeEndsWithBlank,
    UnitTypeNotGiven,
    LowerBoundNotFound,
    UpperBoundNotFound,
    ComplexPropertyChildUnknown,
    QuantityTypeUnknown,
    QuantityTypeNotGiven,
    OtherRecord,
    OtherAssertion,
};

constexpr std::size_t KindCount = static_cast<std::size_t>(ReportKind::OtherAssertion) + 1;

struct RecordKind {
    ReportKind kind;
    std::string_view code;
    std::string_view message;
};

constexpr RecordKind RecordKinds[] = {
    {ReportKind::UnknownNode, "R001", "Unknown xml node"},
    {ReportKind::UnknownNodeInRange, "R002", "Unknown xml node in ValueRangeDef"},
    {ReportKind::IllegalGuid, "R003", "Illegal ifdguid in xml file"},
    {ReportKind::IllegalTemplateType, "R004", "Illegal templatetype used"},
    {ReportKind::ClassNotFound, "R005",
     "Applicable class in xml set is not defined in schema (contain spaces?)"},
    {ReportKind::PredefinedTypeNotDeclared, "R006",
     "Predefined type set on xml set, but no \"PredefinedType\" attribute found on entity"},
    {ReportKind::PredefinedTypeNotDefinedType, "R007", "Attribute predefinedType is doesnt exist on entity"},
    {ReportKind::PredefinedTypeIllegal, "R008",
     "Predefined type set on xml set, but the value is illegal for this enumeration"},
};

struct AssertionKind {
    ReportKind kind;
    std::string_view code;
    std::string_view function;
    int line;
};

constexpr std::string_view PropertyEntityCode = "R011";

constexpr AssertionKind AssertionKinds[] = {
    {ReportKind::PropertyEntityNotFound, PropertyEntityCode,
     "kiv::ifc::def::pset::PropertyDef::checkForErrors", 83},
    {ReportKind::PropertyTypeUnknown, "R012", "kiv::ifc::def::pset::PropertyType::pCreate", 46},
    {ReportKind::DataTypeNotFound, "R013", "kiv::ifc::def::pset::TypePropertyReferenceValue::checkForErrors",
     68},
    {ReportKind::UnitTypeEndsWithBlank, "R014", "kiv::ifc::def::pset::TypePropertySingleValue::boCheck", 145},
    {ReportKind::UnitTypeNotGiven, "R015", "kiv::ifc::def::pset::TypePropertySingleValue::boCheck", 149},
    {ReportKind::LowerBoundNotFound, "R016", "kiv::ifc::def::pset::TypePropertyBoundedValue::checkForErrors",
     393},
    {ReportKind::UpperBoundNotFound, "R017", "kiv::ifc::def::pset::TypePropertyBoundedValue::checkForErrors",
     399},
    {ReportKind::ComplexPropertyChildUnknown, "R018",
     "kiv::ifc::def::pset::TypeComplexProperty::TypeComplexProperty", 583},
    {ReportKind::QuantityTypeUnknown, "R019", "kiv::ifc::def::qto::QuantityType::pCreate", 38},
    {ReportKind::QuantityTypeNotGiven, "R020", "kiv::ifc::def::qto::QuantityType::pCreate", 42},
};

constexpr std::string_view OtherRecordCode = "R009";
constexpr std::string_view OtherAssertionCode = "R021";

constexpr std::array<std::string_view, 10> TemplateTypes = {
    "PSET_TYPEDRIVENONLY",   "PSET_TYPEDRIVENOVERRIDE",
    "PSET_OCCURRENCEDRIVEN", "PSET_PERFORMANCEDRIVEN",
    "PSET_MATERIALDRIVEN",   "PSET_PROFILEDRIVEN",
    "QTO_TYPEDRIVENONLY",    "QTO_TYPEDRIVENOVERRIDE",
    "QTO_OCCURRENCEDRIVEN",  "NOTDEFINED"};

/// The entity that a kind of property becomes; empty when it makes no type.
std::string_view entityOf(PropertyKind kind) {
    switch (kind) {
    case PropertyKind::SingleValue:
        return "IfcPropertySingleValue";
    case PropertyKind::EnumeratedValue:
        return "IfcPropertyEnumeratedValue";
    case PropertyKind::BoundedValue:
        return "IfcPropertyBoundedValue";
    case PropertyKind::TableValue:
        return "IfcPropertyTableValue";
    case PropertyKind::ReferenceValue:
        return "IfcPropertyReferenceValue";
    case PropertyKind::ListValue:
        return "IfcPropertyListValue";
    case PropertyKind::Complex:
        return "IfcComplexProperty";
    case PropertyKind::None:
    case PropertyKind::Simple:
        break;
    }
    return {};
}

/// What a report of each kind is about, in the order in which the library makes them.
class ReportPlaces {
public:
    explicit ReportPlaces(const RuleRun& run) : run_(run), xml_(run.xml), vocabulary_(run.vocabulary) {
        vReadingPlacesFind();
        for (std::size_t member = 0; member != run_.outline.members.size(); ++member)
            vCheckPlacesFind(member);
    }

    /// That of the next report of the kind; about nothing when there is none.
    FindingSubject next(ReportKind kind) {
        const auto index = static_cast<std::size_t>(kind);
        const auto& places = places_[index];
        return next_[index] == places.size() ? FindingSubject() : places[next_[index]++];
    }

    /// That of the next record of the kind about a class.
    FindingSubject nextClass(ReportKind kind, std::string_view item) {
        const auto& classes = run_.outline.classes;
        for (auto place = nextClass_; place != classes.size(); ++place) {
            if (boClassFits(classes[place], kind, item)) {
                nextClass_ = place + 1;
                return {classes[place].element, nullptr};
            }
        }
        nextClass_ = classes.size();
        return {};
    }

private:
    void vAdd(ReportKind kind, XmlIndex element, const XmlAttribute* attribute = nullptr) {
        places_[static_cast<std::size_t>(kind)].push_back({element, attribute});
    }

    bool boClassFits(const ClassOutline& applicable, ReportKind kind, std::string_view item);
    void vReadingPlacesFind();
    void vUnknownFind(XmlIndex element);
    void vAttributesFind(XmlIndex element, const ElementRule& rule);
    void vUnitFind(XmlIndex element);
    void vQuantityTypeFind(XmlIndex element);
    void vCheckPlacesFind(std::size_t member);
    void vColumnsFind(const MemberOutline& member, std::string_view tag);
    void vTypeFind(XmlIndex parent, const XmlAttribute* before);
    void vBoundsFind(const MemberOutline& member);
    void vBoundFind(ReportKind kind, const MemberOutline& member, std::string_view tag);

    const RuleRun& run_;
    const XmlPositions& xml_;
    const SetVocabulary& vocabulary_;
    std::array<std::vector<FindingSubject>, KindCount> places_;
    std::array<std::size_t, KindCount> next_{};
    std::size_t nextClass_ = 0;
    PredefinedTypes predefinedTypes_;
};

bool ReportPlaces::boClassFits(const ClassOutline& applicable, ReportKind kind, std::string_view item) {
    if (kind == ReportKind::ClassNotFound)
        return applicable.name == item;
    if (kind != ReportKind::PredefinedTypeIllegal)
        return applicable.text == item;
    if (applicable.name != item || applicable.predefinedType.empty())
        return false;
    const auto* entity = Entity::pFrom(run_.schema.pObjectFromName(applicable.name));
    const auto* items = entity ? predefinedTypes_.pItems(*entity) : nullptr;
    return !items || !items->boContains(applicable.predefinedType);
}

void ReportPlaces::vReadingPlacesFind() {
    const auto count = static_cast<XmlIndex>(xml_.getElements().size());
    for (XmlIndex element = 0; element != count; ++element) {
        if (const auto* rule = vocabulary_.pRuleOf(element))
            vAttributesFind(element, *rule);
        else
            vUnknownFind(element);
    }
}

void ReportPlaces::vUnknownFind(XmlIndex element) {
    const auto parent = xml_.getElement(element).parent;
    const auto* rule = parent == NoXmlElement ? nullptr : vocabulary_.pRuleOf(parent);
    if (!rule || rule->content != ContentKind::Elements)
        return;
    if (rule->unknown == UnknownChild::Recorded)
        vAdd(ReportKind::UnknownNode, element);
    else if (rule->unknown == UnknownChild::RecordedInRange)
        vAdd(ReportKind::UnknownNodeInRange, element);
    else if (rule->unknown == UnknownChild::Asserted && !rule->isFirstChildOnly)
        vAdd(ReportKind::ComplexPropertyChildUnknown, element);
    else if (rule->unknown == UnknownChild::Asserted && xml_.getElement(parent).firstChild == element)
        vAdd(ReportKind::PropertyTypeUnknown, element);
}

void ReportPlaces::vAttributesFind(XmlIndex element, const ElementRule& rule) {
    const auto& parts = xml_.getElement(element);
    const auto* guid = rule.attributes.empty() || rule.attributes.front() != "ifdguid"
                           ? nullptr
                           : xml_.pAttribute(parts, "ifdguid");
    if (guid && !kiv::Guid().boSet(guid->value))
        vAdd(ReportKind::IllegalGuid, element, guid);
    if (element == 0) {
        const auto* type = xml_.pAttribute(parts, "templatetype");
        if (type && !type->value.empty() &&
            std::ranges::find(TemplateTypes, type->value) == TemplateTypes.end())
            vAdd(ReportKind::IllegalTemplateType, element, type);
    } else if (rule.name == "IfcVersion" && !xml_.pAttribute(parts, "version")) {
        vAdd(ReportKind::UnknownNode, element);
    } else if (rule.name == "UnitType") {
        vUnitFind(element);
    } else if (rule.name == "QtoType") {
        vQuantityTypeFind(element);
    }
}

void ReportPlaces::vUnitFind(XmlIndex element) {
    if (xml_.getElement(xml_.getElement(element).parent).name == "TypeSimpleProperty")
        return;
    const auto* type = xml_.pAttribute(xml_.getElement(element), "type");
    if (!type) {
        vAdd(ReportKind::UnknownNode, element);
        vAdd(ReportKind::UnitTypeNotGiven, element);
    } else if (type->value.ends_with(' ')) {
        vAdd(ReportKind::UnitTypeEndsWithBlank, element, type);
    }
}

void ReportPlaces::vQuantityTypeFind(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const bool hasChild = !parts.text.empty() || parts.firstChild != NoXmlElement || parts.isTextHidden;
    if (!hasChild)
        vAdd(ReportKind::QuantityTypeNotGiven, element);
    else if (std::ranges::find(QuantityTypes, parts.text) == std::end(QuantityTypes))
        vAdd(ReportKind::QuantityTypeUnknown, element);
}

void ReportPlaces::vCheckPlacesFind(std::size_t index) {
    const auto& member = run_.outline.members[index];
    const auto entity = entityOf(member.kind);
    if (entity.empty())
        return;
    if (!Entity::pFrom(run_.schema.pObjectFromName(entity)))
        vAdd(ReportKind::PropertyEntityNotFound, member.kindElement);
    if (member.kind == PropertyKind::TableValue) {
        vColumnsFind(member, "DefiningValue");
        vColumnsFind(member, "DefinedValue");
    } else if (member.kind == PropertyKind::ListValue) {
        vColumnsFind(member, "ListValue");
    } else if (member.kind == PropertyKind::ReferenceValue) {
        vTypeFind(member.kindElement, xml_.pAttribute(xml_.getElement(member.kindElement), "reftype"));
    } else if (member.kind == PropertyKind::SingleValue || member.kind == PropertyKind::BoundedValue) {
        vTypeFind(member.kindElement, nullptr);
        vBoundsFind(member);
    }
}

void ReportPlaces::vColumnsFind(const MemberOutline& member, std::string_view tag) {
    for (const auto column : XmlChildren(xml_, member.kindElement)) {
        if (xml_.getElement(column).name == tag)
            vTypeFind(column, nullptr);
    }
}

/// Of several types the last one counts.
void ReportPlaces::vTypeFind(XmlIndex parent, const XmlAttribute* before) {
    FindingSubject subject{parent, before};
    for (const auto child : XmlChildren(xml_, parent)) {
        const auto& element = xml_.getElement(child);
        const auto* type = element.name == "DataType" ? xml_.pAttribute(element, "type") : nullptr;
        if (type)
            subject = {child, type};
    }
    if (!subject.attribute)
        return;
    const auto name = subject.attribute->value;
    if (!name.empty() && !run_.schema.pObjectFromName(name))
        vAdd(ReportKind::DataTypeNotFound, subject.element, subject.attribute);
}

void ReportPlaces::vBoundsFind(const MemberOutline& member) {
    if (member.kind != PropertyKind::BoundedValue)
        return;
    vBoundFind(ReportKind::LowerBoundNotFound, member, "LowerBoundValue");
    vBoundFind(ReportKind::UpperBoundNotFound, member, "UpperBoundValue");
}

/// Ranges that are repeated override each other's bounds.
void ReportPlaces::vBoundFind(ReportKind kind, const MemberOutline& member, std::string_view tag) {
    FindingSubject subject;
    for (const auto range : XmlChildren(xml_, member.kindElement)) {
        if (xml_.getElement(range).name != "ValueRangeDef")
            continue;
        for (const auto bound : XmlChildren(xml_, range)) {
            const auto& element = xml_.getElement(bound);
            const auto* value = element.name == tag ? xml_.pAttribute(element, "value") : nullptr;
            if (value)
                subject = {bound, value};
        }
    }
    if (!subject.attribute)
        return;
    const auto bound = subject.attribute->value;
    if (!bound.empty() && !run_.schema.pObjectFromName(bound))
        vAdd(kind, subject.element, subject.attribute);
}

bool isAboutClass(ReportKind kind) {
    return kind >= ReportKind::ClassNotFound && kind <= ReportKind::PredefinedTypeIllegal;
}

TextPosition positionOf(const RuleRun& run, const FindingSubject& subject, std::size_t line) {
    if (subject.attribute) {
        const auto position = run.xml.valuePositionOf(*subject.attribute);
        return position.length == 0 ? run.xml.positionOf(*subject.attribute) : position;
    }
    if (subject.element == NoXmlElement)
        return {line, 0, 0};
    const auto& element = run.xml.getElement(subject.element);
    const bool isText = element.firstChild == NoXmlElement && !element.trimmedText.empty();
    return isText ? run.xml.textPositionOf(element) : run.xml.positionOf(element);
}

LibraryReport reportOf(const RuleRun& run, ReportPlaces& places, const ifc::def::xml::ErrorRecord& record) {
    const auto* const known = std::ranges::find(RecordKinds, record.message, &RecordKind::message);
    LibraryReport report;
    const bool isKnown = known != std::end(RecordKinds);
    report.code = isKnown ? known->code : OtherRecordCode;
    report.message = record.message;
    report.value = record.item;
    if (isKnown)
        report.subject =
            isAboutClass(known->kind) ? places.nextClass(known->kind, record.item) : places.next(known->kind);
    report.position = positionOf(run, report.subject, record.line);
    return report;
}

std::string valueOf(const RuleRun& run, const FindingSubject& subject) {
    if (subject.attribute)
        return std::string(subject.attribute->value);
    if (subject.element == NoXmlElement)
        return {};
    const auto& element = run.xml.getElement(subject.element);
    const bool isText = element.firstChild == NoXmlElement && !element.trimmedText.empty();
    return std::string(isText ? element.trimmedText : element.name);
}

LibraryReport reportOf(const RuleRun& run, ReportPlaces& places, const Assertion& record) {
    const auto isOf = [&record](const AssertionKind& kind) {
        return kind.function == record.function && kind.line == record.line;
    };
    const auto* const known = std::ranges::find_if(AssertionKinds, isOf);
    LibraryReport report;
    const bool isKnown = known != std::end(AssertionKinds);
    report.code = isKnown ? known->code : OtherAssertionCode;
    report.message = record.message;
    report.origin = FindingOrigin{std::string(record.function), std::string(record.file), record.line};
    if (!isKnown)
        return report;
    report.subject = places.next(known->kind);
    report.value = valueOf(run, report.subject);
    report.position = positionOf(run, report.subject, 0);
    report.isHarmless =
        known->kind == ReportKind::LowerBoundNotFound || known->kind == ReportKind::UpperBoundNotFound;
    return report;
}

} // namespace

bool boMayHaveUnknownType(const SetDocument& document) {
    if (document.isRefused || !document.errors.getRecords().empty())
        return true;
    const auto* const kind =
        std::ranges::find(AssertionKinds, ReportKind::DataTypeNotFound, &AssertionKind::kind);
    return std::ranges::any_of(document.assertions, [kind](const DocumentAssertion& assertion) {
        return assertion.record.function == kind->function && assertion.record.line == kind->line;
    });
}

std::vector<LibraryReport> libraryReportsOf(const RuleRun& run) {
    // For most documents, whose places then need not be found.
    if (run.document.errors.getRecords().empty() && run.document.assertions.empty())
        return {};
    ReportPlaces places(run);
    std::vector<LibraryReport> reports;
    for (const auto& record : run.document.errors.getRecords())
        reports.push_back(reportOf(run, places, record));
    std::set<std::string> lacking;
    for (const auto& assertion : run.document.assertions) {
        auto report = reportOf(run, places, assertion.record);
        // What the schema lacks for one property it lacks for all of the kind.
        if (report.code != PropertyEntityCode || lacking.insert(report.value).second)
            reports.push_back(std::move(report));
    }
    return reports;
}

} // namespace kiv::kit
