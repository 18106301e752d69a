/// What the tests of the store share: set definitions from a few words, and the registry and the loader empty
/// before and after each test.
///
///     class SchemaPsetTest : public StoreTest {};
///
///     TEST_F(SchemaPsetTest, ...) {
///         const auto schema = schemaPsetFromText(StoreSchema);
///         registry().addPropertySets({"TEST", true}, collectionOf(*schema, {sPropertySet("Pset_A",
///         {"IfcWall"})}));
///
/// Errors: a set that is refused and a text that is no XML are std::logic_error, which fails the test.
#pragma once

#include "Support/SchemaPsetFromText.h"
#include "Support/SetFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/SchemaLoader.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

using Texts = std::vector<std::string>;

/// Four entities, each below the one before it, and the two defined types of their attributes.
inline constexpr std::string_view StoreSchema =
    "TYPE IfcLabel = STRING(255);\n"
    "END_TYPE;\n"
    "TYPE IfcWallTypeEnum = ENUMERATION OF (SOLIDWALL, PARAPET);\n"
    "END_TYPE;\n"
    "ENTITY IfcRoot;\n"
    "  Name : OPTIONAL IfcLabel;\n"
    "END_ENTITY;\n"
    "ENTITY IfcElement;\n"
    " SUBTYPE OF (IfcRoot);\n"
    "END_ENTITY;\n"
    "ENTITY IfcWall;\n"
    " SUBTYPE OF (IfcElement);\n"
    "  PredefinedType : OPTIONAL IfcWallTypeEnum;\n"
    "END_ENTITY;\n"
    "ENTITY IfcWallStandardCase;\n"
    " SUBTYPE OF (IfcWall);\n"
    "END_ENTITY;\n";

class StoreTest : public ::testing::Test {
protected:
    StoreTest() { vStoreClear(); }
    ~StoreTest() override { vStoreClear(); }

    static ifc::def::SchemaContextAndPropertySetDefinitions& registry() {
        return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
    }

private:
    static void vStoreClear() {
        registry().clear();
        ifc::SchemaLoader::vCurrFree();
    }
};

/// A property or a quantity, `type` being what its type element holds.
inline std::string sMember(const std::string& tag, const std::string& name, const std::string& type,
                           const std::string& guid) {
    const auto typeTag = tag == "QtoDef" ? std::string("QtoType") : std::string("PropertyType");
    return "<" + tag + (guid.empty() ? "" : " ifdguid='" + guid + "'") + "><Name>" + name + "</Name>" +
           (type.empty() ? "" : "<" + typeTag + ">" + type + "</" + typeTag + ">") + "</" + tag + ">";
}

inline std::string sProperty(const std::string& name, const std::string& type = {},
                             const std::string& guid = {}) {
    return sMember("PropertyDef", name, type, guid);
}

inline std::string sQuantity(const std::string& name, const std::string& type = {},
                             const std::string& guid = {}) {
    return sMember("QtoDef", name, type, guid);
}

inline std::string sSet(const std::string& tag, const std::string& listTag, const std::string& name,
                        const Texts& classes, const std::string& members) {
    std::string xml = "<" + tag + "><Name>" + name + "</Name><ApplicableClasses>";
    for (const auto& applicable : classes)
        xml += "<ClassName>" + applicable + "</ClassName>";
    return xml + "</ApplicableClasses><" + listTag + ">" + members + "</" + listTag + "></" + tag + ">";
}

inline std::string sPropertySet(const std::string& name, const Texts& classes = {},
                                const std::string& members = {}) {
    return sSet("PropertySetDef", "PropertyDefs", name, classes, members);
}

inline std::string sQuantitySet(const std::string& name, const Texts& classes = {},
                                const std::string& members = {}) {
    return sSet("QtoSetDef", "QtoDefs", name, classes, members);
}

/// Adds the sets one after the other.
inline void vSetsAdd(ifc::def::SchemaPropertySetDefinitions& sets, const ifc::def::schema::Schema& schema,
                     const Texts& texts) {
    for (const auto& text : texts) {
        ifc::def::xml::XmlSetErrors errors;
        if (!sets.xmlSetAdd(schema, pSetFromText(text), errors))
            throw std::logic_error("refused: " + text);
    }
}

inline ifc::def::SchemaPropertySetDefinitions collectionOf(const ifc::def::schema::Schema& schema,
                                                           const Texts& texts) {
    ifc::def::SchemaPropertySetDefinitions sets;
    vSetsAdd(sets, schema, texts);
    return sets;
}

inline Texts namesOf(const std::vector<const ifc::def::xml::SetDef*>& sets) {
    Texts names;
    for (const auto* const set : sets)
        names.push_back(set->getName());
    return names;
}

/// The GUID that this number makes, and the text of it.
inline kiv::Guid guidOf(std::uint8_t number) {
    return {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, number}};
}

inline std::string sGuid(std::uint8_t number) {
    return guidOf(number).toString(false);
}

} // namespace kiv::test
