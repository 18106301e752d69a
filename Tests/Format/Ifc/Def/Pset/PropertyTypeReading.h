/// Reads, checks and writes property types, for the tests of their kinds.
#pragma once

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// A kind of type, read from its element, with the records and the reports of that.
template <typename Kind>
struct ReadType {
    explicit ReadType(std::string_view xml) :
        type(XmlFromText(xml).root(), errors), reports(collector.getRecords()) {}

    AssertCollector collector;
    ifc::def::xml::XmlSetErrors errors;
    Kind type;
    std::vector<kiv::assert::AssertRecord> reports;
};

/// What the type writes into its "PropertyType" element, which is part of the text.
inline std::string sTypeExport(const ifc::def::pset::PropertyType& type,
                               ifc::def::xml::ExtraExportInfo* info = nullptr) {
    XmlTarget target("PropertyType");
    type.vExport(target.root(), info);
    return target.sText();
}

/// Checks the type, which always passes and never adds a record, and returns the reports of that.
inline std::vector<kiv::assert::AssertRecord> checkReportsOf(const ifc::def::pset::PropertyType& type,
                                                             const ifc::def::schema::Schema& schema) {
    const AssertCollector reports;
    ifc::def::xml::XmlSetErrors errors;
    EXPECT_TRUE(type.checkForErrors(schema, errors));
    EXPECT_TRUE(errors.getRecords().empty());
    return reports.getRecords();
}

/// The report about a name that a schema lacks.
inline kiv::assert::AssertRecord nameReport(std::string function, int line) {
    return {0, "Excpeted name to exist in schema", "kiv::ifc::def::pset::" + function,
            "Source/Format/Ifc/Def/Pset/IfcPropertyTypeDerived", line};
}

using Reports = std::vector<kiv::assert::AssertRecord>;
using Texts = std::vector<std::string>;

} // namespace kiv::test
