/// @file
/// The simple data types that have a width: STRING and BINARY. REAL, BOOLEAN, INTEGER, NUMBER and LOGICAL
/// have nothing of their own and are each a plain `DataType`.
///
///     const auto* text = dynamic_cast<const DataTypeString*>(attribute.pFirstType());
///     if (text && text->getWidth() != 0)
///         std::cout << attribute.getName() << " has up to " << text->getWidth() << " characters\n";
///
/// Ownership: belong to their schema; those without a width exist once per schema.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    none; an unreadable width is 0.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataTypeBase.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>

namespace kiv::ifc::def::schema {

/// STRING or BINARY with its width.
template <std::uint32_t N>
class KIV_EXPORT DataTypeWithSize : public DataType<N> {
public:
    /// Reads the width out of the keyword, as in "STRING(255)".
    explicit DataTypeWithSize(std::string_view keyword);
    ~DataTypeWithSize() override;

    /// In characters for STRING, in bits for BINARY; 0 when none was given.
    std::uint64_t getWidth() const { return width_; }

private:
    std::uint64_t width_;
};

class KIV_EXPORT DataTypeString final : public DataTypeWithSize<4> {
public:
    /// `rest` is the text after the keyword; it is not looked at.
    DataTypeString(std::string_view keyword, std::string_view rest);
    DataTypeString(std::string_view keyword, ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeString() override;

    /// FIXED was written after the width; known for TYPE declarations only.
    bool isFixed() const { return fixed_; }

private:
    bool fixed_;
};

class KIV_EXPORT DataTypeBinary final : public DataTypeWithSize<6> {
public:
    explicit DataTypeBinary(std::string_view keyword);
    ~DataTypeBinary() override;
};

extern template class DataTypeWithSize<4>;
extern template class DataTypeWithSize<6>;

} // namespace kiv::ifc::def::schema
