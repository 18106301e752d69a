#include "Kit/Findings/SetVocabulary.h"

#include <algorithm>

namespace kiv::kit {

namespace {

constexpr auto Last = ChildCount::LastOnly;
constexpr auto All = ChildCount::All;
constexpr auto Joined = ChildCount::Joined;
constexpr bool Needed = true;

constexpr std::string_view GuidAttributes[] = {"ifdguid"};
constexpr std::string_view SetAttributes[] = {"ifdguid", "templatetype"};
constexpr std::string_view VersionAttributes[] = {"version", "schema"};
constexpr std::string_view LanguageAttributes[] = {"lang"};
constexpr std::string_view DataTypeAttributes[] = {"type"};
constexpr std::string_view UnitTypeAttributes[] = {"type", "currencytype"};
constexpr std::string_view BoundAttributes[] = {"value"};
constexpr std::string_view NameAttributes[] = {"name"};
constexpr std::string_view ReferenceAttributes[] = {"reftype", "guid", "URL", "libraryname", "sectionref"};

constexpr ElementRule textRule(std::string_view name) {
    return {name, ContentKind::Text};
}

// ---- What properties and quantities share
constexpr ElementRule Name = textRule("Name");
constexpr ElementRule Definition = textRule("Definition");
constexpr ElementRule NameAlias = {
    "NameAlias", ContentKind::Text, UnknownChild::PassedOver, {}, LanguageAttributes};
constexpr ElementRule DefinitionAlias = {
    "DefinitionAlias", ContentKind::Text, UnknownChild::PassedOver, {}, LanguageAttributes};
constexpr ChildRule NameAliasesChildren[] = {{&NameAlias}};
constexpr ElementRule NameAliases = {"NameAliases", ContentKind::Elements, UnknownChild::PassedOver,
                                     NameAliasesChildren};
constexpr ChildRule DefinitionAliasesChildren[] = {{&DefinitionAlias}};
constexpr ElementRule DefinitionAliases = {"DefinitionAliases", ContentKind::Elements,
                                           UnknownChild::PassedOver, DefinitionAliasesChildren};
constexpr ElementRule IfcVersion = {
    "IfcVersion", ContentKind::Nothing, UnknownChild::PassedOver, {}, VersionAttributes};
constexpr ElementRule Applicability = {"Applicability", ContentKind::Ignored};
constexpr ElementRule ClassName = textRule("ClassName");
constexpr ChildRule ApplicableClassesChildren[] = {{&ClassName}};
constexpr ElementRule ApplicableClasses = {"ApplicableClasses", ContentKind::Elements,
                                           UnknownChild::PassedOver, ApplicableClassesChildren};
constexpr ElementRule ApplicableTypeValue = textRule("ApplicableTypeValue");

// ---- Values
constexpr ElementRule DataType = {
    "DataType", ContentKind::Nothing, UnknownChild::PassedOver, {}, DataTypeAttributes};
constexpr ElementRule UnitType = {
    "UnitType", ContentKind::Nothing, UnknownChild::PassedOver, {}, UnitTypeAttributes};
constexpr ElementRule ValueItem = textRule("ValueItem");
constexpr ChildRule ValuesChildren[] = {{&ValueItem}};
constexpr ElementRule Values = {
    "Values", ContentKind::Elements, UnknownChild::PassedOver, ValuesChildren, {}, false, SetKind::None, true,
    true};
constexpr ChildRule ValueChildren[] = {{&DataType, Last, Needed}, {&UnitType, Last}, {&Values, Last}};
constexpr ElementRule DefiningValue = {"DefiningValue", ContentKind::Elements, UnknownChild::Recorded,
                                       ValueChildren};
constexpr ElementRule DefinedValue = {"DefinedValue", ContentKind::Elements, UnknownChild::Recorded,
                                      ValueChildren};
constexpr ElementRule ListValue = {"ListValue", ContentKind::Elements, UnknownChild::Recorded, ValueChildren};
constexpr ElementRule LowerBound = {
    "LowerBoundValue", ContentKind::Nothing, UnknownChild::PassedOver, {}, BoundAttributes};
constexpr ElementRule UpperBound = {
    "UpperBoundValue", ContentKind::Nothing, UnknownChild::PassedOver, {}, BoundAttributes};
constexpr ChildRule RangeChildren[] = {{&LowerBound, Last}, {&UpperBound, Last}};
constexpr ElementRule Range = {"ValueRangeDef", ContentKind::Elements, UnknownChild::RecordedInRange,
                               RangeChildren};

// ---- Enumerations
constexpr ElementRule EnumItem = textRule("EnumItem");
constexpr ChildRule EnumListChildren[] = {{&EnumItem, All, Needed}};
constexpr ElementRule EnumList = {"EnumList", ContentKind::Elements, UnknownChild::ReadAnyway,
                                  EnumListChildren, NameAttributes};
constexpr ChildRule ConstantChildren[] = {
    {&Name, Last}, {&Definition, Last}, {&NameAliases}, {&DefinitionAliases}};
constexpr ElementRule ConstantDef = {"ConstantDef", ContentKind::Elements, UnknownChild::Recorded,
                                     ConstantChildren};
constexpr ChildRule ConstantListChildren[] = {{&ConstantDef}};
constexpr ElementRule ConstantList = {"ConstantList", ContentKind::Elements, UnknownChild::ReadAnyway,
                                      ConstantListChildren};

// ---- Kinds of properties
constexpr ChildRule SingleChildren[] = {{&DataType, Last, Needed}, {&UnitType, Last}};
constexpr ElementRule SingleValue = {"TypePropertySingleValue", ContentKind::Elements, UnknownChild::Recorded,
                                     SingleChildren};
constexpr ChildRule BoundedChildren[] = {{&DataType, Last, Needed}, {&UnitType, Last}, {&Range, Joined}};
constexpr ElementRule BoundedValue = {"TypePropertyBoundedValue", ContentKind::Elements,
                                      UnknownChild::Recorded, BoundedChildren};
constexpr ChildRule EnumeratedChildren[] = {{&EnumList, Joined, Needed}, {&ConstantList, Joined}};
constexpr ElementRule EnumeratedValue = {"TypePropertyEnumeratedValue", ContentKind::Elements,
                                         UnknownChild::Recorded, EnumeratedChildren};
constexpr ElementRule Expression = textRule("Expression");
constexpr ChildRule TableChildren[] = {
    {&Expression, Last}, {&DefiningValue, Joined, Needed}, {&DefinedValue, Joined, Needed}};
constexpr ElementRule TableValue = {"TypePropertyTableValue", ContentKind::Elements, UnknownChild::Recorded,
                                    TableChildren};
constexpr ChildRule ReferenceChildren[] = {{&DataType, Last, Needed}};
constexpr ElementRule ReferenceValue = {"TypePropertyReferenceValue", ContentKind::Elements,
                                        UnknownChild::Recorded, ReferenceChildren, ReferenceAttributes};
constexpr ChildRule ListChildren[] = {{&ListValue, Joined, Needed}};
constexpr ElementRule ListKind = {"TypePropertyListValue", ContentKind::Elements, UnknownChild::Recorded,
                                  ListChildren};
/// Of older documents. Readers do not look inside.
constexpr ElementRule SimpleProperty = {.name = "TypeSimpleProperty",
                                        .unknown = UnknownChild::PassedOver,
                                        .children = SingleChildren,
                                        .isObsolete = true};
/// Complex properties contain properties, whose rule is that of the children of "PropertyDefs".
extern const ElementRule ComplexProperty;

// ---- Property sets
constexpr auto InPropertySet = SetKind::PropertySet;
constexpr ChildRule KindChildren[] = {{&SingleValue},     {&EnumeratedValue}, {&BoundedValue},
                                      {&TableValue},      {&ReferenceValue},  {&ListKind},
                                      {&ComplexProperty}, {&SimpleProperty}};
constexpr ElementRule PropertyType = {
    "PropertyType", ContentKind::Elements, UnknownChild::Asserted, KindChildren, {}, true, InPropertySet};
/// Of older documents.
constexpr ElementRule MinValue = {
    "MinValue", ContentKind::Nothing, UnknownChild::PassedOver, {}, BoundAttributes, false, SetKind::None,
    true};
constexpr ElementRule MaxValue = {
    "MaxValue", ContentKind::Nothing, UnknownChild::PassedOver, {}, BoundAttributes, false, SetKind::None,
    true};
constexpr ElementRule DefaultValue = {"DefaultValue",
                                      ContentKind::Nothing,
                                      UnknownChild::PassedOver,
                                      {},
                                      BoundAttributes,
                                      false,
                                      SetKind::None,
                                      true};
constexpr ChildRule ValueDefChildren[] = {{&MinValue}, {&MaxValue}, {&DefaultValue}};
constexpr ElementRule ValueDef = {
    "ValueDef", ContentKind::Elements, UnknownChild::PassedOver, ValueDefChildren, {}, false, SetKind::None,
    true};
constexpr ChildRule PropertyChildren[] = {{&Name, Last, Needed},         {&Definition, Last, Needed},
                                          {&PropertyType, Last, Needed}, {&NameAliases},
                                          {&DefinitionAliases},          {&ValueDef}};
constexpr ElementRule PropertyDef = {"PropertyDef",    ContentKind::Elements, UnknownChild::Recorded,
                                     PropertyChildren, GuidAttributes,        false,
                                     InPropertySet};
constexpr ChildRule PropertiesChildren[] = {{&PropertyDef}};
const ElementRule ComplexProperty = {"TypeComplexProperty", ContentKind::Elements, UnknownChild::Asserted,
                                     PropertiesChildren, NameAttributes};
constexpr ElementRule PropertyDefs = {
    "PropertyDefs", ContentKind::Elements, UnknownChild::PassedOver, PropertiesChildren, {},
    false,          InPropertySet};
constexpr ElementRule PsetAlias = {
    "PsetDefinitionAlias", ContentKind::Text, UnknownChild::PassedOver, {}, LanguageAttributes};
constexpr ChildRule PsetAliasesChildren[] = {{&PsetAlias}};
constexpr ElementRule PsetAliases = {"PsetDefinitionAliases",
                                     ContentKind::Elements,
                                     UnknownChild::PassedOver,
                                     PsetAliasesChildren,
                                     {},
                                     false,
                                     InPropertySet};
constexpr ChildRule PropertySetChildren[] = {{&Name, Last, Needed},
                                             {&Definition, Last, Needed},
                                             {&IfcVersion, Last, Needed},
                                             {&Applicability},
                                             {&ApplicableClasses, All, Needed},
                                             {&ApplicableTypeValue, Last},
                                             {&PropertyDefs, All, Needed},
                                             {&PsetAliases}};
constexpr ElementRule PropertySet = {"PropertySetDef", ContentKind::Elements, UnknownChild::Recorded,
                                     PropertySetChildren, SetAttributes};

// ---- Quantity sets
constexpr auto InQuantitySet = SetKind::QuantitySet;
constexpr ElementRule QtoType = {"QtoType", ContentKind::Text, UnknownChild::PassedOver, {}, {},
                                 false,     InQuantitySet};
constexpr ChildRule QuantityChildren[] = {{&Name, Last, Needed},
                                          {&Definition, Last, Needed},
                                          {&QtoType, Last, Needed},
                                          {&NameAliases},
                                          {&DefinitionAliases}};
constexpr ElementRule QtoDef = {"QtoDef",         ContentKind::Elements, UnknownChild::Recorded,
                                QuantityChildren, GuidAttributes,        false,
                                InQuantitySet};
constexpr ChildRule QuantitiesChildren[] = {{&QtoDef}};
constexpr ElementRule QtoDefs = {
    "QtoDefs", ContentKind::Elements, UnknownChild::PassedOver, QuantitiesChildren, {}, false, InQuantitySet};
constexpr ElementRule QtoAlias = {
    "QtoDefinitionAlias", ContentKind::Text, UnknownChild::PassedOver, {}, LanguageAttributes};
constexpr ChildRule QtoAliasesChildren[] = {{&QtoAlias}};
constexpr ElementRule QtoAliases = {
    "QtoDefinitionAliases", ContentKind::Elements, UnknownChild::PassedOver, QtoAliasesChildren, {}, false,
    InQuantitySet};
constexpr ChildRule QuantitySetChildren[] = {{&Name, Last, Needed},
                                             {&Definition, Last, Needed},
                                             {&IfcVersion, Last, Needed},
                                             {&Applicability},
                                             {&ApplicableClasses, All, Needed},
                                             {&ApplicableTypeValue, Last},
                                             {&QtoDefs, All, Needed},
                                             {&QtoAliases}};
constexpr ElementRule QuantitySet = {"QtoSetDef", ContentKind::Elements, UnknownChild::Recorded,
                                     QuantitySetChildren, SetAttributes};

/// What only one kind of set has, with what the other has in its place.
constexpr const ElementRule* OwnElements[] = {&PropertyDefs, &QtoDefs, &PropertyDef, &QtoDef,
                                              &PropertyType, &QtoType, &PsetAliases, &QtoAliases};

/// Where an element belongs that is found elsewhere.
constexpr const ElementRule* PropertySetOwners[] = {
    &PropertySet,     &ApplicableClasses, &PropertyDefs, &PropertyDef,  &PropertyType,
    &EnumeratedValue, &EnumList,          &ConstantList, &BoundedValue, &Range,
    &TableValue,      &ListKind,          &ListValue,    &Values,       &ConstantDef,
    &NameAliases,     &DefinitionAliases, &PsetAliases,  &ValueDef};
constexpr const ElementRule* QuantitySetOwners[] = {&QuantitySet, &ApplicableClasses, &QtoDefs,   &QtoDef,
                                                    &NameAliases, &DefinitionAliases, &QtoAliases};

std::span<const ElementRule* const> ownersIn(SetKind kind) {
    return kind == SetKind::PropertySet ? std::span<const ElementRule* const>(PropertySetOwners)
                                        : std::span<const ElementRule* const>(QuantitySetOwners);
}

std::vector<std::string_view> elementNamesIn(SetKind kind) {
    std::vector<std::string_view> names;
    for (const auto* owner : ownersIn(kind)) {
        for (const auto name : SetVocabulary::childNames(*owner)) {
            if (std::ranges::find(names, name) == names.end())
                names.push_back(name);
        }
    }
    return names;
}

/// The rule of a child of an element with that rule; null when it is not read.
const ElementRule* pRuleOfChild(const ElementRule& parent, std::string_view name, bool isFirst) {
    if (parent.content != ContentKind::Elements || (parent.isFirstChildOnly && !isFirst))
        return nullptr;
    if (const auto* child = SetVocabulary::pChild(parent, name))
        return child->rule;
    return parent.unknown == UnknownChild::ReadAnyway ? parent.children.front().rule : nullptr;
}

} // namespace

SetVocabulary::SetVocabulary(const XmlPositions& xml, SetKind kind) : xml_(&xml), kind_(kind) {
    const auto elements = xml.getElements();
    rules_.resize(elements.size());
    if (elements.empty() || kind == SetKind::None)
        return;
    rules_[0] = kind == SetKind::PropertySet ? &PropertySet : &QuantitySet;
    for (std::size_t i = 1; i != elements.size(); ++i) {
        const auto parent = elements[i].parent;
        if (rules_[parent])
            rules_[i] = pRuleOfChild(*rules_[parent], elements[i].name, elements[parent].firstChild == i);
    }
}

const ChildRule* SetVocabulary::pChild(const ElementRule& rule, std::string_view name) {
    const auto found =
        std::ranges::find(rule.children, name, [](const ChildRule& child) { return child.rule->name; });
    return found == rule.children.end() ? nullptr : &*found;
}

bool SetVocabulary::boOfOther(SetKind kind, std::string_view name) {
    const auto isAsked = [&](const ElementRule* rule) { return rule->onlyIn != kind && rule->name == name; };
    return std::ranges::any_of(OwnElements, isAsked);
}

std::string_view SetVocabulary::ownerOf(XmlIndex parent, std::string_view name) const {
    // Documents of ours are not deeper; hostile ones are, with complex properties inside each other.
    constexpr int maxLevels = 8;
    for (const auto& child : rules_[parent]->children) {
        if (pChild(*child.rule, name))
            return child.rule->name;
    }
    auto around = xml_->getElement(parent).parent;
    for (int level = 0; level != maxLevels && around != NoXmlElement; ++level) {
        if (rules_[around] && pChild(*rules_[around], name))
            return rules_[around]->name;
        around = xml_->getElement(around).parent;
    }
    for (const auto* owner : ownersIn(kind_)) {
        if (pChild(*owner, name))
            return owner->name;
    }
    return {};
}

std::string_view SetVocabulary::soleKindWith(std::string_view name) {
    std::string_view sole;
    for (const auto& kind : KindChildren) {
        if (!pChild(*kind.rule, name))
            continue;
        if (!sole.empty())
            return {};
        sole = kind.rule->name;
    }
    return sole;
}

bool SetVocabulary::boContains(const ElementRule& rule, std::string_view name) {
    const auto isInside = [name](const ChildRule& child) { return pChild(*child.rule, name) != nullptr; };
    return pChild(rule, name) || std::ranges::any_of(rule.children, isInside);
}

std::span<const std::string_view> SetVocabulary::elementNames(SetKind kind) {
    static const auto ofProperties = elementNamesIn(SetKind::PropertySet);
    static const auto ofQuantities = elementNamesIn(SetKind::QuantitySet);
    return kind == SetKind::PropertySet ? ofProperties : ofQuantities;
}

std::string_view SetVocabulary::counterpart(std::string_view name) {
    for (std::size_t i = 0; i != std::size(OwnElements); ++i) {
        if (OwnElements[i]->name == name)
            return OwnElements[i ^ 1U]->name;
    }
    return {};
}

std::vector<std::string_view> SetVocabulary::childNames(const ElementRule& rule) {
    std::vector<std::string_view> names;
    for (const auto& child : rule.children)
        names.push_back(child.rule->name);
    return names;
}

std::vector<std::string_view> SetVocabulary::offeredNames(const ElementRule& rule) {
    std::vector<std::string_view> names;
    for (const auto& child : rule.children) {
        if (!child.rule->isObsolete)
            names.push_back(child.rule->name);
    }
    return names;
}

} // namespace kiv::kit
