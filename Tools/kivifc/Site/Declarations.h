/// @file
/// The text of each object of a schema as its file has it.
///
///     const Declarations declarations(file);
///     declarations.textOf(*function); // "FUNCTION IfcDotProduct ... END_FUNCTION"
///     for (const auto* rule : declarations.unreadRulesOf(*entity))
///         write(rule->name.text, rule->expression); // which has no tree
///
/// Ownership: refers to the file, which must outlive it.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc. An object that is not found has an empty text.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDerive.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "kiv/Kit/Positions/ExpressPositions.h"
#include "kivifc/Documents/SchemaFile.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

class Declarations {
public:
    explicit Declarations(const SchemaFile& file);
    Declarations(const Declarations&) = delete;
    Declarations& operator=(const Declarations&) = delete;

    /// From the keyword to the end, both included.
    std::string_view textOf(const ifc::def::schema::ObjectBase& object) const;
    /// Of the keyword; 0 when it is not found.
    std::size_t lineOf(const ifc::def::schema::ObjectBase& object) const;
    /// The WHERE rules of an entity or a type that are in its text and not in its clause: one that cannot be
    /// parsed, and all after it.
    const std::vector<const kit::ExpressMember*>&
    unreadRulesOf(const ifc::def::schema::ObjectBase& object) const;
    /// The type, ":=" and the expression of a derived attribute, with their line ends and comments, which the
    /// value itself does not keep apart. Empty when it is not found.
    std::string_view textOf(const ifc::def::schema::DeriveValue& value) const;
    /// Of all objects.
    std::size_t countUnreadRules() const { return unreadCount_; }

private:
    const kit::ExpressDeclaration* pFound(const ifc::def::schema::ObjectBase& object) const;
    void vDerivedFind(const ifc::def::schema::ObjectBase& object, const kit::ExpressDeclaration& declaration);
    void vUnreadFind(const ifc::def::schema::ObjectBase& object, const kit::ExpressDeclaration& declaration);

    kit::ExpressPositions positions_;
    std::unordered_map<const ifc::def::schema::ObjectBase*, const kit::ExpressDeclaration*> found_;
    std::unordered_map<const ifc::def::schema::ObjectBase*, std::vector<const kit::ExpressMember*>> unread_;
    std::unordered_map<const ifc::def::schema::DeriveValue*, std::string_view> derived_;
    std::size_t unreadCount_ = 0;
};

} // namespace kiv::kivifc::site
