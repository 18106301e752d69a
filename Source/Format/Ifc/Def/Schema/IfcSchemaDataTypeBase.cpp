#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataTypeBase.h"

namespace kiv::ifc::def::schema {

DataTypeBase::DataTypeBase(DataTypeKind kind) :
    ObjectBase(ObjectBase::Type::DataType), dataTypeKind_(static_cast<std::uint8_t>(kind)) {}

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

template <std::uint32_t N>
DataType<N>::DataType() : DataTypeBase(static_cast<DataTypeKind>(N)) {}

template <std::uint32_t N>
DataType<N>::~DataType() = default;

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

} // namespace kiv::ifc::def::schema
