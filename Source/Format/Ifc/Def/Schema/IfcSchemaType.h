/// @file
/// A defined type: TYPE name = underlying type; ... END_TYPE;
///
///     const auto* label = Type::pFrom(schema.pObjectFromName("IfcLabel"));
///     if (label->pDataType()) std::cout << label->pDataType()->getName(); // STRING(255)
///
/// Ownership: belongs to its schema and owns its WHERE clause; the data type belongs to the schema.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    an underlying type that names no type is an assertion report; both pointers stay null.
#pragma once

#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class KIV_EXPORT Type final : public ObjectBase {
public:
    /// Reads the declaration whose keyword is at byte offset `keywordPos` of the current line, up to
    /// END_TYPE or the end of the stream; always at least one further line.
    Type(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream);
    ~Type() override;

    /// The object as a defined type; null for null and for everything else.
    static const Type* pFrom(const ObjectBase* object);

    /// Resolves the underlying type, depth first, and parses the rules. It runs again each time another type
    /// resolves through this one, and then has the rules again.
    void vUpdate(Schema& schema) override;

    /// The text after '=', up to the first ';', as written.
    std::string_view getUnderlyingText() const { return {underlyingText_, underlyingSize_}; }
    /// The first word of that text.
    std::string_view getUnderlyingKeyword() const { return {underlyingText_, keywordSize_}; }
    /// The data type that the keyword begins, or the defined type that it names; null when it is neither.
    const ObjectBase* pUnderlying() const { return underlying_; }
    /// The data type at the end of the chain of defined types; null when the chain does not end in one.
    const DataTypeBase* pDataType() const { return dataType_; }
    /// Null when the declaration has none.
    const Where* pWhere() const { return where_; }
    /// The types whose underlying type names this one, in the order in which they were resolved.
    const std::vector<const Type*>& getDerivedTypes() const;

private:
    Type(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd, Schema& schema,
         std::istream& stream);

    void vUnderlyingRead(Schema& schema, ReadLineHelper& line, std::size_t nameEnd, std::istream& stream);
    void vStatementRead(Schema& schema, ReadLineHelper& line, std::istream& stream);
    Type* pUnderlyingTypeFind(Schema& schema);
    void vDerivedAdd(const Type& type, WorkMeter* meter);
    void vUpdateSelf(Schema& schema);

    const char* underlyingText_ = nullptr;
    std::uint32_t underlyingSize_ = 0;
    // The keyword begins the text.
    std::uint32_t keywordSize_ = 0;
    const ObjectBase* underlying_ = nullptr;
    const DataTypeBase* dataType_ = nullptr;
    // Lies in the arena of the line helper that the type was read with.
    Where* where_ = nullptr;
    // Null for none, as most types have.
    std::unique_ptr<std::vector<const Type*>> derivedTypes_;
};

} // namespace kiv::ifc::def::schema
