#include "Kit/Findings/Rules/TypeRules.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/RuleNames.h"
#include "Kit/Findings/Rules/SchemaValues.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <array>
#include <optional>
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

/// Looks at one document for all rules of the family.
class TypeCheck {
public:
    explicit TypeCheck(RuleRun& run) : run_(run), xml_(run.xml), names_(run) {}

    void vRun();

private:
    const MemberOutline& memberOf(const TypeOutline& type) const {
        return run_.outline.members[static_cast<std::size_t>(type.member)];
    }

    void vTypeCheck(const TypeOutline& type);
    bool boCounts(const TypeOutline& type) const;
    bool boIsGiven(const TypeOutline& type) const;
    bool boHasReference(const TypeOutline& type) const;
    const schema::ObjectBase* pObjectOf(const TypeOutline& type);
    void vUnknownAdd(const TypeOutline& type, std::string_view name);
    void vSpellingCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vUseCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vValueTypeCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vReferenceCheck(const TypeOutline& type, const schema::ObjectBase& object);
    void vSelectAdd(const TypeOutline& type, const schema::ObjectBase& object,
                    const schema::DataTypeSelect& select);
    const schema::Type* pSelect(PropertyKind kind);

    void vUnitCheck(const TypeOutline& type, const schema::Type& measure);
    void vValuesCheck(const TypeOutline& type, const schema::Type& measure);
    void vBoundsCheck(const TypeOutline& type, const schema::Type& measure);
    void vFitCheck(const schema::Type& measure, XmlIndex element, const XmlAttribute* attribute);

    void vMemberCheck(const MemberOutline& member);
    void vItemsCheck(const MemberOutline& member);
    void vItemCheck(XmlIndex child, std::unordered_map<std::string, XmlIndex>& known);
    /// The items of an enumeration by their names in upper case.
    using ItemsByName = std::unordered_map<std::string, std::string_view>;
    void vConstantsCheck(const MemberOutline& member);
    std::vector<XmlIndex> strangeConstants(XmlIndex list, const ItemsByName& items);
    void vStrangerAdd(XmlIndex nameElement, const ItemsByName& items);
    void vTableCheck(const MemberOutline& member);
    void vColumnsCheck(const MemberOutline& member);
    std::size_t valuesIn(XmlIndex column) const;
    void vListCheck(const MemberOutline& member);
    bool boHasLostItem(XmlIndex list) const;
    bool boHasChild(XmlIndex parent, std::string_view tag) const;
    /// Whether there is nothing inside, and what belongs there is an attribute or text.
    bool boIsElsewhere(XmlIndex element) const {
        return xml_.getElement(element).firstChild == NoXmlElement && run_.boMisplaced(element);
    }
    void vDataTypeRequire(XmlIndex element);
    void vReferenceRequire(const MemberOutline& member);

    RuleRun& run_;
    const XmlPositions& xml_;
    RuleNames names_;
    std::optional<SchemaUnits> units_;
    std::unordered_map<int, const schema::Type*> selects_;
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

/// Of several data types of one value the last one counts.
bool TypeCheck::boCounts(const TypeOutline& type) const {
    const auto& types = run_.outline.types;
    const auto next = static_cast<std::size_t>(&type - types.data()) + 1;
    return next == types.size() ||
           xml_.getElement(types[next].element).parent != xml_.getElement(type.element).parent;
}

bool TypeCheck::boIsGiven(const TypeOutline& type) const {
    return type.attribute && !trimmed(type.attribute->value.value).empty();
}

bool TypeCheck::boHasReference(const TypeOutline& type) const {
    return hasReference_[static_cast<std::size_t>(type.member)];
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
    vUnitCheck(type, *measure);
    vValuesCheck(type, *measure);
    vBoundsCheck(type, *measure);
}

/// Null when no type is named, or an unknown one; both are said then.
const schema::ObjectBase* TypeCheck::pObjectOf(const TypeOutline& type) {
    if (!boIsGiven(type)) {
        // What a time series is made of need not be said, nor need "reftype" when "DataType" is there.
        const bool isRequired = type.use == TypeUse::Value || type.use == TypeUse::Simple ||
                                (type.use == TypeUse::ReferenceDataType && !boHasReference(type));
        if (run_.boMisplaced(type.element))
            return nullptr;
        if (isRequired && type.attribute)
            run_.addAtValue("T008", type.element, *type.attribute, "the data type is empty");
        else if (isRequired)
            run_.add("T008", type.element, "\"DataType\" has no attribute \"type\"");
        return nullptr;
    }
    const auto name = trimmed(type.attribute->value.value);
    const auto* object = run_.schema.pObjectFromName(name);
    if (!object)
        vUnknownAdd(type, name);
    return object;
}

void TypeCheck::vUnknownAdd(const TypeOutline& type, std::string_view name) {
    if (const auto* other = names_.pOtherWith(name)) {
        run_.addAtValue("T002", type.element, *type.attribute,
                        "the type " + sQuoted(name) + " is not in " + names_.sSchema() + " but in " +
                            other->name);
        return;
    }
    auto& draft = run_.addAtValue("T001", type.element, *type.attribute,
                                  names_.sSchema() + " has no type " + sQuoted(name));
    const bool wantsEntity = type.use == TypeUse::Reference;
    names_.vNearestNote(draft, name, wantsEntity ? SchemaNames::Entities : SchemaNames::Types);
}

void TypeCheck::vSpellingCheck(const TypeOutline& type, const schema::ObjectBase& object) {
    const auto& value = type.attribute->value;
    const auto name = trimmed(value.value);
    if (name.size() != value.value.size()) {
        run_.addAtValue("T007", type.element, *type.attribute,
                        "there are blanks around the name of the type " + sQuoted(value.value))
            .vEdit(value.bytes, object.getName());
        return;
    }
    if (name != object.getName())
        run_.addAtValue("T006", type.element, *type.attribute,
                        "the type " + sQuoted(name) + " is written " + sQuoted(object.getName()) + " in " +
                            names_.sSchema())
            .vEdit(value.bytes, object.getName());
}

void TypeCheck::vUseCheck(const TypeOutline& type, const schema::ObjectBase& object) {
    const bool isReference =
        type.use == TypeUse::Reference || (type.use == TypeUse::ReferenceDataType && !boHasReference(type));
    if (type.use == TypeUse::Value)
        vValueTypeCheck(type, object);
    else if (isReference)
        vReferenceCheck(type, object);
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
    if (!select || boIsSelected(select, object))
        return;
    run_.addAtValue("T005", type.element, *type.attribute,
                    "values of " + sQuoted(object.getName()) + " cannot be in a property: " +
                        std::string(select->getName()) + " does not select that type");
}

void TypeCheck::vSelectAdd(const TypeOutline& type, const schema::ObjectBase& object,
                           const schema::DataTypeSelect& select) {
    const auto members = select.getMemberNames();
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

/// Whether the values of a type are no numbers: only numbers are converted from one unit to another.
bool boHasNoNumber(const schema::Type& measure) {
    if (!measure.pDataType())
        return false;
    switch (measure.pDataType()->getDataTypeKind()) {
    case schema::DataTypeKind::String:
    case schema::DataTypeKind::Boolean:
    case schema::DataTypeKind::Logical:
    case schema::DataTypeKind::Enumeration:
        return true;
    default:
        return false;
    }
}

void TypeCheck::vUnitCheck(const TypeOutline& type, const schema::Type& measure) {
    if (type.unit == NoXmlElement)
        return;
    const auto* attribute = xml_.pAttribute(xml_.getElement(type.unit), "type");
    if (!attribute)
        return;
    if (!units_)
        units_.emplace(run_.schema);
    const auto unit = sUpperCase(trimmed(attribute->value.value));
    if (!unit.empty() && boHasNoNumber(measure)) {
        run_.addAtValue("T017", type.unit, *attribute,
                        "values of " + std::string(measure.getName()) + " have no unit, and " +
                            sQuoted(unit) + " is given");
        return;
    }
    const auto fitting = units_->unitOf(measure);
    // A unit that the schema does not know is a mistake of another kind.
    if (fitting.empty() || fitting == unit || !units_->boContains(unit))
        return;
    run_.addAtValue("T016", type.unit, *attribute,
                    "the unit " + sQuoted(unit) + " does not fit " + std::string(measure.getName()))
        .vNote("the unit of " + std::string(measure.getName()) + " is " + sQuoted(fitting));
}

void TypeCheck::vFitCheck(const schema::Type& measure, XmlIndex element, const XmlAttribute* attribute) {
    const auto value = trimmed(attribute ? attribute->value.value : xml_.getElement(element).text);
    if (!measure.pDataType() || fitOf(value, *measure.pDataType()) != ValueFit::No)
        return;
    auto message = "the value " + sQuoted(value) + " is not of the type " + std::string(measure.getName()) +
                   ", which needs " + sValuesOf(*measure.pDataType());
    auto& draft = attribute ? run_.addAtValue("T015", element, *attribute, std::move(message))
                            : run_.addAtText("T015", element, std::move(message));
    if (const auto* items = dynamic_cast<const schema::DataTypeEnum*>(measure.pDataType()))
        draft.vNote("the items of " + std::string(measure.getName()) + " are " +
                    sQuotedList({items->getItems().begin(), items->getItems().end()}));
}

void TypeCheck::vValuesCheck(const TypeOutline& type, const schema::Type& measure) {
    for (const auto item : XmlChildren(xml_, type.values)) {
        if (xml_.getElement(item).name == "ValueItem")
            vFitCheck(measure, item, nullptr);
    }
}

void TypeCheck::vBoundsCheck(const TypeOutline& type, const schema::Type& measure) {
    if (memberOf(type).kind != PropertyKind::BoundedValue)
        return;
    std::optional<double> lower;
    XmlIndex lowerElement = NoXmlElement;
    std::optional<double> upper;
    XmlIndex upperElement = NoXmlElement;
    for (const auto bound : XmlChildren(xml_, memberOf(type).range)) {
        const auto& element = xml_.getElement(bound);
        const auto* value = xml_.pAttribute(element, "value");
        const bool isLower = element.name == "LowerBoundValue";
        // Documents that the library writes have the name of the type where no bound is known.
        if (!value || (!isLower && element.name != "UpperBoundValue") ||
            run_.schema.pObjectFromName(trimmed(value->value.value)))
            continue;
        vFitCheck(measure, bound, value);
        (isLower ? lower : upper) = numberOf(trimmed(value->value.value));
        (isLower ? lowerElement : upperElement) = bound;
    }
    if (!lower || !upper || *lower <= *upper)
        return;
    const auto* lowerValue = xml_.pAttribute(xml_.getElement(lowerElement), "value");
    const auto* upperValue = xml_.pAttribute(xml_.getElement(upperElement), "value");
    run_.addAtValue("T014", lowerElement, *lowerValue,
                    "the lower bound " + sQuoted(trimmed(lowerValue->value.value)) +
                        " is above the upper bound " + sQuoted(trimmed(upperValue->value.value)))
        .vNoteAt("the upper bound is here", upperValue->value.position);
}

void TypeCheck::vMemberCheck(const MemberOutline& member) {
    switch (member.kind) {
    case PropertyKind::SingleValue:
    case PropertyKind::BoundedValue:
    case PropertyKind::Simple:
        vDataTypeRequire(member.kindElement);
        break;
    case PropertyKind::ReferenceValue:
        vReferenceRequire(member);
        break;
    case PropertyKind::EnumeratedValue:
        vItemsCheck(member);
        vConstantsCheck(member);
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
    if (!boHasChild(element, "DataType") && !boIsElsewhere(element) &&
        !boMissingExplained(run_, element, "DataType"))
        run_.add("T008", element,
                 "no data type is given: " + sQuoted(xml_.getElement(element).name) + " has no \"DataType\"");
}

void TypeCheck::vReferenceRequire(const MemberOutline& member) {
    const auto index = static_cast<std::size_t>(&member - run_.outline.members.data());
    const auto element = member.kindElement;
    if (!hasReference_[index] && !boHasChild(element, "DataType") &&
        !boMissingExplained(run_, element, "DataType") &&
        (xml_.pAttribute(xml_.getElement(element), "reftype") || !run_.boMisplaced(element)))
        run_.add("T008", element, "nothing says what the property refers to: there is no \"reftype\"");
}

bool boIsLost(const XmlElement& item) {
    const bool isElsewhere = item.attributeCount != 0 || item.firstChild != NoXmlElement ||
                             item.laterText.line != 0 || item.isTextHidden;
    return isElsewhere && trimmed(item.text).empty();
}

/// Whether an item is written where readers do not see it: a mistake of structure.
bool TypeCheck::boHasLostItem(XmlIndex list) const {
    for (const auto child : XmlChildren(xml_, list)) {
        if (boIsLost(xml_.getElement(child)))
            return true;
    }
    return false;
}

/// `known` are those before it, upper-cased.
void TypeCheck::vItemCheck(XmlIndex child, std::unordered_map<std::string, XmlIndex>& known) {
    const auto& element = xml_.getElement(child);
    const auto item = trimmed(element.text);
    if (item.empty())
        return;
    const auto [first, isNew] = known.try_emplace(sUpperCase(item), child);
    const auto& before = xml_.getElement(first->second).trimmedText;
    if (!isNew && before.value == item)
        run_.addAtText("T010", child, "the enumeration has the item " + sQuoted(item) + " twice")
            .vNoteAt("it is here already", before.position);
    else if (!isNew)
        run_.addAtText("T021", child,
                       "the items " + sQuoted(before.value) + " and " + sQuoted(item) +
                           " differ in letter case only")
            .vNoteAt("the first one is here", before.position);
    else if (item.size() != element.text.size() && !element.isTextHidden)
        run_.addAtText("T023", child, "there is white space around the item " + sQuoted(item))
            .vEdit(element.textBytes, item);
}

void TypeCheck::vItemsCheck(const MemberOutline& member) {
    if (member.enumeration == NoXmlElement) {
        if (!boIsElsewhere(member.kindElement) && !boMissingExplained(run_, member.kindElement, "EnumList"))
            run_.add("T009", member.kindElement, "the enumeration has no items: there is no \"EnumList\"");
        return;
    }
    std::unordered_map<std::string, XmlIndex> items;
    for (const auto child : XmlChildren(xml_, member.enumeration))
        vItemCheck(child, items);
    if (items.empty() && !boHasLostItem(member.enumeration) && !run_.boStrayText(member.enumeration))
        run_.add("T009", member.enumeration, "the enumeration has no items");
    for (const auto child : XmlChildren(xml_, items.empty() ? NoXmlElement : member.enumeration)) {
        const auto& item = xml_.getElement(child);
        if (trimmed(item.text).empty() && !boIsLost(item))
            run_.add("T020", child, "the enumeration has an item without text, which is ignored");
    }
}

void TypeCheck::vConstantsCheck(const MemberOutline& member) {
    if (member.constants == NoXmlElement || member.enumeration == NoXmlElement)
        return;
    ItemsByName items;
    std::size_t broken = 0;
    for (const auto child : XmlChildren(xml_, member.enumeration)) {
        const auto item = trimmed(xml_.getElement(child).text);
        const bool isGood = !item.empty() && items.try_emplace(sUpperCase(item), item).second;
        broken += isGood ? 0 : 1;
    }
    // One of the constants may be the item that is lost.
    if (items.empty() || boHasLostItem(member.enumeration) || run_.boStrayText(member.enumeration))
        return;
    const auto strangers = strangeConstants(member.constants, items);
    // An item that is empty or repeated was to be one of them.
    if (strangers.size() <= broken)
        return;
    for (const auto name : strangers)
        vStrangerAdd(name, items);
}

/// The names of constants that are no items; says which are described twice.
std::vector<XmlIndex> TypeCheck::strangeConstants(XmlIndex list, const ItemsByName& items) {
    std::vector<XmlIndex> strangers;
    std::unordered_map<std::string_view, XmlIndex> constants;
    for (const auto constant : XmlChildren(xml_, list)) {
        for (const auto child : XmlChildren(xml_, constant)) {
            const auto name = trimmed(xml_.getElement(child).text);
            if (xml_.getElement(child).name != "Name" || name.empty())
                continue;
            const auto [first, isNew] = constants.try_emplace(name, child);
            // Two names of one constant are a mistake of structure.
            if (!isNew && xml_.getElement(first->second).parent == constant)
                continue;
            const auto found = items.find(sUpperCase(name));
            if (!isNew)
                run_.addAtText("T022", child, "the constant " + sQuoted(name) + " is described twice")
                    .vNoteAt("the first one is here", xml_.getElement(first->second).trimmedText.position);
            else if (found == items.end() || found->second != name)
                strangers.push_back(child);
        }
    }
    return strangers;
}

void TypeCheck::vStrangerAdd(XmlIndex nameElement, const ItemsByName& items) {
    const auto name = trimmed(xml_.getElement(nameElement).text);
    auto& draft = run_.addAtText("T011", nameElement,
                                 "the constant " + sQuoted(name) + " is no item of the enumeration");
    if (const auto found = items.find(sUpperCase(name)); found != items.end())
        draft.vNote("the item is written " + sQuoted(found->second));
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
        if (isDefining || isDefined)
            vDataTypeRequire(column);
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
    for (const auto column : XmlChildren(xml_, member.kindElement))
        isTyped =
            isTyped || (xml_.getElement(column).name == "ListValue" &&
                        (boHasChild(column, "DataType") || boMissingExplained(run_, column, "DataType")));
    if (!isTyped)
        run_.add("T013", member.kindElement,
                 "the list has no type: there is no \"DataType\" in a \"ListValue\"");
}

} // namespace

void vTypesCheck(RuleRun& run) {
    TypeCheck(run).vRun();
}

} // namespace kiv::kit
