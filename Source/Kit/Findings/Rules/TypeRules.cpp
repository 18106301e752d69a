#include "Kit/Findings/Rules/TypeRules.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/RuleNames.h"
#include "Kit/Findings/Rules/Types/EnumerationItems.h"
#include "Kit/Findings/Rules/Types/SchemaValues.h"
#include "Kit/Findings/Rules/Types/TypedValues.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace schema = ifc::def::schema;

namespace {

/// The attribute of each kind of property that holds its values, or what it refers to.
struct ValueAttribute {
    PropertyKind kind;
    std::string_view entity;
    std::string_view attribute;
};

constexpr std::array<ValueAttribute, 5> ValueAttributes = {{
    {PropertyKind::SingleValue, "IfcPropertySingleValue", "NominalValue"},
    {PropertyKind::BoundedValue, "IfcPropertyBoundedValue", "UpperBoundValue"},
    {PropertyKind::TableValue, "IfcPropertyTableValue", "DefiningValues"},
    {PropertyKind::ListValue, "IfcPropertyListValue", "ListValues"},
    {PropertyKind::ReferenceValue, "IfcPropertyReferenceValue", "PropertyReference"},
}};

/// The names that types have in XML Schema and in programs.
constexpr std::pair<std::string_view, std::string_view> ForeignTypes[] = {
    {"STRING", "IfcLabel"},    {"DOUBLE", "IfcReal"},     {"FLOAT", "IfcReal"},       {"DECIMAL", "IfcReal"},
    {"NUMBER", "IfcReal"},     {"INT", "IfcInteger"},     {"LONG", "IfcInteger"},     {"BOOL", "IfcBoolean"},
    {"BOOLEAN", "IfcBoolean"}, {"INTEGER", "IfcInteger"}, {"DATETIME", "IfcDateTime"}};

/// The defined type for it; empty when it is none of them.
std::string_view typeForForeign(std::string_view name) {
    const auto upper = sUpperCase(name.substr(name.find(':') + 1));
    const auto* const found =
        std::ranges::find(ForeignTypes, upper, &std::pair<std::string_view, std::string_view>::first);
    return found == std::end(ForeignTypes) ? std::string_view() : found->second;
}

/// Looks at one document for all rules of the family.
class TypeCheck {
public:
    explicit TypeCheck(RuleRun& run) :
        run_(run), xml_(run.xml), names_(run), values_(run), items_(run), selected_(run.schema) {}

    void vRun();

private:
    const MemberOutline& memberOf(const TypeOutline& type) const {
        return run_.outline.members[static_cast<std::size_t>(type.member)];
    }

    void vTypeCheck(const TypeOutline& type);
    bool boCounts(const TypeOutline& type) const;
    bool boIsGiven(const TypeOutline& type) const;
    bool boHasReference(const TypeOutline& type) const;
    bool boRefers(const TypeOutline& type) const;
    void vNotGivenAdd(const TypeOutline& type);
    std::string sKindFor(const TypeOutline& type) const;
    std::string sThe(const TypeOutline& type, std::string_view name) const;
    const schema::ObjectBase* pObjectOf(const TypeOutline& type);
    void vUnknownAdd(const TypeOutline& type, std::string_view name);
    void vSpellingCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vUseCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vValueTypeCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vReferenceCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vContradictionCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vSelectAdd(const TypeOutline& type, const schema::ObjectBase& object,
                    const schema::DataTypeSelect& select);
    const schema::Type* pSelect(PropertyKind kind);
    bool boIsLegal(const schema::Type* select, const schema::ObjectBase& object);

    void vMemberCheck(const MemberOutline& member);
    void vTableCheck(const MemberOutline& member);
    void vColumnsCheck(const MemberOutline& member);
    std::size_t valuesIn(XmlIndex column) const;
    void vListCheck(const MemberOutline& member);
    bool boHasChild(XmlIndex parent, std::string_view tag) const;
    void vDataTypeRequire(XmlIndex element);
    void vFirstTypeCheck(XmlIndex column);
    void vSimpleAdd(XmlIndex element);
    void vReferenceRequire(const MemberOutline& member);

    RuleRun& run_;
    const XmlPositions& xml_;
    RuleNames names_;
    TypedValues values_;
    EnumerationItems items_;
    SelectedValues selected_;
    std::unordered_map<int, const schema::Type*> selects_;
    // What the selects were found to select: a document names few types, and most of them several times.
    std::vector<std::pair<const schema::Type*, const schema::ObjectBase*>> legal_;
    // The members whose "reftype" says what they refer to.
    std::vector<bool> hasReference_;
};

void TypeCheck::vRun() {
    hasReference_.assign(run_.outline.members.size(), false);
    for (const auto& type : run_.outline.types) {
        if (type.use == TypeUse::Reference && boIsGiven(type))
            hasReference_[static_cast<std::size_t>(type.member)] = true;
    }
    for (const auto& type : run_.outline.types)
        vTypeCheck(type);
    for (const auto& member : run_.outline.members)
        vMemberCheck(member);
}

/// Of several data types of one value the last one counts that has a "type".
bool TypeCheck::boCounts(const TypeOutline& type) const {
    const auto& types = run_.outline.types;
    const auto parent = xml_.getElement(type.element).parent;
    for (auto next = static_cast<std::size_t>(&type - types.data()) + 1; next != types.size(); ++next) {
        if (xml_.getElement(types[next].element).parent != parent)
            break;
        if (types[next].attribute)
            return false;
    }
    return true;
}

bool TypeCheck::boIsGiven(const TypeOutline& type) const {
    return type.attribute && !trimmed(type.attribute->value).empty();
}

bool TypeCheck::boHasReference(const TypeOutline& type) const {
    return hasReference_[static_cast<std::size_t>(type.member)];
}

/// Whether the name is that of what a reference leads to.
bool TypeCheck::boRefers(const TypeOutline& type) const {
    return type.use == TypeUse::Reference ||
           (type.use == TypeUse::ReferenceDataType && !boHasReference(type));
}

/// What the name is expected to be.
std::string TypeCheck::sKindFor(const TypeOutline& type) const {
    return boRefers(type) ? "entity" : "type";
}

/// "the type \"IfcLabel\""
std::string TypeCheck::sThe(const TypeOutline& type, std::string_view name) const {
    return "the " + sKindFor(type) + " " + sQuoted(name);
}

void TypeCheck::vTypeCheck(const TypeOutline& type) {
    const auto* object = pObjectOf(type);
    if (!object)
        return;
    vSpellingCheck(type, *object);
    vUseCheck(type, *object);
    const auto* measure = schema::Type::pFrom(object);
    if (!measure || type.use == TypeUse::Reference || !boCounts(type))
        return;
    values_.vCheck(type, *measure);
}

/// What a time series is made of need not be said, nor need "reftype" when "DataType" is there. Nobody reads
/// the type of an older simple property.
void TypeCheck::vNotGivenAdd(const TypeOutline& type) {
    const bool isBesideReference = type.use == TypeUse::ReferenceDataType && boHasReference(type);
    const bool isNeeded = type.use == TypeUse::Value || type.use == TypeUse::ReferenceDataType;
    if (isBesideReference && type.attribute)
        run_.addAtValue("T008", type.element, *type.attribute,
                        "the data type is empty, and readers take it in place of \"reftype\"");
    else if (isBesideReference || !isNeeded)
        return;
    else if (type.attribute)
        run_.addAtValue("T008", type.element, *type.attribute, "the data type is empty");
    else
        run_.add("T008", type.element, "\"DataType\" has no attribute \"type\"");
}

/// Null when no type is named, or an unknown one; both are said then.
const schema::ObjectBase* TypeCheck::pObjectOf(const TypeOutline& type) {
    if (!boIsGiven(type)) {
        if (!run_.boMisplaced(type.element) && !run_.boRepeated(type.element))
            vNotGivenAdd(type);
        return nullptr;
    }
    const auto name = trimmed(type.attribute->value);
    const auto* object = run_.schema.pObjectFromName(name);
    if (!object)
        vUnknownAdd(type, name);
    return object;
}

void TypeCheck::vUnknownAdd(const TypeOutline& type, std::string_view name) {
    if (const auto* other = names_.pOtherWith(name)) {
        run_.addAtValue("T002", type.element, *type.attribute,
                        sThe(type, name) + " is not in " + names_.sSchema() + " but in " + other->name)
            .finding.missingNames.emplace_back(name);
        return;
    }
    auto& draft = run_.addAtValue("T001", type.element, *type.attribute,
                                  names_.sSchema() + " has no " + sKindFor(type) + " " + sQuoted(name));
    draft.finding.missingNames.emplace_back(name);
    const bool wantsEntity = boRefers(type);
    if (const auto meant = wantsEntity ? std::string_view() : typeForForeign(name);
        !meant.empty() && run_.schema.pObjectFromName(meant))
        draft.vNote("did you mean " + sQuoted(meant) + "?");
    else
        names_.vNearestNote(draft, name, wantsEntity ? SchemaNames::Entities : SchemaNames::Types);
}

void TypeCheck::vSpellingCheck(const TypeOutline& type, const schema::ObjectBase& object) {
    const auto value = type.attribute->value;
    const auto name = trimmed(value);
    if (name.size() != value.size()) {
        run_.addAtValue("T007", type.element, *type.attribute,
                        "there are blanks around the name of the type " + sQuoted(value))
            .vEdit(run_.xml.valueOf(*type.attribute).bytes, object.getName());
        return;
    }
    if (name != object.getName())
        run_.addAtValue("T006", type.element, *type.attribute,
                        sThe(type, name) + " is written " + sQuoted(object.getName()) + " in " +
                            names_.sSchema())
            .vEdit(run_.xml.valueOf(*type.attribute).bytes, object.getName());
}

void TypeCheck::vUseCheck(const TypeOutline& type, const schema::ObjectBase& object) {
    if (type.use == TypeUse::Value)
        vValueTypeCheck(type, object);
    else if (boRefers(type))
        vReferenceCheck(type, object);
    else if (type.use == TypeUse::ReferenceDataType && boCounts(type))
        vContradictionCheck(type, object);
}

/// Entities that hold values, of which "DataType" may say of what type they are.
constexpr std::string_view ValueHolders[] = {"IfcTimeSeries", "IfcAppliedValue", "IfcTable"};

/// Whether the one entity is the other or a subtype of it.
bool isA(const schema::Entity& entity, const schema::Entity& supertype) {
    const auto* line = &entity;
    while (line && line != &supertype)
        line = line->pSupertype();
    return line != nullptr;
}

/// What "DataType" names beside "reftype": the type of the values that the entity holds, or the same again.
void TypeCheck::vContradictionCheck(const TypeOutline& type, const schema::ObjectBase& object) {
    const auto* reference = xml_.pAttribute(xml_.getElement(memberOf(type).kindElement), "reftype");
    const auto* entity = schema::Entity::pFrom(run_.schema.pObjectFromName(trimmed(reference->value)));
    if (!entity)
        return;
    for (const auto name : ValueHolders) {
        const auto* holder = schema::Entity::pFrom(run_.schema.pObjectFromName(name));
        if (holder && isA(*entity, *holder))
            return;
    }
    const auto* other = schema::Entity::pFrom(&object);
    if (other && (isA(*entity, *other) || isA(*other, *entity)))
        return;
    run_.addAtValue("T024", type.element, *type.attribute,
                    sQuoted(object.getName()) + " contradicts \"reftype\", which names " +
                        sQuoted(entity->getName()))
        .vNoteAt("\"reftype\" is here; readers take \"DataType\"", run_.xml.valuePositionOf(*reference));
}

void TypeCheck::vValueTypeCheck(const TypeOutline& type, const schema::ObjectBase& object) {
    const auto* valueType = schema::Type::pFrom(&object);
    if (!valueType) {
        auto& draft = run_.addAtValue("T003", type.element, *type.attribute,
                                      sQuoted(object.getName()) + " is " + sKindOf(object) +
                                          ", and a property of this kind has values of a defined type");
        if (object.getKind() == schema::ObjectBase::Type::Entity)
            draft.vNote("a property that refers to an entity is a \"TypePropertyReferenceValue\"");
        return;
    }
    if (const auto* members = dynamic_cast<const schema::DataTypeSelect*>(valueType->pDataType())) {
        vSelectAdd(type, object, *members);
        return;
    }
    const auto* select = pSelect(memberOf(type).kind);
    if (!select || boIsLegal(select, object))
        return;
    run_.addAtValue("T005", type.element, *type.attribute,
                    "values of " + sQuoted(object.getName()) + " cannot be in a property: " +
                        std::string(select->getName()) + " does not select that type");
}

void TypeCheck::vSelectAdd(const TypeOutline& type, const schema::ObjectBase& object,
                           const schema::DataTypeSelect& select) {
    const auto members = select.getMemberNames();
    if (!selected_.boHas(select)) {
        run_.addAtValue(
                "T003", type.element, *type.attribute,
                sQuoted(object.getName()) +
                    " selects entities only, and a property of this kind has values of a defined type")
            .vNote("a property that refers to an entity is a \"TypePropertyReferenceValue\"");
        return;
    }
    run_.addAtValue("T018", type.element, *type.attribute,
                    sQuoted(object.getName()) +
                        " is a SELECT, which leaves open of which type the values are")
        .vNote("it selects " + sQuotedList({members.begin(), members.end()}));
}

void TypeCheck::vReferenceCheck(const TypeOutline& type, const schema::ObjectBase& object) {
    const auto* entity = schema::Entity::pFrom(&object);
    const auto* select = pSelect(PropertyKind::ReferenceValue);
    const auto* asType = schema::Type::pFrom(&object);
    if (!entity && !(asType && dynamic_cast<const schema::DataTypeSelect*>(asType->pDataType()))) {
        run_.addAtValue("T004", type.element, *type.attribute,
                        sQuoted(object.getName()) + " is " + sKindOf(object) +
                            ", and a reference is to an entity")
            .vNote("a property with values of a defined type is a \"TypePropertySingleValue\"");
        return;
    }
    if (!entity || boIsSelected(select, object))
        return;
    auto& draft = run_.addAtValue("T005", type.element, *type.attribute,
                                  "a property cannot refer to " + sQuoted(object.getName()) + ": " +
                                      std::string(select->getName()) + " does not select that entity");
    const auto members = static_cast<const schema::DataTypeSelect*>(select->pDataType())->getMemberNames();
    draft.vNote("it selects " + sQuotedList({members.begin(), members.end()}));
}

const schema::Type* TypeCheck::pSelect(PropertyKind kind) {
    const auto [place, isNew] = selects_.try_emplace(static_cast<int>(kind), nullptr);
    const auto* const entry = std::ranges::find(ValueAttributes, kind, &ValueAttribute::kind);
    if (isNew && entry != ValueAttributes.end())
        place->second = pSelectOf(run_.schema, entry->entity, entry->attribute);
    return place->second;
}

bool TypeCheck::boIsLegal(const schema::Type* select, const schema::ObjectBase& object) {
    constexpr std::size_t maxKept = 16;
    const std::pair asked(select, &object);
    if (std::ranges::find(legal_, asked) != legal_.end())
        return true;
    const bool isLegal = boIsSelected(select, object);
    if (isLegal && legal_.size() != maxKept)
        legal_.push_back(asked);
    return isLegal;
}

void TypeCheck::vMemberCheck(const MemberOutline& member) {
    switch (member.kind) {
    case PropertyKind::SingleValue:
    case PropertyKind::BoundedValue:
        vDataTypeRequire(member.kindElement);
        break;
    case PropertyKind::Simple:
        vSimpleAdd(member.kindElement);
        break;
    case PropertyKind::ReferenceValue:
        vReferenceRequire(member);
        break;
    case PropertyKind::EnumeratedValue:
        items_.vItemsCheck(member);
        items_.vConstantsCheck(member);
        break;
    case PropertyKind::TableValue:
        vTableCheck(member);
        break;
    case PropertyKind::ListValue:
        vListCheck(member);
        break;
    default:
        break;
    }
}

bool TypeCheck::boHasChild(XmlIndex parent, std::string_view tag) const {
    return childOf(xml_, parent, tag) != NoXmlElement;
}

void TypeCheck::vDataTypeRequire(XmlIndex element) {
    if (!boHasChild(element, "DataType") && !run_.boMisplaced(element) &&
        !boMissingExplained(run_, element, "DataType"))
        run_.add("T008", element,
                 "no data type is given: " + sQuoted(xml_.getElement(element).name) + " has no \"DataType\"");
}

/// Of a column, or of the items of a list, readers take the type from the first element inside.
void TypeCheck::vFirstTypeCheck(XmlIndex column) {
    const auto dataType = childOf(xml_, column, "DataType");
    const auto first = xml_.getElement(column).firstChild;
    // An element that does not belong there is a mistake of structure.
    if (dataType == NoXmlElement || first == NoXmlElement || !run_.vocabulary.pRuleOf(first) ||
        xml_.getElement(first).name == "DataType")
        return;
    const auto& parts = xml_.getElement(column);
    const std::string owner = parts.name == "ListValue" ? "the list" : "the column";
    const auto* read = xml_.pAttribute(xml_.getElement(first), "type");
    run_.add("T025", dataType,
             "\"DataType\" is not the first element of " + sQuoted(parts.name) +
                 (read ? ", so " + sQuoted(read->value) + " is read as the type of " + owner
                       : ", so the type of " + owner + " is not read"))
        .vNote("move \"DataType\" before " + sQuoted(xml_.getElement(first).name));
}

/// A second kind after it is a mistake of structure.
void TypeCheck::vSimpleAdd(XmlIndex element) {
    if (xml_.getElement(element).nextSibling == NoXmlElement)
        run_.add("T026", element,
                 "what is inside \"TypeSimpleProperty\" is not read: the property has no type")
            .vNote("a property with one value is a \"TypePropertySingleValue\"");
}

void TypeCheck::vReferenceRequire(const MemberOutline& member) {
    const auto index = static_cast<std::size_t>(&member - run_.outline.members.data());
    const auto element = member.kindElement;
    if (!hasReference_[index] && !boHasChild(element, "DataType") &&
        !boMissingExplained(run_, element, "DataType") &&
        (xml_.pAttribute(xml_.getElement(element), "reftype") || !run_.boMisplaced(element)))
        run_.add("T008", element, "nothing says what the property refers to: there is no \"reftype\"");
}

/// The number of values in a column; 0 when it lists none.
std::size_t TypeCheck::valuesIn(XmlIndex column) const {
    std::size_t count = 0;
    for (const auto item : XmlChildren(xml_, childOf(xml_, column, "Values")))
        count += xml_.getElement(item).name == "ValueItem" ? 1 : 0;
    return count;
}

/// Each value of the one column belongs to one of the other.
void TypeCheck::vColumnsCheck(const MemberOutline& member) {
    const auto definedColumn = childOf(xml_, member.kindElement, "DefinedValue");
    const auto defining = valuesIn(childOf(xml_, member.kindElement, "DefiningValue"));
    const auto defined = valuesIn(definedColumn);
    if (defining != 0 && defined != 0 && defining != defined)
        run_.add("T019", definedColumn,
                 "the table has " + std::to_string(defining) + " defining and " + std::to_string(defined) +
                     " defined values");
}

void TypeCheck::vTableCheck(const MemberOutline& member) {
    vColumnsCheck(member);
    bool hasDefining = false;
    bool hasDefined = false;
    for (const auto column : XmlChildren(xml_, member.kindElement)) {
        const bool isDefining = xml_.getElement(column).name == "DefiningValue";
        const bool isDefined = xml_.getElement(column).name == "DefinedValue";
        hasDefining = hasDefining || isDefining;
        hasDefined = hasDefined || isDefined;
        if (!isDefining && !isDefined)
            continue;
        vDataTypeRequire(column);
        vFirstTypeCheck(column);
    }
    if ((hasDefining || boMissingExplained(run_, member.kindElement, "DefiningValue")) &&
        (hasDefined || boMissingExplained(run_, member.kindElement, "DefinedValue")))
        return;
    const std::string missing = !hasDefining && !hasDefined
                                    ? "has neither \"DefiningValue\" nor \"DefinedValue\""
                                : hasDefining ? "has no \"DefinedValue\""
                                              : "has no \"DefiningValue\"";
    auto& draft = run_.add("T012", member.kindElement,
                           "the table " + missing + ", so the types of its columns are not known");
    if (hasDefining || hasDefined)
        draft.vSeverity(Severity::Warning);
}

void TypeCheck::vListCheck(const MemberOutline& member) {
    bool isTyped =
        boMissingExplained(run_, member.kindElement, "ListValue") || run_.boMisplaced(member.kindElement);
    for (const auto column : XmlChildren(xml_, member.kindElement)) {
        if (xml_.getElement(column).name != "ListValue")
            continue;
        vFirstTypeCheck(column);
        isTyped = isTyped || boHasChild(column, "DataType") || boMissingExplained(run_, column, "DataType");
    }
    if (!isTyped)
        run_.add("T013", member.kindElement,
                 "the list has no type: there is no \"DataType\" in a \"ListValue\"");
}

} // namespace

void vTypesCheck(RuleRun& run) {
    TypeCheck(run).vRun();
}

} // namespace kiv::kit
