/// What look-ups are compared with: what anybody would write with `std::unordered_map`.
///
/// A question is upper-cased where the library upper-cases it. Each class answers what its namesake in
/// "Questions.h" is asked, and counts what it finds.
///
/// Ownership: refer to the schema or the sets that they were made from.
#pragma once

#include "Questions.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::bench {

using NameMap = std::unordered_map<std::string, void*>;

/// The objects of a schema by upper-cased name.
class ObjectMap {
public:
    explicit ObjectMap(const ifc::def::schema::Schema& schema);

    std::size_t ask(std::span<const std::string> questions) const;

    /// The same with one text into which all questions are upper-cased, which a look-up of its own could not
    /// have.
    std::size_t askWithOneText(std::span<const std::string> questions) const;

private:
    NameMap objects_;
};

/// The attributes of each entity by name, level by level.
class AttributeMap {
public:
    explicit AttributeMap(const ifc::def::schema::Schema& schema);

    /// A question with the place where the search begins, looked up beforehand.
    struct Level {
        NameMap attributes;
        const Level* above = nullptr;
    };
    struct Question {
        const Level* level;
        std::string name;
    };
    std::vector<Question> questionsOf(std::span<const AttributeQuestion> questions) const;

    static std::size_t ask(std::span<const Question> questions);

private:
    std::unordered_map<const ifc::def::schema::Entity*, Level> levels_;
};

/// The sets by upper-cased name, and the members of each by name.
class MemberMap {
public:
    explicit MemberMap(const ifc::def::SchemaPropertySetDefinitions& sets);

    std::size_t ask(std::span<const std::string> questions) const;

private:
    // Values stay where they are when more are added.
    std::unordered_map<const ifc::def::xml::SetDef*, NameMap> membersOfSet_;
    NameMap sets_;
};

/// The sets by upper-cased name.
class SetMap {
public:
    explicit SetMap(const ifc::def::SchemaPropertySetDefinitions& sets);

    std::size_t ask(std::span<const std::string> questions) const;

private:
    NameMap sets_;
};

/// The members of all sets by GUID.
class GuidMap {
public:
    explicit GuidMap(const ifc::def::SchemaPropertySetDefinitions& sets);

    std::size_t ask(std::span<const Guid> questions) const;

private:
    struct Hash {
        std::size_t operator()(const Guid& guid) const;
    };

    std::unordered_map<Guid, const void*, Hash> members_;
};

/// The sets by applicable class, found without a text of its own for each question; a question is answered by
/// one find for the entity and each one above it. Unrestricted sets are left out.
class ClassMap {
public:
    explicit ClassMap(const ifc::def::SchemaPropertySetDefinitions& sets);

    std::size_t ask(std::span<const ifc::def::schema::Entity* const> questions) const;

private:
    using Sets = std::vector<const ifc::def::xml::SetDef*>;
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    void vAppend(const ifc::def::schema::Entity* entity, Sets& answer) const;

    std::unordered_map<std::string, Sets, Hash, std::equal_to<>> classes_;
};

} // namespace kiv::bench
