/// @file
/// The vocabulary that all set definitions share: names, texts, GUIDs and aliases, the classes a set applies
/// to, and the bases of sets, of their members and of their members' types. Folder `Pset` holds the property
/// sets, `Qto` the quantity sets.
///
///     void vShow(const SetDef& set) {
///         for (const auto& applicable : set.getApplicableClasses())
///             std::cout << set.getName() << " applies to " << applicable.getClassName() << '\n';
///     }
///
/// Ownership: a set owns its members, a member its type; members refer back to their set, which therefore
///            stays where it is.
/// Threads:   unchanged once read; what is const may be called from any number of threads.
/// Errors:    a problem in a document becomes a record in the `XmlSetErrors`, and reading goes on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/IfcDefAliases.h"
#include "kiv/Format/Ifc/Def/IfcDefApplicableClasses.h"
#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Format/Ifc/Def/IfcDefExtraExportInfo.h"
#include "kiv/Host/Id/KivId.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def {
enum class Report : std::uint8_t;
}

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::ifc::def::xml {

/// How the definitions of a set may be used: by types, by occurrences, and so on; named as documents name it.
enum class TemplateType : std::int32_t {
    PSET_TYPEDRIVENONLY = 0,
    PSET_TYPEDRIVENOVERRIDE = 1,
    PSET_OCCURRENCEDRIVEN = 2,
    PSET_PERFORMANCEDRIVEN = 3,
    PSET_MATERIALDRIVEN = 4,
    PSET_PROFILEDRIVEN = 5,
    QTO_TYPEDRIVENONLY = 6,
    QTO_TYPEDRIVENOVERRIDE = 7,
    QTO_OCCURRENCEDRIVEN = 8,
    NOTDEFINED = 9
};

/// The text that documents have for a template type; `type` must be one of the enumerators.
KIV_EXPORT std::string_view sTemplateTypeText(TemplateType type);

/// What sets and their members have in common.
class KIV_EXPORT DefBase {
public:
    virtual ~DefBase();

    const std::string& getName() const { return name_; }
    const std::string& getDefinition() const { return definition_; }
    /// The null GUID when the document gives none or an illegal one.
    const kiv::Guid& getIfdGuid() const { return ifdGuid_; }
    /// The translations of the definition text.
    const Aliases& getDefinitionAliases() const { return definitionAliases_; }
    /// The line of its element in the document; 0 for one made in code.
    std::size_t getLine() const { return line_; }

protected:
    /// Reads the "ifdguid" attribute; the children are for the derived class to walk.
    DefBase(const kiv::xml::const_Element& element, XmlSetErrors& errors);
    explicit DefBase(std::string_view name);
    DefBase(DefBase&&) noexcept = default;
    DefBase& operator=(DefBase&&) noexcept = default;

    /// Takes "Name" and "Definition"; false for every other tag.
    bool boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter = nullptr);

    void vDefinitionAliasesAdd(const kiv::xml::const_Element& list, std::string_view itemTag,
                               WorkMeter* meter = nullptr);

    /// Writes "Name" and "Definition".
    void vTextsExport(kiv::xml::Element& element) const;

private:
    std::string name_;
    std::string definition_;
    kiv::Guid ifdGuid_;
    Aliases definitionAliases_;
    std::size_t line_ = 0;
};

class SetDef;
class TypeBase;

/// A member of a set: a property or a quantity.
class KIV_EXPORT Def : public DefBase {
public:
    Def(const SetDef* owner, std::string_view name);
    ~Def() override;

    /// The IFC entity that a value of this definition becomes; empty when it has no type.
    virtual std::string getEntityName() const = 0;

    /// The names of set and definition, as in "Pset_WallCommon.IsExternal". There must be an owner.
    std::string getConcept() const;

    /// The set that holds this definition; null for the parts of a complex property.
    const SetDef* pOwner() const { return owner_; }
    /// The translations of the name.
    const Aliases& getNameAliases() const { return nameAliases_; }

protected:
    Def(const SetDef* owner, const kiv::xml::const_Element& element, XmlSetErrors& errors);
    Def(Def&&) noexcept = default;
    Def& operator=(Def&&) noexcept = default;

    /// Takes what `DefBase` takes, "NameAliases" and "DefinitionAliases"; false for every other tag.
    bool boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter = nullptr);

    /// Writes what all members have in common.
    void vExportCommon(kiv::xml::Element& element, const ExtraExportInfo* info) const;

    /// Appends the member's element to `parent`, shows it to the hook and writes what all members have in
    /// common.
    kiv::xml::Element exportBegin(kiv::xml::Element& parent, std::string_view tag,
                                  const ExtraExportInfo* info) const;

    /// Reports a type whose IFC entity the schema lacks or has as something else.
    static void vEntityExpect(const schema::Schema& schema, const TypeBase& type, Report report);

private:
    void vGuidExport(kiv::xml::Element& element, const ExtraExportInfo* info) const;

    Aliases nameAliases_;
    const SetDef* owner_;
};

/// A whole property set or quantity set.
class KIV_EXPORT SetDef : public DefBase {
public:
    explicit SetDef(std::string_view name);
    SetDef(const SetDef&) = delete;
    SetDef& operator=(const SetDef&) = delete;
    ~SetDef() override;

    /// Checks the set against the schema and adds a record for each applicable class that does not fit. When
    /// there are records then, of reading or of checking, the collector is named after the set.
    ///
    /// False when the set is to be refused. Most records do not cause that: the only one that does is a
    /// predefined type on an entity whose attribute for it is of no defined type, and only when no later
    /// class adds a record.
    virtual bool checkForErrors(const schema::Schema& schema, XmlSetErrors& errors) const;

    /// Writes the set and returns the element that holds it: `element` itself for a property set, one
    /// appended to it for a quantity set. `info` may be null.
    virtual kiv::xml::Element exportDef(kiv::xml::Element& element, ExtraExportInfo* info) const = 0;

    /// The tag of the kind of set.
    virtual const char* pXmlElementName() const = 0;

    /// Writes what all sets have in common. GUID, template type, version and aliases are not part of that.
    void vExportCommon(kiv::xml::Element& element) const;

    /// The IFC version the set was made for, as written; empty when not given.
    const std::string& getIfcVersion() const { return ifcVersion_; }
    TemplateType getTemplateType() const { return templateType_; }
    /// In document order; a class that is named twice is there twice.
    const std::vector<ApplicableClasses>& getApplicableClasses() const { return applicableClasses_; }
    const std::string& getApplicableTypeValue() const { return applicableTypeValue_; }

protected:
    /// Reads the attributes; the children are for the derived class to walk.
    SetDef(const kiv::xml::const_Element& element, XmlSetErrors& errors);

    /// Takes what `DefBase` takes, "IfcVersion", "ApplicableClasses" and "ApplicableTypeValue"; false for
    /// every other tag and for an "IfcVersion" without "version".
    bool boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter = nullptr);

private:
    struct Finding;
    class PredefinedTypes;

    void vApplicableClassesRead(const kiv::xml::const_Element& list, WorkMeter* meter);
    static std::optional<Finding> findingOf(const ApplicableClasses& applicable, const schema::Schema& schema,
                                            PredefinedTypes& predefinedTypes);

    std::string ifcVersion_;
    TemplateType templateType_ = TemplateType::NOTDEFINED;
    std::vector<ApplicableClasses> applicableClasses_;
    std::string applicableTypeValue_;
};

/// The type of a property or of a quantity.
class KIV_EXPORT TypeBase {
public:
    virtual ~TypeBase();

    /// The IFC entity that a value of this type becomes.
    virtual std::string sEntityName() const = 0;

    /// Checks the type against the schema; false when it does not fit. The base has nothing to check: true.
    virtual bool checkForErrors(const schema::Schema& schema, XmlSetErrors& errors) const;

protected:
    TypeBase() = default;
    TypeBase(TypeBase&&) noexcept = default;
    TypeBase& operator=(TypeBase&&) noexcept = default;
};

} // namespace kiv::ifc::def::xml
