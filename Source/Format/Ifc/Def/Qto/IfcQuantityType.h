/// @file
/// The type of a quantity: one of six kinds, each a class without any state.
///
///     if (quantity.pType())
///         std::cout << quantity.pType()->sMeasureTypeName(); // IfcAreaMeasure
///
/// Ownership: belongs to its quantity.
/// Threads:   without state; may be used from any number of threads.
/// Errors:    a missing or unknown type code and a name that is not in the schema are assertion reports.
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
    static std::unique_ptr<QuantityType> pCreate(const kiv::xml::const_Element& element,
                                                 WorkMeter* meter = nullptr);

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

/// What a kind of quantity is called, in documents and in IFC.
struct QuantityKind {
    const char* typeCode;
    const char* entityName;
    const char* valueAttributeName;
    const char* measureTypeName;
};

namespace kinds {

inline constexpr QuantityKind Count{"Q_COUNT", "IfcQuantityCount", "CountValue", "IfcCountMeasure"};
// IFC has no measure of weights.
inline constexpr QuantityKind Weight{"Q_WEIGHT", "IfcQuantityWeight", "WeightValue", "IfcMassMeasure"};
inline constexpr QuantityKind Length{"Q_LENGTH", "IfcQuantityLength", "LengthValue", "IfcLengthMeasure"};
inline constexpr QuantityKind Area{"Q_AREA", "IfcQuantityArea", "AreaValue", "IfcAreaMeasure"};
inline constexpr QuantityKind Volume{"Q_VOLUME", "IfcQuantityVolume", "VolumeValue", "IfcVolumeMeasure"};
inline constexpr QuantityKind Time{"Q_TIME", "IfcQuantityTime", "TimeValue", "IfcTimeMeasure"};

} // namespace kinds

/// What the kinds have in common, each with its own names.
template <const QuantityKind& Kind>
class QuantityTypeOf : public QuantityTypeSimple {
public:
    static constexpr const char* TypeCode = Kind.typeCode;

    std::string sEntityName() const override { return Kind.entityName; }
    const char* pTypeCode() const override { return Kind.typeCode; }
    std::string sValueAttributeName() const override { return Kind.valueAttributeName; }
    std::string sMeasureTypeName() const override { return Kind.measureTypeName; }
};

class KIV_EXPORT QuantityTypeCount final : public QuantityTypeOf<kinds::Count> {};
class KIV_EXPORT QuantityTypeWeight final : public QuantityTypeOf<kinds::Weight> {};
class KIV_EXPORT QuantityTypeLength final : public QuantityTypeOf<kinds::Length> {};
class KIV_EXPORT QuantityTypeArea final : public QuantityTypeOf<kinds::Area> {};
class KIV_EXPORT QuantityTypeVolume final : public QuantityTypeOf<kinds::Volume> {};
class KIV_EXPORT QuantityTypeTime final : public QuantityTypeOf<kinds::Time> {};

} // namespace kiv::ifc::def::qto
