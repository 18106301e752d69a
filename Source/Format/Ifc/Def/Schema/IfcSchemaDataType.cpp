#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

#include "Base/Arena.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

template <class NewType>
ArenaPtr<DataTypeBase> create(Arena& arena) {
    if constexpr (std::is_constructible_v<NewType, std::string_view, std::string_view>)
        return arena.pMakeOwned<NewType>(std::string_view(), std::string_view());
    else if constexpr (std::is_constructible_v<NewType, std::string_view>)
        return arena.pMakeOwned<NewType>(std::string_view());
    else
        return arena.pMakeOwned<NewType>();
}

/// A data type of which a schema holds one, under its keyword.
struct SharedType {
    std::string_view keyword;
    SchemaBuilder::TypeMaker create;
};

constexpr SharedType SharedTypes[] = {{"REAL", &create<DataType<0>>},      {"BOOLEAN", &create<DataType<1>>},
                                      {"INTEGER", &create<DataType<2>>},   {"NUMBER", &create<DataType<3>>},
                                      {"STRING", &create<DataTypeString>}, {"LOGICAL", &create<DataType<5>>},
                                      {"BINARY", &create<DataTypeBinary>}};

/// The new, unshared data type for a keyword. `source` makes ENUMERATION, SELECT, the aggregates and a sized
/// STRING, as these are built differently from a text and from the line of a declaration.
template <class Source>
ArenaPtr<DataTypeBase> pNewType(Arena& arena, std::string_view keyword, Source&& source) {
    if (keyword.find("STRING") != std::string_view::npos)
        return source.string(arena, keyword);
    if (keyword.find("BINARY") != std::string_view::npos)
        return arena.pMakeOwned<DataTypeBinary>(keyword);
    if (keyword == "ENUMERATION")
        return source.template create<DataTypeEnum>(arena);
    if (keyword == "SELECT")
        return source.template create<DataTypeSelect>(arena);
    if (keyword == "ARRAY")
        return source.template create<DataTypeArray>(arena);
    if (keyword == "LIST")
        return source.template create<DataTypeList>(arena);
    if (keyword == "SET")
        return source.template create<DataTypeSet>(arena);
    return nullptr;
}

struct FromText {
    std::string_view rest;

    template <class NewType>
    ArenaPtr<DataTypeBase> create(Arena& arena) const {
        return arena.pMakeOwned<NewType>(rest);
    }
    ArenaPtr<DataTypeBase> string(Arena& arena, std::string_view keyword) const {
        return arena.pMakeOwned<DataTypeString>(keyword, rest);
    }
};

struct FromLine {
    ReadLineHelper& line;
    std::size_t pos;
    std::istream& stream;

    template <class NewType>
    ArenaPtr<DataTypeBase> create(Arena& arena) const {
        return arena.pMakeOwned<NewType>(line, pos, stream);
    }
    ArenaPtr<DataTypeBase> string(Arena& arena, std::string_view keyword) const {
        return arena.pMakeOwned<DataTypeString>(keyword, line, pos, stream);
    }
};

/// Null when the keyword is none of a shared data type.
DataTypeBase* pSharedType(Schema& schema, std::string_view keyword) {
    static_assert(std::size(SharedTypes) == SchemaBuilder::SharedTypeCount);
    const auto* const shared =
        std::find_if(std::begin(SharedTypes), std::end(SharedTypes),
                     [&](const SharedType& entry) { return entry.keyword == keyword; });
    if (shared == std::end(SharedTypes))
        return nullptr;
    const auto index = static_cast<std::size_t>(shared - std::begin(SharedTypes));
    return &SchemaBuilder::sharedType(schema, index, shared->keyword, shared->create);
}

/// The new data type that `source` makes for the keyword, added to the schema; null when the keyword is none
/// of a data type.
template <class Source>
DataTypeBase* pTypeAdd(Schema& schema, std::string_view keyword, Source&& source) {
    auto type = pNewType(SchemaBuilder::arenaOf(schema), keyword, std::forward<Source>(source));
    return type ? &SchemaBuilder::of(schema).typeAdd(keyword, std::move(type)) : nullptr;
}

} // namespace

DataTypeBase* DataTypeBase::pTypeCreateOnSchema(Schema& schema, std::string_view text, bool update) {
    constexpr auto npos = std::string_view::npos;
    const auto blank = text.find(' ');
    const auto end = blank != npos ? blank : text.find(';');
    const auto rest = blank != npos ? text.substr(blank + 1) : std::string_view();
    return pTypeCreateOnSchema(schema, text.substr(0, end), rest, update);
}

DataTypeBase* DataTypeBase::pTypeCreateOnSchema(Schema& schema, std::string_view keyword,
                                                std::string_view rest, bool update) {
    if (auto* const shared = pSharedType(schema, keyword))
        return shared;
    auto* const type = pTypeAdd(schema, keyword, FromText{rest});
    if (type && update)
        type->vUpdate(schema);
    return type;
}

DataTypeBase* DataTypeBase::pTypeCreateOnSchema(Schema& schema, std::string_view keyword,
                                                ReadLineHelper& line, std::size_t pos, std::istream& stream) {
    if (auto* const shared = pSharedType(schema, keyword))
        return shared;
    return pTypeAdd(schema, keyword, FromLine{line, pos, stream});
}

} // namespace kiv::ifc::def::schema
