/// @file
/// What pages ask again and again of a schema and its sets, found once: who uses an object, which sets apply
/// to an entity, where everything is in the site.
///
///     const SiteModel model(loaded, "IFC4");
///     for (const auto* entity : model.getEntities())
///         write(*entity, model.usesOf(*entity), model.setsOf(*entity));
///
/// Ownership: refers to the schema and its sets, which must outlive it; it owns the sets that were read and
///            are not used.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Pictures/InheritanceTree.h"
#include "kivifc/Site/Addresses.h"
#include "kivifc/Site/Declarations.h"
#include "kivifc/Site/DeclaredNames.h"
#include "kivifc/Site/MemberUses.h"
#include "kivifc/Site/Uses.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

/// A set that was read.
struct SiteSet {
    const ifc::def::xml::SetDef* set = nullptr;
    ifc::def::SchemaPset::Context context;
    /// Its document.
    std::string path;
    /// Why no look-up finds it: refused by the schema, or of a name that is taken; empty for one that is
    /// used.
    std::string unusedReason;
    /// The one that is used instead, where the reason names its document; null for any other reason.
    const ifc::def::xml::SetDef* usedInstead = nullptr;
    /// The set of an earlier context that a search by name finds instead; null for none.
    const ifc::def::xml::SetDef* hiddenBy = nullptr;
    /// How the document is called: its file name, and of documents of one file name the folders before it
    /// that they do not all have, up to that which was given to kivifc. Where on the disk they lie is of no
    /// use to a reader of the site, and the same documents give the same site wherever they lie.
    std::string documentName;
    /// That of the set that hides it.
    std::string hidingContext;

    bool isUsed() const { return unusedReason.empty(); }
};

/// The sets that name an entity with the same predefined types.
struct AppliedSets {
    /// As the documents write them, in order; empty for all of the entity, whatever its predefined type is.
    std::vector<std::string> predefinedTypes;
    /// In the order of contexts and names.
    std::vector<const SiteSet*> sets;
};

/// Where an attribute of a supertype is declared again.
struct Redeclaration {
    const ifc::def::schema::Entity* entity;
    /// As a derived one, so that files have no value for it; else as an explicit one of a narrower type.
    bool isDerived;
};

/// How many attributes of an entity are those of a supertype, which has them as such already.
struct DeclaredAgain {
    std::size_t explicitly = 0;
    std::size_t derived = 0;
};

/// A derived attribute.
struct DerivedAttribute {
    const ifc::def::schema::Entity* entity = nullptr;
    /// Null for none.
    const ifc::def::schema::DeriveValue* value = nullptr;
    /// The object that its type names; null for none.
    const ifc::def::schema::ObjectBase* type = nullptr;
};

class SiteModel {
public:
    using Entity = ifc::def::schema::Entity;
    using ObjectBase = ifc::def::schema::ObjectBase;

    SiteModel(const SchemaWithSets& loaded, std::string title);
    SiteModel(const SiteModel&) = delete;
    SiteModel& operator=(const SiteModel&) = delete;

    const std::string& getTitle() const { return title_; }
    const SchemaFile& getSchemaFile() const { return loaded_.schema; }
    const ifc::def::SchemaPset& getSchema() const { return *loaded_.schema.schema; }
    /// What is wrong with the schema, without what only may be: data of it is lost or misread.
    std::size_t countSchemaErrors() const { return schemaErrors_; }
    const Addresses& getAddresses() const { return addresses_; }
    const Uses& usesOf(const ObjectBase& object) const { return uses_.of(object); }
    /// Of the sets that are used.
    const std::vector<MemberUse>& memberUsesOf(const ObjectBase& object) const {
        return memberUses_.of(object);
    }
    const Declarations& getDeclarations() const { return declarations_; }
    const DeclaredNames& getDeclaredNames() const { return declaredNames_; }
    const InheritanceTree& getTree() const { return tree_; }

    // All objects of a kind, those of a name that is there twice included, by upper-cased name.
    const std::vector<const Entity*>& getEntities() const { return entities_; }
    const std::vector<const ifc::def::schema::Type*>& getTypes() const { return types_; }
    const std::vector<const ifc::def::schema::Function*>& getFunctions() const { return functions_; }
    const std::vector<const ifc::def::schema::Rule*>& getRules() const { return rules_; }

    /// Every set that was read: by context, those of hosts first, and upper-cased name; those that are not
    /// used come last.
    const std::vector<SiteSet>& getSets() const { return sets_; }
    /// Null for a set that the model does not know.
    const SiteSet* pSet(const ifc::def::xml::SetDef* set) const;

    /// The sets that name this very entity, as the library's look-up finds them; those for all predefined
    /// types come first. Sets without classes are not among them.
    const std::vector<AppliedSets>& setsOf(const Entity& entity) const;
    /// How many these are.
    std::size_t setCountOf(const Entity& entity) const;
    /// The sets that name no class and so apply to every entity.
    const std::vector<const SiteSet*>& getUnrestrictedSets() const { return unrestricted_; }

    /// Where the attribute is declared again below its entity, in the order of the text.
    const std::vector<Redeclaration>&
    redeclarationsOf(const ifc::def::schema::AttributeBase& attribute) const;

    /// What the entity declares again of its supertypes, and whether as a derived one.
    using Redeclared = std::unordered_map<const ifc::def::schema::AttributeBase*, bool>;
    const Redeclared& redeclaredBy(const Entity& entity) const;

    DeclaredAgain declaredAgainIn(const Entity& entity) const;

    /// The derived attribute of that upper-cased name that an entity has, be it of a supertype; of very long
    /// lines of these, the nearest are looked at.
    DerivedAttribute derivedOf(const Entity& entity, const std::string& upperName) const;

    /// The rules of the WHERE clause of an entity, each once.
    const std::vector<const ifc::def::schema::ParsedRule*>& rulesOf(const Entity& entity) const;

    /// How many supertypes an entity has above it.
    std::size_t depthOf(const Entity& entity) const { return places_.at(&entity).depth; }
    /// How many entities are below it, at whatever depth.
    std::size_t countBelow(const Entity& entity) const { return places_.at(&entity).below; }

private:
    struct Place {
        std::size_t depth = 0;
        std::size_t below = 0;
    };

    void vObjectsSort();
    void vSetsCollect();
    void vUnusedSetsRead();
    void vDocumentsName();
    void vUsedInsteadFind();
    void vMemberUsesFind();
    void vSetsApply();
    void vUnrestrictedFind();
    void vRedeclarationsFind();
    void vRedeclarationAdd(const ifc::def::schema::AttributeBase& former, const Redeclaration& again);
    void vDerivedFind();
    void vAgainCount();
    bool isDerivedAbove(const Entity& entity, const ifc::def::schema::AttributeBase& attribute) const;
    void vRulesFind();
    void vPlacesFind();

    const SchemaWithSets& loaded_;
    std::string title_;
    std::size_t schemaErrors_ = 0;
    Declarations declarations_;
    DeclaredNames declaredNames_;
    UseTable uses_;
    MemberUses memberUses_;
    InheritanceTree tree_;
    Addresses addresses_;
    std::vector<const Entity*> entities_;
    std::vector<const ifc::def::schema::Type*> types_;
    std::vector<const ifc::def::schema::Function*> functions_;
    std::vector<const ifc::def::schema::Rule*> rules_;
    std::vector<SiteSet> sets_;
    std::vector<kit::SetDocument> unusedDocuments_;
    std::unordered_map<const ifc::def::xml::SetDef*, const SiteSet*> setsByDef_;
    std::unordered_map<const Entity*, std::vector<AppliedSets>> applied_;
    std::unordered_map<const Entity*, std::size_t> appliedCounts_;
    std::vector<const SiteSet*> unrestricted_;
    std::unordered_map<const ifc::def::schema::AttributeBase*, std::vector<Redeclaration>> redeclarations_;
    std::unordered_map<const Entity*, Redeclared> redeclaredBy_;
    std::unordered_map<const Entity*, DeclaredAgain> again_;
    // By upper-cased name.
    std::unordered_map<const Entity*, std::unordered_map<std::string, DerivedAttribute>> derived_;
    std::unordered_map<const Entity*, std::vector<const ifc::def::schema::ParsedRule*>> entityRules_;
    std::unordered_map<const Entity*, Place> places_;
};

} // namespace kiv::kivifc::site
