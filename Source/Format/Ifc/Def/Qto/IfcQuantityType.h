/// The type of a quantity, one of six kinds, fully told by its class.
///
///     if (quantity.pType())
///         std::cout << quantity.pType()->sMeasureTypeName(); // IfcAreaMeasure
///
/// Ownership: belongs to its quantity.
/// Threads:   without state; may be used from any number of threads.
/// Errors:    a type code that is missing or that nobody knows and a name that the schema lacks are assertion
///            reports.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <memory>
#include <string>

namespace kiv::ifc::def::qto {

/// Base of the kinds of quantity types.
class KIV_EXPORT QuantityType : public xml::TypeBase {
public:
    /// Makes the type whose code is the text of the "QtoType" element, blanks and case included; null when it
    /// is none.
    static std::unique_ptr<QuantityType> pCreate(const kiv::xml::const_Element& element);

    /// The code that documents have for the kind, such as "Q_AREA".
    virtual const char* pTypeCode() const = 0;
    /// The attribute of the IFC entity that holds the value, such as "AreaValue".
    virtual std::string sValueAttributeName() const = 0;
    /// The IFC type of the value, such as "IfcAreaMeasure".
    virtual std::string sMeasureTypeName() const = 0;
};

/// A quantity of one value.
class KIV_EXPORT QuantityTypeSimple : public QuantityType {
public:
    /// Looks the measure type up. Always true.
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const override;
};

class KIV_EXPORT QuantityTypeCount final : public QuantityTypeSimple {
public:
    static constexpr const char* TypeCode = "Q_COUNT";

    std::string sEntityName() const override;
    const char* pTypeCode() const override;
    std::string sValueAttributeName() const override;
    std::string sMeasureTypeName() const override;
};

class KIV_EXPORT QuantityTypeWeight final : public QuantityTypeSimple {
public:
    static constexpr const char* TypeCode = "Q_WEIGHT";

    std::string sEntityName() const override;
    const char* pTypeCode() const override;
    std::string sValueAttributeName() const override;
    std::string sMeasureTypeName() const override;
};

class KIV_EXPORT QuantityTypeLength final : public QuantityTypeSimple {
public:
    static constexpr const char* TypeCode = "Q_LENGTH";

    std::string sEntityName() const override;
    const char* pTypeCode() const override;
    std::string sValueAttributeName() const override;
    std::string sMeasureTypeName() const override;
};

class KIV_EXPORT QuantityTypeArea final : public QuantityTypeSimple {
public:
    static constexpr const char* TypeCode = "Q_AREA";

    std::string sEntityName() const override;
    const char* pTypeCode() const override;
    std::string sValueAttributeName() const override;
    std::string sMeasureTypeName() const override;
};

class KIV_EXPORT QuantityTypeVolume final : public QuantityTypeSimple {
public:
    static constexpr const char* TypeCode = "Q_VOLUME";

    std::string sEntityName() const override;
    const char* pTypeCode() const override;
    std::string sValueAttributeName() const override;
    std::string sMeasureTypeName() const override;
};

class KIV_EXPORT QuantityTypeTime final : public QuantityTypeSimple {
public:
    static constexpr const char* TypeCode = "Q_TIME";

    std::string sEntityName() const override;
    const char* pTypeCode() const override;
    std::string sValueAttributeName() const override;
    std::string sMeasureTypeName() const override;
};

} // namespace kiv::ifc::def::qto
