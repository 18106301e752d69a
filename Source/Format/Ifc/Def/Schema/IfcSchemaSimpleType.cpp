#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSimpleType.h"

#include "Format/Ifc/Def/Schema/IfcSchemaUnsigned.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

namespace kiv::ifc::def::schema {

namespace {

/// The width in a keyword such as "STRING(255)": what follows its first seven bytes.
std::uint64_t widthFromKeyword(std::string_view keyword) {
    constexpr std::size_t prefix = std::string_view("STRING(").size();
    return keyword.size() >= prefix + 2 ? unsignedFromText<std::uint64_t>(keyword.substr(prefix)) : 0;
}

} // namespace

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

template class DataTypeWithSize<4>;
template class DataTypeWithSize<6>;

} // namespace kiv::ifc::def::schema
