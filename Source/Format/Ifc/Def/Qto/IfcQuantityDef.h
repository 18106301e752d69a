/// @file
/// Quantity sets and their quantities. They mirror the property sets, with these differences, which are
/// deliberate: the check of a set does not look at its quantities; a quantity's type is a code, so that
/// reading one makes no records; "ValueDef" is unknown in a quantity; and `exportDef` makes the set's element
/// itself.
///
///     xml::XmlSetErrors errors;
///     const QuantitySetDef set(root, errors);
///     set.checkForErrors(schema, errors);
///     for (const QuantityDef& quantity : set.getQuantities())
///         std::cout << quantity.getConcept() << " becomes an " << quantity.getEntityName() << '\n';
///
/// Ownership: a set owns its quantities, a quantity its type; a quantity refers back to its set.
/// Threads:   unchanged once read; what is const may be called from any number of threads.
/// Errors:    an element that nobody knows becomes a record, and reading goes on.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::qto {

class QuantitySetDef;

/// A quantity of a quantity set.
class KIV_EXPORT QuantityDef final : public xml::Def {
public:
    /// Reads a "QtoDef" element.
    QuantityDef(const QuantitySetDef& owner, const kiv::xml::const_Element& element,
                xml::XmlSetErrors& errors);
    /// A quantity made in code; `owner` does not list it among its quantities.
    QuantityDef(const QuantitySetDef& owner, std::string_view name, std::unique_ptr<QuantityType>&& type);

    std::string getEntityName() const override;

    /// Checks the type, which the set's own check does not do. Always true.
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const;

    /// Appends a "QtoDef" element to `parent`. Without a type its "QtoType" stays empty.
    void vExport(kiv::xml::Element& parent, xml::ExtraExportInfo* info) const;

    /// Null when the document gives none, or one with an unknown code.
    const QuantityType* pType() const { return type_.get(); }

private:
    bool boChildRead(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter);

    std::unique_ptr<QuantityType> type_;
};

/// A quantity set. Its check is the one of all sets and never looks at its quantities.
class KIV_EXPORT QuantitySetDef final : public xml::SetDef {
public:
    /// Reads a set element, whatever its tag.
    QuantitySetDef(const kiv::xml::Element& element, xml::XmlSetErrors& errors);
    /// The same within a budget; what goes beyond it throws `BudgetExceeded`, and then the collector holds
    /// what it held before.
    QuantitySetDef(const kiv::xml::Element& element, xml::XmlSetErrors& errors, BudgetMeter& meter);

    /// Appends a "QtoSetDef" element to `element`, writes the set into it and returns it.
    kiv::xml::Element exportDef(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    /// "QtoSetDef".
    const char* pXmlElementName() const override;

    /// In document order; several may have one name.
    const std::vector<QuantityDef>& getQuantities() const { return quantities_; }

private:
    /// Reads while the collector keeps account, which ends with the argument.
    QuantitySetDef(const kiv::xml::Element& element, xml::XmlSetErrors& errors,
                   const xml::XmlSetErrors::Reading&);
    void vMemberRead(const kiv::xml::const_Element& child, xml::XmlSetErrors& errors);
    bool boChildRead(std::string_view tag, const kiv::xml::const_Element& child, xml::XmlSetErrors& errors);
    void vQuantitiesRead(const kiv::xml::const_Element& list, xml::XmlSetErrors& errors);

    std::vector<QuantityDef> quantities_;
};

} // namespace kiv::ifc::def::qto
