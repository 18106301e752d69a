/// @file
/// ENUMERATION: a data type that lists its values.
///
///     const DataTypeEnum kinds(std::vector<std::string>{"SOLID", "HOLLOW"});
///     if (kinds.boContains("SOLID")) ...
///
/// Ownership: belongs to its schema, which keeps the items; one that is made of items keeps copies of them.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    none.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataTypeBase.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class KIV_EXPORT DataTypeEnum final : public DataType<7> {
public:
    /// Without items: the text of an attribute's type is not searched for them.
    explicit DataTypeEnum(std::string_view rest);
    explicit DataTypeEnum(const std::vector<std::string>& items);
    DataTypeEnum(ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeEnum() override;

    bool isConstructed() const override;

    /// The items as written, in the order of the declaration.
    std::span<const std::string_view> getItems() const { return {items_, count_}; }

    /// The distinct items, ordered byte by byte; they point into `getItems`.
    std::span<const std::string_view* const> getItemsOrdered() const { return {ordered_, orderedCount_}; }

    /// True when an item equals the text exactly, letter case included. Cost: the logarithm of the items.
    bool boContains(std::string_view item) const;

private:
    struct Copies;

    void vItemsSet(std::span<const std::string_view> items, const std::string_view** place);

    // Of items that a caller gave; those of a declaration lie where its schema keeps them.
    std::unique_ptr<Copies> copies_;
    const std::string_view* items_ = nullptr;
    const std::string_view* const* ordered_ = nullptr;
    std::uint32_t count_ = 0;
    std::uint32_t orderedCount_ = 0;
};

} // namespace kiv::ifc::def::schema
