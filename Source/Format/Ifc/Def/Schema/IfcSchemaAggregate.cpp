#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAggregate.h"

#include "Base/Size32.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaUnsigned.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace kiv::ifc::def::schema {

namespace {

/// The report of an aggregate whose element the schema lacks.
constexpr Report elementNotFound(std::uint32_t kind) {
    if (kind == 9)
        return Report::ArrayElementNotFound;
    return kind == 10 ? Report::ListElementNotFound : Report::SetElementNotFound;
}

Bound boundFromText(std::string_view text) {
    if (text.starts_with('?'))
        return {0, Bound::State::Unbounded};
    if (text.empty())
        return {};
    return {unsignedFromText<std::uint32_t>(text), Bound::State::Given};
}

/// The rest of the current line, kept for as long as what is read out of the schema.
std::string_view restOfLine(ReadLineHelper& line, std::size_t pos) {
    const auto text = line.getLine();
    return line.getKept(text.substr(std::min(pos, text.size())));
}

} // namespace

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
        const auto lower = boundFromText(text.substr(open + 1, colon - open - 1));
        const auto upper = boundFromText(text.substr(colon + 1, close - colon - 1));
        lower_ = lower.value;
        lowerState_ = static_cast<std::uint8_t>(lower.state);
        upper_ = upper.value;
        upperState_ = static_cast<std::uint8_t>(upper.state);
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
    const auto element = text.substr(0, text.find(';'));
    elementText_ = element.data();
    elementTextSize_ = size32(element.size());
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
    element_ = schema.pObjectFromName(getElementText());
    if (!element_ && !nesting.isTooDeep())
        element_ = DataTypeBase::pTypeCreateOnSchema(schema, getElementText(), true);
    if (!element_)
        SchemaBuilder::vReport(schema, elementNotFound(N));
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

template class DataTypeListBase<9>;
template class DataTypeListBase<10>;
template class DataTypeListBase<11>;

} // namespace kiv::ifc::def::schema
