/// A schema with sets from the sample data in the registry of the process, gone with it when it ends.
///
///     const SampleStore store;
///     EXPECT_EQ(sAnswers(store.schema()), expected);
///
/// Threads: one that makes and ends it; meanwhile as `SchemaPset`.
#pragma once

#include "Support/SampleData.h"
#include "Support/SchemaPsetFromText.h"
#include "Support/SetFromText.h"
#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kiv::test {

/// The documents as a collection.
inline ifc::def::SchemaPropertySetDefinitions setsFromPaths(const ifc::def::schema::Schema& schema,
                                                            const std::vector<std::string>& paths) {
    ifc::def::SchemaPropertySetDefinitions sets;
    for (const auto& path : paths) {
        ifc::def::xml::XmlSetErrors errors;
        sets.xmlSetAdd(schema, pSetFromText(sSampleText(path)), errors);
    }
    return sets;
}

class SampleStore {
public:
    /// All sets without faults are in the standard context; one of each kind in one of a host, too.
    SampleStore() : schema_(schemaPsetFromWholeText(sSampleText("Building.exp"))) {
        registry().clear();
        registry().addPropertySets({std::string(schema_->getName()), true},
                                   setsFromPaths(*schema_, sampleSetPaths()));
        registry().addPropertySets(
            {"a host with a long name", false},
            setsFromPaths(*schema_, {"Sets/Pset_BldWall.xml", "Sets/Qto_BldWall.xml"}));
    }
    SampleStore(const SampleStore&) = delete;
    SampleStore& operator=(const SampleStore&) = delete;
    ~SampleStore() { registry().clear(); }

    ifc::def::SchemaPset& schema() const { return *schema_; }

    static ifc::def::SchemaContextAndPropertySetDefinitions& registry() {
        return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
    }

private:
    std::unique_ptr<ifc::def::SchemaPset> schema_;
};

} // namespace kiv::test
