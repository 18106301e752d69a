/// The EXPRESS data types that attributes and defined types refer to: simple types, ENUMERATION and SELECT,
/// and the aggregates ARRAY, LIST and SET.
///
///     const auto* list = DataTypeListInterface::pFrom(attribute.pFirstType());
///     if (list && list->getUpperBound().state == Bound::State::Unbounded) ...
///
/// Ownership: every data type belongs to its schema; simple types without a width exist once per schema.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    names that a type cannot resolve are assertion reports; the pointer stays null.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

/// The kind of a data type; the numbers are part of the interface.
enum class DataTypeKind : std::uint32_t {
    Real = 0,
    Boolean = 1,
    Integer = 2,
    Number = 3,
    String = 4,
    Logical = 5,
    Binary = 6,
    Enumeration = 7,
    Select = 8,
    Array = 9,
    List = 10,
    Set = 11
};

/// Base of all data types. Its object kind is `ObjectBase::Type::DataType`, its name the whole keyword it was
/// made from ("STRING(255)" included).
class KIV_EXPORT DataTypeBase : public ObjectBase {
public:
    explicit DataTypeBase(DataTypeKind kind);
    ~DataTypeBase() override;

    /// The object as a data type; null for null and for everything else.
    static const DataTypeBase* pFrom(const ObjectBase* object);

    DataTypeKind getDataTypeKind() const { return dataTypeKind_; }

    /// The type of one value: the data type itself; for an aggregate what its innermost element is (a named
    /// object or a data type), null when that was not found.
    virtual const ObjectBase* pBaseType() const;

    /// True for the constructed types of EXPRESS, ENUMERATION and SELECT.
    virtual bool isConstructed() const;

    /// The data type of a whole type text, as written behind an attribute's colon: a shared simple type, or a
    /// new one that `schema` owns; null when the text begins with no keyword of a data type (with a name,
    /// say). `update` resolves a new one at once. The text outlives the schema. Like the two below only for a schema that is being read: on one
    /// that is built it throws std::logic_error, as nothing is added to that.
    static DataTypeBase* pTypeCreateOnSchema(Schema& schema, std::string_view text, bool update);

    /// The same from the keyword and the text behind it. The items of ENUMERATION and SELECT are not read
    /// here.
    static DataTypeBase* pTypeCreateOnSchema(Schema& schema, std::string_view keyword, std::string_view rest,
                                             bool update);

    /// The same from the keyword of a TYPE declaration and the current line from `pos`; the lists of
    /// ENUMERATION and SELECT are read, also across lines.
    static DataTypeBase* pTypeCreateOnSchema(Schema& schema, std::string_view keyword, ReadLineHelper& line,
                                             std::size_t pos, std::istream& stream);

private:
    DataTypeKind dataTypeKind_;
};

/// A data type of kind N; used as it is for REAL, BOOLEAN, INTEGER, NUMBER and LOGICAL.
template <std::uint32_t N>
class KIV_EXPORT DataType : public DataTypeBase {
public:
    DataType();
    ~DataType() override;
};

/// STRING or BINARY with its width.
template <std::uint32_t N>
class KIV_EXPORT DataTypeWithSize : public DataType<N> {
public:
    /// Reads the width out of the keyword, as in "STRING(255)".
    explicit DataTypeWithSize(std::string_view keyword);
    ~DataTypeWithSize() override;

    /// In characters for STRING, in bits for BINARY; 0 when none was given.
    std::uint64_t getWidth() const { return width_; }

private:
    std::uint64_t width_;
};

class KIV_EXPORT DataTypeString final : public DataTypeWithSize<4> {
public:
    /// `rest` is the text behind the keyword; it is not looked at.
    DataTypeString(std::string_view keyword, std::string_view rest);
    DataTypeString(std::string_view keyword, ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeString() override;

    /// FIXED was written behind the width; known for TYPE declarations only.
    bool isFixed() const { return fixed_; }

private:
    bool fixed_;
};

class KIV_EXPORT DataTypeBinary final : public DataTypeWithSize<6> {
public:
    explicit DataTypeBinary(std::string_view keyword);
    ~DataTypeBinary() override;
};

class KIV_EXPORT DataTypeEnum final : public DataType<7> {
public:
    /// Without items: the text of an attribute's type is not searched for them.
    explicit DataTypeEnum(std::string_view rest);
    explicit DataTypeEnum(const std::vector<std::string>& items);
    DataTypeEnum(ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeEnum() override;

    bool isConstructed() const override;

    /// The items as written, in the order of the declaration.
    std::span<const std::string_view> getItems() const { return items_; }

    /// The distinct items, ordered byte by byte; they point into `getItems`.
    std::span<const std::string_view* const> getItemsOrdered() const { return ordered_; }

    /// True when an item equals the text exactly, letter case included. Cost: the logarithm of the items.
    bool boContains(std::string_view item) const;

private:
    struct Copies;

    void vIndexBuild(std::span<const std::string_view*> places);

    // Of items that a caller gave; those of a declaration lie where its schema keeps them.
    std::unique_ptr<Copies> copies_;
    std::span<const std::string_view> items_;
    std::span<const std::string_view* const> ordered_;
};

class KIV_EXPORT DataTypeSelect final : public DataType<8> {
public:
    /// Without members: the text of an attribute's type is not searched for them.
    explicit DataTypeSelect(std::string_view rest);
    DataTypeSelect(ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeSelect() override;

    void vUpdate(Schema& schema) override;
    bool isConstructed() const override;

    /// The names as written, in the order of the declaration.
    std::span<const std::string_view> getMemberNames() const { return memberNames_; }

    /// What the names were resolved to, in the same order; names that nothing bears are left out.
    const std::vector<const ObjectBase*>& getMembers() const { return members_; }

    /// True when every resolved member is an entity.
    bool isAllEntities() const { return allEntities_; }

    /// True when a value of the object's type may stand for this select: the object is a member, a subtype of
    /// a member, or compatible with a member that is a defined type of a select. Selects that select each
    /// other end.
    bool isCompatible(const ObjectBase& object) const;

private:
    class Candidate;

    bool boMemberMatches(Candidate& candidate, std::vector<const DataTypeSelect*>& nested) const;

    std::span<const std::string_view> memberNames_;
    std::vector<const ObjectBase*> members_;
    bool allEntities_ = false;
};

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

    /// The text behind OF, as written.
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

    Bound getLowerBound() const override { return lower_; }
    Bound getUpperBound() const override { return upper_; }
    std::string_view getElementText() const override { return elementText_; }
    const ObjectBase* pElement() const override { return element_; }

private:
    void vInit(std::string_view text, bool* unique);
    static void vUniqueRead(std::string_view& text, bool& unique);

    Bound lower_;
    Bound upper_;
    std::string_view elementText_;
    const ObjectBase* element_ = nullptr;
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

    /// "UNI" stood behind OF, in whatever word, unless a nested aggregate follows OF at once.
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

extern template class DataType<0>;
extern template class DataType<1>;
extern template class DataType<2>;
extern template class DataType<3>;
extern template class DataType<4>;
extern template class DataType<5>;
extern template class DataType<6>;
extern template class DataType<7>;
extern template class DataType<8>;
extern template class DataType<9>;
extern template class DataType<10>;
extern template class DataType<11>;
extern template class DataTypeWithSize<4>;
extern template class DataTypeWithSize<6>;
extern template class DataTypeListBase<9>;
extern template class DataTypeListBase<10>;
extern template class DataTypeListBase<11>;

} // namespace kiv::ifc::def::schema
