/// @file
/// The aggregates ARRAY, LIST and SET: data types with bounds and an element type.
///
///     const auto* list = DataTypeListInterface::pFrom(attribute.pFirstType());
///     if (list && list->getUpperBound().state == Bound::State::Unbounded) ...
///
/// Ownership: an aggregate belongs to its schema, as its element type does.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    an element type that is not found is an assertion report; the pointer stays null.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataTypeBase.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>

namespace kiv::ifc::def::schema {

/// One bound of an aggregate.
struct Bound {
    enum class State : std::uint32_t { NotGiven = 0, Given = 1, Unbounded = 2 };

    /// The number written; 0 unless the state is `Given`.
    std::uint32_t value = 0;
    State state = State::NotGiven;
};

/// What ARRAY, LIST and SET have in common.
class KIV_EXPORT DataTypeListInterface {
public:
    virtual ~DataTypeListInterface();

    /// The object as an aggregate; null for null and for everything else.
    static const DataTypeListInterface* pFrom(const ObjectBase* object);

    virtual Bound getLowerBound() const = 0;
    virtual Bound getUpperBound() const = 0;

    /// The text after OF, as written.
    virtual std::string_view getElementText() const = 0;

    /// What the element text names or describes; null when it was not found.
    virtual const ObjectBase* pElement() const = 0;
};

template <std::uint32_t N>
class KIV_EXPORT DataTypeListBase : public DataType<N>, public DataTypeListInterface {
public:
    /// `unique`, when given, receives whether the elements are declared UNIQUE. The text outlives the type.
    DataTypeListBase(std::string_view text, bool* unique);
    DataTypeListBase(ReadLineHelper& line, std::size_t pos, std::istream& stream, bool* unique);
    ~DataTypeListBase() override;

    void vUpdate(Schema& schema) override;
    const ObjectBase* pBaseType() const override;

    Bound getLowerBound() const override { return {lower_, static_cast<Bound::State>(lowerState_)}; }
    Bound getUpperBound() const override { return {upper_, static_cast<Bound::State>(upperState_)}; }
    std::string_view getElementText() const override { return {elementText_, elementTextSize_}; }
    const ObjectBase* pElement() const override { return element_; }

private:
    void vInit(std::string_view text, bool* unique);
    static void vUniqueRead(std::string_view& text, bool& unique);

    // The order leaves no room unused.
    std::uint32_t lower_ = 0;
    std::uint32_t upper_ = 0;
    const char* elementText_ = nullptr;
    const ObjectBase* element_ = nullptr;
    std::uint32_t elementTextSize_ = 0;
    std::uint8_t lowerState_ = 0;
    std::uint8_t upperState_ = 0;
};

class KIV_EXPORT DataTypeArray final : public DataTypeListBase<9> {
public:
    explicit DataTypeArray(std::string_view text);
    DataTypeArray(ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeArray() override;
};

class KIV_EXPORT DataTypeList final : public DataTypeListBase<10> {
public:
    explicit DataTypeList(std::string_view text);
    DataTypeList(ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeList() override;

    /// "UNI" follows OF somewhere, in whatever word, unless a nested aggregate follows OF at once.
    bool isUnique() const { return unique_; }

private:
    DataTypeList(std::string_view text, bool unique);

    bool unique_;
};

class KIV_EXPORT DataTypeSet final : public DataTypeListBase<11> {
public:
    explicit DataTypeSet(std::string_view text);
    DataTypeSet(ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeSet() override;
};

extern template class DataTypeListBase<9>;
extern template class DataTypeListBase<10>;
extern template class DataTypeListBase<11>;

} // namespace kiv::ifc::def::schema
