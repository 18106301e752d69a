/// What the tests of the configuration share: a small schema, a configuration read for it, and its reports.
///
///     ReadConfig read("<cnf:uosElement name='ifcXML'/>");
///     EXPECT_EQ(read.config.getUosElement().getName(), "ifcXML");
///     EXPECT_EQ(read.reports.getRecords(), Reports());
#pragma once

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "Support/SchemaPsetFromText.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

using Texts = std::vector<std::string>;
using Reports = std::vector<kiv::assert::AssertRecord>;

inline constexpr std::string_view ConfigSchema = "TYPE IfcLabel = STRING;\n"
                                                 "END_TYPE;\n"
                                                 "ENTITY IfcRoot;\n"
                                                 "  Name : IfcLabel;\n"
                                                 "  Owner : IfcOwner;\n"
                                                 " INVERSE\n"
                                                 "  OwnerOf : SET OF IfcOwner FOR Owned;\n"
                                                 "END_ENTITY;\n"
                                                 "ENTITY IfcOwner;\n"
                                                 "  Owned : IfcRoot;\n"
                                                 "END_ENTITY;\n"
                                                 "ENTITY IfcWall;\n"
                                                 " SUBTYPE OF (IfcRoot);\n"
                                                 "  Tag : IfcLabel;\n"
                                                 "END_ENTITY;\n";

/// A document whose root element has these children.
inline std::string sConfigText(std::string_view children, std::string_view rootAttributes = "id='TEST'") {
    return "<cnf:configuration xmlns:cnf='c' " + std::string(rootAttributes) + ">" + std::string(children) +
           "</cnf:configuration>";
}

/// A configuration of the schema TEST, and what was reported when it was read.
class ReadConfig {
public:
    explicit ReadConfig(std::string_view children, std::string_view rootAttributes = "id='TEST'") :
        ReadConfig(std::istringstream(sConfigText(children, rootAttributes))) {}

    explicit ReadConfig(std::istream&& stream) : config(*schema, stream) {}

    /// The record that an attribute of the entity itself is linked to; null when it is linked to none.
    const ifc::def::xmlschema::Attribute* pRecord(std::string_view entity, std::string_view attribute) const {
        return entityOf(*schema, entity)
            .pAttributeFromName(ifc::def::schema::AttributeName(attribute), false)
            ->pXmlAttribute();
    }
    const ifc::def::xmlschema::AttributeInverse* pRecordInverse(std::string_view entity,
                                                                const std::string& attribute) const {
        return entityOf(*schema, entity).pAttributeInverseFromName(attribute, false)->pXmlAttribute();
    }

    std::unique_ptr<ifc::def::SchemaPset> schema = schemaPsetFromText(ConfigSchema);
    AssertCollector reports;
    ifc::def::xmlschema::Config config;
};

/// A report of a configuration: `function` without its namespace, `module` as the class ends its module's
/// path.
inline kiv::assert::AssertRecord report(const std::string& message, const std::string& function,
                                        const std::string& module) {
    return {0, message, "kiv::ifc::def::xmlschema::" + function,
            "Source/Format/Ifc/Def/XmlSchema/IfcXml" + module, 0};
}

inline int numberOf(ifc::def::xmlschema::ExpAttribute representation) {
    return static_cast<int>(representation);
}

} // namespace kiv::test
