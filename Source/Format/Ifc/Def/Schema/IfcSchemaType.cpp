#include "Format/Ifc/Def/Schema/IfcSchemaType.h"

#include "Format/Ifc/Def/Schema/IfcSchema.h"
#include "Format/Ifc/Def/Schema/IfcSchemaAssert.h"

#include <algorithm>
#include <istream>

namespace kiv::ifc::def::schema {

namespace {

constexpr std::string_view Keyword = "TYPE";
constexpr std::string_view WhereKeyword = "WHERE";

} // namespace

Type::Type(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream) :
    Type(line, keywordPos + Keyword.size(), std::size_t{}, schema, stream) {}

Type::Type(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd, Schema& schema,
           std::istream& stream) :
    ObjectBase(ObjectBase::Type::Type, line, namePos, nameEnd) {
    vUnderlyingRead(schema, line, nameEnd, stream);
    vStatementRead(schema, line, stream);
}

Type::~Type() = default;

const Type* Type::pFrom(const ObjectBase* object) {
    const bool is = object && object->getKind() == ObjectBase::Type::Type;
    return is ? static_cast<const Type*>(object) : nullptr;
}

void Type::vUnderlyingRead(Schema& schema, ReadLineHelper& line, std::size_t nameEnd, std::istream& stream) {
    const std::string_view header = line.getLine();
    if (nameEnd == std::string_view::npos || header.find('=', nameEnd) == std::string_view::npos)
        return;
    const auto start = std::min(header.find_first_not_of(" =", header.find('=', nameEnd)), header.size());
    const auto text = header.substr(start, header.substr(start).find(';'));
    underlyingText_ = text;
    underlyingKeyword_ = text.substr(0, text.find(' '));
    // Reads on in the stream when a list follows, which ends the life of the header's views.
    dataType_ = DataTypeBase::pTypeCreateOnSchema(schema, underlyingKeyword_, line,
                                                  start + underlyingKeyword_.size(), stream);
    underlying_ = dataType_;
}

void Type::vStatementRead(Schema& schema, ReadLineHelper& line, std::istream& stream) {
    while (line.boNextLine(stream)) {
        const auto where = line.getLine().find(WhereKeyword);
        if (where != std::string::npos)
            where_ = std::make_unique<Where>(schema, line, where + WhereKeyword.size(), stream);
        if (line.getLine().find("END_TYPE") != std::string::npos)
            return;
    }
}

Type* Type::pUnderlyingTypeFind(const Schema& schema) {
    if (underlying_)
        return nullptr;
    auto* const found = schema.pObjectFind(underlyingKeyword_);
    if (!found || found->getKind() != ObjectBase::Type::Type)
        return nullptr;
    underlying_ = found;
    return static_cast<Type*>(found);
}

void Type::vUpdate(Schema& schema) {
    // Down the chain of types that are not resolved yet, then back up: a chain is as long as the text likes.
    std::vector<Type*> chain{this};
    while (auto* const underlying = chain.back()->pUnderlyingTypeFind(schema))
        chain.push_back(underlying);
    chain.back()->vUpdateSelf(schema);
    for (auto index = chain.size() - 1; index-- > 0;) {
        auto& type = *chain[index];
        auto& underlying = *chain[index + 1];
        type.dataType_ = underlying.dataType_;
        underlying.derivedTypes_.push_back(&type);
        type.vUpdateSelf(schema);
    }
}

void Type::vUpdateSelf(Schema& schema) {
    if (!underlying_)
        vAssertReport("Not type found", "kiv::ifc::def::schema::Type::vUpdate",
                      "Source/Format/Ifc/Def/Schema/IfcSchemaType", 85);
    if (where_)
        where_->parseRules(schema);
}

} // namespace kiv::ifc::def::schema
