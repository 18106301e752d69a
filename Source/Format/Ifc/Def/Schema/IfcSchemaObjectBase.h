/// @file
/// What every named object of a schema has in common: its kind and its name.
///
///     const auto* object = schema.pObjectFromName("ifcwall");
///     if (object) std::cout << object->getName(); // IfcWall
///
/// Ownership: objects belong to their schema and live as long as it does.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    none.
#pragma once

#include "kiv/Base/Export.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv {
class Arena;
}

namespace kiv::ifc::def::schema {

class Entity;
class ReadLineHelper;
class Schema;

/// Base of the named schema objects and of the data types, so that one pointer can refer to either.
class KIV_EXPORT ObjectBase {
public:
    /// What an object is. A data type is 0 here and has a kind of its own (see `DataTypeBase`).
    /// It hides the class `Type` inside object classes, where that is written `schema::Type`.
    enum class Type : std::uint32_t { DataType = 0, Type = 1, Entity = 2, Function = 3, Rule = 4 };

    /// An object without a name.
    explicit ObjectBase(ObjectBase::Type kind);

    /// Takes the name from the current line. `namePos` is the byte offset after the statement's keyword;
    /// `nameEnd` receives the offset at which the name ended, npos when it ran to the end of the line.
    ///
    /// A name ends at the first blank, else at the first ';': in "ENTITY A; x" the name is "A;". It is kept
    /// in the arena of `line`.
    ObjectBase(ObjectBase::Type kind, ReadLineHelper& line, std::size_t namePos, std::size_t& nameEnd);

    ObjectBase(const ObjectBase&) = delete;
    ObjectBase& operator=(const ObjectBase&) = delete;
    virtual ~ObjectBase();

    /// Resolves the names this object refers to; called while its schema is built.
    virtual void vUpdate(Schema& schema);

    ObjectBase::Type getKind() const { return static_cast<ObjectBase::Type>(kind_); }
    /// The name as the schema writes it.
    std::string_view getName() const { return {name_, nameSize_}; }
    /// The name with a to z made A to Z.
    std::string_view getNameUpper() const { return {nameUpper_, nameSize_}; }
    /// `nameHash` of the name as written; computed by each call.
    std::uint32_t getNameHash() const;
    /// `nameHash` of the upper-cased name; computed by each call.
    std::uint32_t getNameUpperHash() const;

protected:
    /// Takes a name that outlives the object.
    void vNameSet(std::string_view name, Arena& arena);

private:
    friend class SchemaBuilder;

    const char* name_ = nullptr;
    const char* nameUpper_ = nullptr;
    std::uint32_t nameSize_ = 0;
    // Last, so that small members of derived classes fill the padding that follows.
    std::uint8_t kind_;
};

/// A look-up key for an object: its upper-cased name.
///
/// Ownership: refers to the name it was made from, which must outlive it.
class KIV_EXPORT ObjectName {
public:
    explicit ObjectName(const Entity& entity);
    /// For a name that a host holds; it must be upper-case already.
    explicit ObjectName(std::string_view upperName);

    std::string_view getView() const { return upperName_; }
    /// `nameHash` of the name; computed by each call.
    std::uint32_t getHash() const;

private:
    std::string_view upperName_;
};

} // namespace kiv::ifc::def::schema
