#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include "Base/Ascii.h"
#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace kiv::ifc::def::xml {

namespace {

constexpr std::string_view GuidAttribute = "ifdguid";

/// In the order of the enumerators.
constexpr std::array<std::string_view, 10> TemplateTypeTexts = {
    "PSET_TYPEDRIVENONLY",   "PSET_TYPEDRIVENOVERRIDE",
    "PSET_OCCURRENCEDRIVEN", "PSET_PERFORMANCEDRIVEN",
    "PSET_MATERIALDRIVEN",   "PSET_PROFILEDRIVEN",
    "QTO_TYPEDRIVENONLY",    "QTO_TYPEDRIVENOVERRIDE",
    "QTO_OCCURRENCEDRIVEN",  "NOTDEFINED"};
static_assert(TemplateTypeTexts.size() == static_cast<std::size_t>(TemplateType::NOTDEFINED) + 1);

kiv::Guid guidRead(const kiv::xml::const_Element& element, XmlSetErrors& errors) {
    kiv::Guid guid;
    const auto attribute = element.AttributeNodeGet(GuidAttribute);
    if (attribute && !guid.boSet(valueOf(*attribute)))
        vRecordAdd(errors, RecordMessage::IllegalGuid, attribute->getValue(), lineOf(element));
    return guid;
}

TemplateType templateTypeRead(const kiv::xml::const_Element& element, XmlSetErrors& errors) {
    const auto attribute = element.AttributeNodeGet("templatetype");
    if (!attribute)
        return TemplateType::NOTDEFINED;
    const auto value = valueOf(*attribute);
    if (value.empty())
        return TemplateType::NOTDEFINED;
    const auto found = std::find(TemplateTypeTexts.begin(), TemplateTypeTexts.end(), value);
    if (found != TemplateTypeTexts.end())
        return static_cast<TemplateType>(found - TemplateTypeTexts.begin());
    vRecordAdd(errors, RecordMessage::IllegalTemplateType, attribute->getValue(), lineOf(element));
    return TemplateType::NOTDEFINED;
}

/// True when the defined type is an enumeration with that item.
bool boEnumerationHolds(const schema::Type& type, std::string_view item) {
    const auto* enumeration = dynamic_cast<const schema::DataTypeEnum*>(type.pDataType());
    return enumeration && enumeration->boContains(item);
}

} // namespace

std::string_view sTemplateTypeText(TemplateType type) {
    return TemplateTypeTexts[static_cast<std::size_t>(type)];
}

DefBase::DefBase(const kiv::xml::const_Element& element, XmlSetErrors& errors) :
    ifdGuid_(guidRead(element, errors)), line_(lineOf(element)) {}

DefBase::DefBase(std::string_view name) : name_(name) {}

DefBase::~DefBase() = default;

bool DefBase::boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter) {
    if (tag == NameTag) {
        vTextTake(child, name_, meter);
        return true;
    }
    if (tag == DefinitionTag) {
        vTextTake(child, definition_, meter);
        return true;
    }
    return false;
}

void DefBase::vDefinitionAliasesAdd(const kiv::xml::const_Element& list, std::string_view itemTag,
                                    WorkMeter* meter) {
    definitionAliases_.vAliasAdd(list, itemTag, meter);
}

void DefBase::vTextsExport(kiv::xml::Element& element) const {
    vTextElementAppend(element, NameTag, name_);
    vTextElementAppend(element, DefinitionTag, definition_);
}

Def::Def(const SetDef* owner, std::string_view name) : DefBase(name), owner_(owner) {}

Def::Def(const SetDef* owner, const kiv::xml::const_Element& element, XmlSetErrors& errors) :
    DefBase(element, errors), owner_(owner) {}

Def::~Def() = default;

std::string Def::getConcept() const {
    return owner_->getName() + "." + getName();
}

bool Def::boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter) {
    if (DefBase::boCheck(tag, child, meter))
        return true;
    if (tag == NameAliasesTag) {
        nameAliases_.vAliasAdd(child, NameAliasTag, meter);
        return true;
    }
    if (tag == DefinitionAliasesTag) {
        vDefinitionAliasesAdd(child, DefinitionAliasTag, meter);
        return true;
    }
    return false;
}

void Def::vExportCommon(kiv::xml::Element& element, const ExtraExportInfo* info) const {
    vGuidExport(element, info);
    vTextsExport(element);
    // The lower-case initials are deliberate: readers of exported sets look for these tags, although the
    // documents that are read here have "NameAliases" and "NameAlias".
    nameAliases_.vExport(element, "nameAliases", "nameAlias");
    getDefinitionAliases().vExport(element, DefinitionAliasesTag, DefinitionAliasTag);
}

kiv::xml::Element Def::exportBegin(kiv::xml::Element& parent, std::string_view tag,
                                   const ExtraExportInfo* info) const {
    auto element = parent.ElementNodeAppend(tag);
    if (info && info->hook)
        info->hook(*this, element);
    vExportCommon(element, info);
    return element;
}

void Def::vEntityExpect(const schema::Schema& schema, const TypeBase& type, Report report) {
    if (kiv::assert::Assert::isEnabled() &&
        !schema::Entity::pFrom(schema.pObjectFromName(type.sEntityName())))
        vReport(report);
}

void Def::vGuidExport(kiv::xml::Element& element, const ExtraExportInfo* info) const {
    if (getIfdGuid() != kiv::Guid())
        element.vAttributeSet(GuidAttribute, getIfdGuid().toString(false));
    else if (info && info->generateGuids)
        element.vAttributeSet(GuidAttribute, kiv::Guid::generate().toString(false));
}

/// What is wrong with an applicable class, and whether it makes the check fail.
struct SetDef::Finding {
    std::string item;
    RecordMessage message;
    bool fails;
};

/// Finds the attribute for the predefined type of an entity, and remembers it for the entity and for all its
/// supertypes that were searched: a document may list one entity, or the entities of one line, many times.
class SetDef::PredefinedTypes {
public:
    /// Null when neither the entity nor a supertype declares it.
    const schema::Attribute* pAttributeOf(const schema::Entity& entity) {
        const schema::Attribute* attribute = nullptr;
        std::vector<const schema::Entity*> passed;
        for (const auto* current = &entity; current && !attribute; current = current->pSupertype()) {
            if (const auto known = found_.find(current); known != found_.end()) {
                attribute = known->second;
                break;
            }
            passed.push_back(current);
            attribute = current->pAttributeFromNameUpper("PREDEFINEDTYPE", false);
        }
        for (const auto* current : passed)
            found_.emplace(current, attribute);
        return attribute;
    }

private:
    std::unordered_map<const schema::Entity*, const schema::Attribute*> found_;
};

SetDef::SetDef(const kiv::xml::const_Element& element, XmlSetErrors& errors) :
    DefBase(element, errors), templateType_(templateTypeRead(element, errors)) {}

SetDef::SetDef(std::string_view name) : DefBase(name) {}

SetDef::~SetDef() = default;

bool SetDef::boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter) {
    if (DefBase::boCheck(tag, child, meter))
        return true;
    if (tag == "IfcVersion")
        return boAttributeTake(child, "version", ifcVersion_, meter);
    if (tag == "ApplicableClasses") {
        vApplicableClassesRead(child, meter);
        return true;
    }
    if (tag == "ApplicableTypeValue") {
        vTextTake(child, applicableTypeValue_, meter);
        return true;
    }
    return false;
}

void SetDef::vApplicableClassesRead(const kiv::xml::const_Element& list, WorkMeter* meter) {
    for (const auto& child : ElementChildren(list)) {
        vLook(meter);
        if (!child.boNodeNameIs("ClassName"))
            continue;
        // Blanks only: a tab or a line break stays in the name, so that the check reports the class.
        const auto value = firstChildText(child).value_or(NodeText());
        const auto text = ascii::trimmed(value, " ");
        if (text.empty())
            continue;
        vObjectTake(meter);
        // The name takes all of the text; what follows a "/" is a text of its own.
        vTextMemoryTake(text.size(), meter);
        vTextMemoryTake(text.size() - std::min(text.find('/'), text.size()), meter);
        vRoomForOne(applicableClasses_, meter);
        applicableClasses_.emplace_back(std::string(text), lineOf(child));
    }
}

void SetDef::vExportCommon(kiv::xml::Element& element) const {
    vTextsExport(element);
    auto classes = element.ElementNodeAppend("ApplicableClasses");
    for (const ApplicableClasses& applicable : applicableClasses_)
        applicable.vExport(classes);
    vTextElementAppend(element, "ApplicableTypeValue", applicableTypeValue_);
}

bool SetDef::checkForErrors(const schema::Schema& schema, XmlSetErrors& errors) const {
    bool passes = true;
    PredefinedTypes predefinedTypes;
    for (const ApplicableClasses& applicable : applicableClasses_) {
        auto finding = findingOf(applicable, schema, predefinedTypes);
        if (!finding)
            continue;
        // Each finding overrides those before it: hosts expect the last one to decide.
        passes = !finding->fails;
        vRecordAdd(errors, finding->message, std::move(finding->item), applicable.getLine());
    }
    if (!errors.getRecords().empty())
        errors.vSetNameSet(getName());
    return passes;
}

std::optional<SetDef::Finding> SetDef::findingOf(const ApplicableClasses& applicable,
                                                 const schema::Schema& schema,
                                                 PredefinedTypes& predefinedTypes) {
    const auto* entity = schema::Entity::pFrom(schema.pObjectFromName(applicable.getClassName()));
    if (!entity)
        return Finding{applicable.getClassName(), RecordMessage::ClassNotFound, false};
    if (applicable.getPredefinedType().empty())
        return std::nullopt;

    const auto* attribute = predefinedTypes.pAttributeOf(*entity);
    if (!attribute)
        return Finding{applicable.sCombined(), RecordMessage::PredefinedTypeNotDeclared, false};
    const auto* type = schema::Type::pFrom(attribute->pFirstType());
    if (!type)
        return Finding{applicable.sCombined(), RecordMessage::PredefinedTypeNotDefinedType, true};
    if (boEnumerationHolds(*type, applicable.getPredefinedType()))
        return std::nullopt;
    return Finding{applicable.getClassName(), RecordMessage::PredefinedTypeIllegal, false};
}

TypeBase::~TypeBase() = default;

bool TypeBase::checkForErrors(const schema::Schema&, XmlSetErrors&) const {
    return true;
}

} // namespace kiv::ifc::def::xml
