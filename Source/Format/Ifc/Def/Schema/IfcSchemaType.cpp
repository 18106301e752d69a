#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include "Base/Metered.h"
#include "Base/Size32.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>
#include <istream>

namespace kiv::ifc::def::schema {

namespace {

constexpr std::string_view TypeKeyword = "TYPE";

/// Of a type that no other is built on. Not made at its first use, which would be a look-up that writes.
const std::vector<const Type*> None;

} // namespace

Type::Type(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream) :
    Type(line, keywordPos + TypeKeyword.size(), std::size_t{}, schema, stream) {}

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
    const auto text = line.getKept(header.substr(start, header.substr(start).find(';')));
    const auto keyword = text.substr(0, text.find(' '));
    underlyingText_ = text.data();
    underlyingSize_ = size32(text.size());
    keywordSize_ = size32(keyword.size());
    dataType_ = DataTypeBase::pTypeCreateOnSchema(schema, keyword, line, start + keyword.size(), stream);
    underlying_ = dataType_;
}

void Type::vStatementRead(Schema& schema, ReadLineHelper& line, std::istream& stream) {
    constexpr Keyword where("WHERE", 0);
    constexpr Keyword end("END_TYPE", 3);
    while (line.boNextLine(stream)) {
        const auto found = where.findIn(line.getLine());
        if (found != std::string_view::npos)
            where_ = Where::pRead(where_, schema, line, found + where.size(), stream);
        if (end.isIn(line.getLine()))
            return;
    }
}

Type* Type::pUnderlyingTypeFind(Schema& schema) {
    if (underlying_)
        return nullptr;
    auto* const found = SchemaBuilder::pObject(schema, getUnderlyingKeyword());
    if (!found || found->getKind() != ObjectBase::Type::Type)
        return nullptr;
    underlying_ = found;
    return static_cast<Type*>(found);
}

void Type::vUpdate(Schema& schema) {
    // Down the chain of types that are not resolved yet, then back up: a chain is as long as the text likes.
    auto* const first = pUnderlyingTypeFind(schema);
    if (!first)
        return vUpdateSelf(schema);
    auto* const meter = SchemaBuilder::pMeter(schema);
    std::vector<Type*> chain;
    vRoomFor(chain, 2, meter);
    chain.assign({this, first});
    while (auto* const underlying = chain.back()->pUnderlyingTypeFind(schema)) {
        vLook(meter);
        vRoomForOne(chain, meter);
        chain.push_back(underlying);
    }
    chain.back()->vUpdateSelf(schema);
    for (auto index = chain.size() - 1; index-- > 0;) {
        auto& type = *chain[index];
        auto& underlying = *chain[index + 1];
        type.dataType_ = underlying.dataType_;
        vLook(meter);
        underlying.vDerivedAdd(type, meter);
        type.vUpdateSelf(schema);
    }
    if (meter)
        meter->vMemoryGiveBack(chain.capacity() * sizeof(Type*)); // NOLINT(bugprone-sizeof-expression)
}

void Type::vDerivedAdd(const Type& type, WorkMeter* meter) {
    if (!derivedTypes_) {
        vMemoryTake(meter, sizeof(std::vector<const Type*>));
        derivedTypes_ = std::make_unique<std::vector<const Type*>>();
    }
    vRoomForOne(*derivedTypes_, meter);
    derivedTypes_->push_back(&type);
}

const std::vector<const Type*>& Type::getDerivedTypes() const {
    return derivedTypes_ ? *derivedTypes_ : None;
}

void Type::vUpdateSelf(Schema& schema) {
    if (!underlying_)
        SchemaBuilder::vReport(schema, Report::TypeNotFound);
    if (where_)
        where_->parseRules(schema);
}

} // namespace kiv::ifc::def::schema
