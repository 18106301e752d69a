#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

#include "Base/Arena.h"
#include "Base/Words8.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <type_traits>
#include <unordered_set>

namespace kiv::ifc::def::schema {

namespace {

constexpr std::string_view File = "Source/Format/Ifc/Def/Schema/IfcSchemaDataType";

/// So many items of an enumeration, behind those that are in order, are put in their places one by one.
constexpr std::ptrdiff_t FewUnordered = 8;

/// An unsigned number as stream extraction reads it: leading white space and a sign are allowed (a negative
/// number wraps around), the first byte that is no digit ends it, too large a number gives the largest, none
/// gives 0.
template <class Number>
Number unsignedFromText(std::string_view text) {
    constexpr auto largest = std::numeric_limits<Number>::max();
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    Number value = 0;
    for (const char byte : text) {
        if (byte < '0' || byte > '9')
            break;
        const auto digit = static_cast<Number>(byte - '0');
        if (value > (largest - digit) / 10)
            return largest;
        value = static_cast<Number>(value * 10 + digit);
    }
    return negative ? static_cast<Number>(Number{0} - value) : value;
}

Bound boundFromText(std::string_view text) {
    if (text.starts_with('?'))
        return {0, Bound::State::Unbounded};
    if (text.empty())
        return {};
    return {unsignedFromText<std::uint32_t>(text), Bound::State::Given};
}

/// The width in a keyword such as "STRING(255)": what stands behind its first seven bytes.
std::uint64_t widthFromKeyword(std::string_view keyword) {
    constexpr std::size_t prefix = std::string_view("STRING(").size();
    return keyword.size() >= prefix + 2 ? unsignedFromText<std::uint64_t>(keyword.substr(prefix)) : 0;
}

/// The rest of the current line, kept for as long as what is read out of the schema.
std::string_view restOfLine(ReadLineHelper& line, std::size_t pos) {
    const auto text = line.getLine();
    return line.getKept(text.substr(std::min(pos, text.size())));
}

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

/// The new data type that `source` makes for the keyword, added to the schema; null when the keyword is none of a data
/// type.
template <class Source>
DataTypeBase* pTypeAdd(Schema& schema, std::string_view keyword, Source&& source) {
    auto type = pNewType(SchemaBuilder::arenaOf(schema), keyword, std::forward<Source>(source));
    return type ? &SchemaBuilder::of(schema).typeAdd(keyword, std::move(type)) : nullptr;
}

} // namespace

DataTypeBase::DataTypeBase(DataTypeKind kind) : ObjectBase(ObjectBase::Type::DataType), dataTypeKind_(kind) {}

DataTypeBase::~DataTypeBase() = default;

const DataTypeBase* DataTypeBase::pFrom(const ObjectBase* object) {
    const bool is = object && object->getKind() == ObjectBase::Type::DataType;
    return is ? static_cast<const DataTypeBase*>(object) : nullptr;
}

const ObjectBase* DataTypeBase::pBaseType() const {
    return this;
}

bool DataTypeBase::isConstructed() const {
    return false;
}

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

template <std::uint32_t N>
DataType<N>::DataType() : DataTypeBase(static_cast<DataTypeKind>(N)) {}

template <std::uint32_t N>
DataType<N>::~DataType() = default;

template <std::uint32_t N>
DataTypeWithSize<N>::DataTypeWithSize(std::string_view keyword) : width_(widthFromKeyword(keyword)) {}

template <std::uint32_t N>
DataTypeWithSize<N>::~DataTypeWithSize() = default;

DataTypeString::DataTypeString(std::string_view keyword, std::string_view) :
    DataTypeWithSize<4>(keyword), fixed_(false) {}

DataTypeString::DataTypeString(std::string_view keyword, ReadLineHelper& line, std::size_t pos,
                               std::istream&) :
    DataTypeWithSize<4>(keyword), fixed_(line.getLine().find("FIXED", pos) != std::string::npos) {}

DataTypeString::~DataTypeString() = default;

DataTypeBinary::DataTypeBinary(std::string_view keyword) : DataTypeWithSize<6>(keyword) {}

DataTypeBinary::~DataTypeBinary() = default;

/// The items that a caller gave, and what else lies in the memory of the type itself.
struct DataTypeEnum::Copies {
    explicit Copies(const std::vector<std::string>& given) :
        texts(given), items(texts.begin(), texts.end()), ordered(items.size()) {}

    std::vector<std::string> texts;
    std::vector<std::string_view> items;
    std::vector<const std::string_view*> ordered;
};

DataTypeEnum::DataTypeEnum(std::string_view) {}

DataTypeEnum::DataTypeEnum(const std::vector<std::string>& items) :
    copies_(std::make_unique<Copies>(items)), items_(copies_->items) {
    vIndexBuild(copies_->ordered);
}

DataTypeEnum::DataTypeEnum(ReadLineHelper& line, std::size_t pos, std::istream& stream) :
    items_(line.getNamesKept(pos, stream)) {
    vIndexBuild({line.getArena().pMakeArray<const std::string_view*>(items_.size()), items_.size()});
}

DataTypeEnum::~DataTypeEnum() = default;

/// Orders the items in `places`, of which there is one for each item.
void DataTypeEnum::vIndexBuild(std::span<const std::string_view*> places) {
    std::transform(items_.begin(), items_.end(), places.begin(), [](const auto& item) { return &item; });
    // Of equal items the one that was read first is kept: they lie in that order.
    const auto isBefore = [](const auto* a, const auto* b) {
        return boLessText(*a, *b) || (a < b && *a == *b);
    };
    // Most enumerations are in order but for the last items.
    auto sortedEnd = std::is_sorted_until(places.begin(), places.end(), isBefore);
    if (places.end() - sortedEnd > FewUnordered) {
        std::sort(places.begin(), places.end(), isBefore);
        sortedEnd = places.end();
    }
    for (; sortedEnd != places.end(); ++sortedEnd)
        std::rotate(std::upper_bound(places.begin(), sortedEnd, *sortedEnd, isBefore), sortedEnd,
                    sortedEnd + 1);
    const auto last = std::unique(places.begin(), places.end(),
                                  [](const auto* a, const auto* b) { return isSameText(*a, *b); });
    ordered_ = places.first(static_cast<std::size_t>(last - places.begin()));
}

bool DataTypeEnum::isConstructed() const {
    return true;
}

bool DataTypeEnum::boContains(std::string_view item) const {
    const auto found =
        std::lower_bound(ordered_.begin(), ordered_.end(), item,
                         [](const auto* entry, std::string_view wanted) { return *entry < wanted; });
    return found != ordered_.end() && **found == item;
}

DataTypeSelect::DataTypeSelect(std::string_view) {}

DataTypeSelect::DataTypeSelect(ReadLineHelper& line, std::size_t pos, std::istream& stream) :
    memberNames_(line.getNamesKept(pos, stream)) {}

DataTypeSelect::~DataTypeSelect() = default;

void DataTypeSelect::vUpdate(Schema& schema) {
    SchemaBuilder::of(schema); // throws when the schema is built
    allEntities_ = true;
    members_.reserve(memberNames_.size());
    for (const auto& name : memberNames_) {
        const auto* const member = schema.pObjectFromName(name);
        if (!member) {
            vAssertReport("Object not found", "kiv::ifc::def::schema::DataTypeSelect::vUpdate", File, 453);
            continue;
        }
        members_.push_back(member);
        allEntities_ = allEntities_ && member->getKind() == ObjectBase::Type::Entity;
    }
}

bool DataTypeSelect::isConstructed() const {
    return true;
}

/// The object that is asked about, and for each member whether it is that or a subtype of it.
class DataTypeSelect::Candidate {
public:
    explicit Candidate(const ObjectBase& object) : object_(object), entity_(Entity::pFrom(&object)) {}

    bool boIsOrIsBelow(const ObjectBase& member) {
        if (&member == &object_)
            return true;
        const auto* const memberEntity = entity_ ? Entity::pFrom(&member) : nullptr;
        if (!memberEntity)
            return false;
        if (++asked_ <= WalksMax)
            return entity_->isSameOrSubtypeOf(*memberEntity);
        if (line_.empty())
            vLineKeep();
        return line_.contains(memberEntity);
    }

private:
    void vLineKeep() {
        for (const auto* above = entity_; above; above = above->pSupertype())
            line_.insert(above);
    }

    // A walk along the supertypes for each member costs least for as many as people write, but thousands times thousands
    // for somebody who wants that.
    static constexpr std::size_t WalksMax = 64;

    const ObjectBase& object_;
    const Entity* entity_;
    std::size_t asked_ = 0;
    std::unordered_set<const Entity*> line_;
};

bool DataTypeSelect::isCompatible(const ObjectBase& object) const {
    Candidate candidate(object);
    std::vector<const DataTypeSelect*> nested;
    if (boMemberMatches(candidate, nested))
        return true;
    if (nested.empty())
        return false;
    // Each select is looked through once: they may name each other in circles, and reach one another on many
    // ways.
    std::unordered_set<const DataTypeSelect*> seen{this};
    while (!nested.empty()) {
        const auto* const select = nested.back();
        nested.pop_back();
        if (seen.insert(select).second && select->boMemberMatches(candidate, nested))
            return true;
    }
    return false;
}

/// True when a member is the object or one of its supertypes; the selects among the members are appended to
/// `nested`.
bool DataTypeSelect::boMemberMatches(Candidate& candidate, std::vector<const DataTypeSelect*>& nested) const {
    for (const auto* const member : members_) {
        if (candidate.boIsOrIsBelow(*member))
            return true;
        const auto* const type = schema::Type::pFrom(member);
        const bool isSelect =
            type && type->pDataType() && type->pDataType()->getDataTypeKind() == DataTypeKind::Select;
        if (isSelect)
            nested.push_back(static_cast<const DataTypeSelect*>(type->pDataType()));
    }
    return false;
}

DataTypeListInterface::~DataTypeListInterface() = default;

const DataTypeListInterface* DataTypeListInterface::pFrom(const ObjectBase* object) {
    const auto* const type = DataTypeBase::pFrom(object);
    if (!type)
        return nullptr;
    switch (type->getDataTypeKind()) {
    case DataTypeKind::Array:
        return static_cast<const DataTypeArray*>(type);
    case DataTypeKind::List:
        return static_cast<const DataTypeList*>(type);
    case DataTypeKind::Set:
        return static_cast<const DataTypeSet*>(type);
    default:
        return nullptr;
    }
}

template <std::uint32_t N>
DataTypeListBase<N>::DataTypeListBase(std::string_view text, bool* unique) {
    vInit(text, unique);
}

template <std::uint32_t N>
DataTypeListBase<N>::DataTypeListBase(ReadLineHelper& line, std::size_t pos, std::istream&, bool* unique) {
    vInit(restOfLine(line, pos), unique);
}

template <std::uint32_t N>
DataTypeListBase<N>::~DataTypeListBase() = default;

template <std::uint32_t N>
void DataTypeListBase<N>::vInit(std::string_view text, bool* unique) {
    constexpr auto npos = std::string_view::npos;
    const auto open = text.find('[');
    const auto colon = open == npos ? npos : text.find(':', open);
    const auto close = colon == npos ? npos : text.find(']', colon);
    if (close != npos) {
        lower_ = boundFromText(text.substr(open + 1, colon - open - 1));
        upper_ = boundFromText(text.substr(colon + 1, close - colon - 1));
        text.remove_prefix(close + 1);
    }
    if (unique)
        *unique = false;
    constexpr std::string_view of = "OF ";
    const auto found = text.find(of);
    if (found == npos)
        return;
    text.remove_prefix(found + of.size());
    if (unique)
        vUniqueRead(text, *unique);
    elementText_ = text.substr(0, text.find(';'));
}

/// Takes UNIQUE off the text. Three bytes of the word are searched on purpose, and anywhere: "UNI" inside the
/// name of the element counts too.
template <std::uint32_t N>
void DataTypeListBase<N>::vUniqueRead(std::string_view& text, bool& unique) {
    const bool nested = text.starts_with("LIST ") || text.starts_with("ARRAY ") || text.starts_with("SET ");
    const auto found = text.find("UNI");
    if (nested || found == std::string_view::npos)
        return;
    unique = true;
    text.remove_prefix(std::min(found + std::string_view("UNIQUE ").size(), text.size()));
}

template <std::uint32_t N>
void DataTypeListBase<N>::vUpdate(Schema& schema) {
    if (element_)
        return;
    const SchemaBuilder::AggregateNesting nesting(SchemaBuilder::of(schema));
    element_ = schema.pObjectFromName(elementText_);
    if (!element_ && !nesting.isTooDeep())
        element_ = DataTypeBase::pTypeCreateOnSchema(schema, elementText_, true);
    if (!element_)
        vAssertReport("Type not found",
                      "kiv::ifc::def::schema::DataTypeListBase<" + std::to_string(N) + ">::vUpdate", File,
                      228);
}

template <std::uint32_t N>
const ObjectBase* DataTypeListBase<N>::pBaseType() const {
    const ObjectBase* element = element_;
    while (const auto* const aggregate = DataTypeListInterface::pFrom(element))
        element = aggregate->pElement();
    return element;
}

DataTypeArray::DataTypeArray(std::string_view text) : DataTypeListBase<9>(text, nullptr) {}
DataTypeArray::DataTypeArray(ReadLineHelper& line, std::size_t pos, std::istream& stream) :
    DataTypeListBase<9>(line, pos, stream, nullptr) {}
DataTypeArray::~DataTypeArray() = default;

// The flag is set by the base, before there is a member to take it.
DataTypeList::DataTypeList(std::string_view text) : DataTypeList(text, false) {}
DataTypeList::DataTypeList(ReadLineHelper& line, std::size_t pos, std::istream&) :
    DataTypeList(restOfLine(line, pos), false) {}
DataTypeList::DataTypeList(std::string_view text, bool unique) :
    DataTypeListBase<10>(text, &unique), unique_(unique) {}
DataTypeList::~DataTypeList() = default;

DataTypeSet::DataTypeSet(std::string_view text) : DataTypeListBase<11>(text, nullptr) {}
DataTypeSet::DataTypeSet(ReadLineHelper& line, std::size_t pos, std::istream& stream) :
    DataTypeListBase<11>(line, pos, stream, nullptr) {}
DataTypeSet::~DataTypeSet() = default;

template class DataType<0>;
template class DataType<1>;
template class DataType<2>;
template class DataType<3>;
template class DataType<4>;
template class DataType<5>;
template class DataType<6>;
template class DataType<7>;
template class DataType<8>;
template class DataType<9>;
template class DataType<10>;
template class DataType<11>;
template class DataTypeWithSize<4>;
template class DataTypeWithSize<6>;
template class DataTypeListBase<9>;
template class DataTypeListBase<10>;
template class DataTypeListBase<11>;

} // namespace kiv::ifc::def::schema
