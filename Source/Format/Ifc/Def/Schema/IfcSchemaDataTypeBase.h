/// @file
/// What all EXPRESS data types have in common: their kind, and how they are made from schema text.
///
///     const auto* type = DataTypeBase::pFrom(attribute.pFirstType());
///     if (type && type->getDataTypeKind() == DataTypeKind::Real) ...
///
/// Ownership: every data type belongs to its schema; simple types without a width exist once per schema.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    a text that begins with no keyword of a data type gives null.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>

namespace kiv::ifc::def::schema {

/// The kind of a data type; the numbers are part of the interface.
enum class DataTypeKind : std::uint32_t {
    Real = 0,
    Boolean = 1,
    Integer = 2,
    Number = 3,
    String = 4,
    Logical = 5,
    Binary = 6,
    Enumeration = 7,
    Select = 8,
    Array = 9,
    List = 10,
    Set = 11
};

/// Base of all data types. Its object kind is `ObjectBase::Type::DataType`, its name the whole keyword it was
/// made from ("STRING(255)" included).
class KIV_EXPORT DataTypeBase : public ObjectBase {
public:
    explicit DataTypeBase(DataTypeKind kind);
    ~DataTypeBase() override;

    /// The object as a data type; null for null and for everything else.
    static const DataTypeBase* pFrom(const ObjectBase* object);

    DataTypeKind getDataTypeKind() const { return static_cast<DataTypeKind>(dataTypeKind_); }

    /// The type of one value: the data type itself; for an aggregate what its innermost element is (a named
    /// object or a data type), null when that was not found.
    virtual const ObjectBase* pBaseType() const;

    /// True for the constructed types of EXPRESS, ENUMERATION and SELECT.
    virtual bool isConstructed() const;

    /// The data type of a whole type text, as written after an attribute's colon: a shared simple type, or a
    /// new one that `schema` owns; null when the text begins with no keyword of a data type (with a name,
    /// say). `update` resolves a new one at once. The text outlives the schema. Like the two below only for a
    /// schema that is being read: on one that is built it throws std::logic_error, as nothing is added to
    /// that.
    static DataTypeBase* pTypeCreateOnSchema(Schema& schema, std::string_view text, bool update);

    /// The same from the keyword and the text after it. The items of ENUMERATION and SELECT are not read
    /// here.
    static DataTypeBase* pTypeCreateOnSchema(Schema& schema, std::string_view keyword, std::string_view rest,
                                             bool update);

    /// The same from the keyword of a TYPE declaration and the current line from `pos`; the lists of
    /// ENUMERATION and SELECT are read, also across lines.
    static DataTypeBase* pTypeCreateOnSchema(Schema& schema, std::string_view keyword, ReadLineHelper& line,
                                             std::size_t pos, std::istream& stream);

private:
    std::uint8_t dataTypeKind_;
};

/// A data type of kind N; used as it is for REAL, BOOLEAN, INTEGER, NUMBER and LOGICAL.
template <std::uint32_t N>
class KIV_EXPORT DataType : public DataTypeBase {
public:
    DataType();
    ~DataType() override;
};

extern template class DataType<0>;
extern template class DataType<1>;
extern template class DataType<2>;
extern template class DataType<3>;
extern template class DataType<4>;
extern template class DataType<5>;
extern template class DataType<6>;
extern template class DataType<7>;
extern template class DataType<8>;
extern template class DataType<9>;
extern template class DataType<10>;
extern template class DataType<11>;

} // namespace kiv::ifc::def::schema
