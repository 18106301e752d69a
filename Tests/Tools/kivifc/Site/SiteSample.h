/// @file
/// The site of a schema and sets that a test writes down, in a folder of its own.
///
///     const SiteSample sample("ENTITY A; END_ENTITY;", {{"standard", SetText}});
///     EXPECT_THAT(sample.sPage("A.html"), HasSubstr("..."));
///
/// Threads: one sample at a time, as the sets of a process are registered in one place.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Kit/Documents/SetCollection.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"
#include "kivifc/Site/SitePages.h"

#include "Tools/kivifc/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc::site::test {

/// The schema is called TEST; the text has its declarations.
inline SchemaFile schemaFileOf(const std::string& declarations) {
    return {kit::schemaTextRead("SCHEMA TEST;\n" + declarations + "\nEND_SCHEMA;\n", "Test.exp"), {}};
}

class SiteSample {
public:
    /// Each set with the name of its context; TEST is the standard one.
    explicit SiteSample(const std::string& declarations,
                        const std::vector<std::pair<std::string, std::string>>& sets = {}) :
        loaded_{schemaFileOf(declarations), {}, {}} {
        for (const auto& [context, text] : sets)
            vSetAdd(context, text);
        model_ = std::make_unique<SiteModel>(loaded_, "Sample");
    }
    ~SiteSample() { registry().clear(); }
    SiteSample(const SiteSample&) = delete;
    SiteSample& operator=(const SiteSample&) = delete;

    const SiteModel& getModel() const { return *model_; }

    const ifc::def::schema::Entity& entity(std::string_view name) const {
        return *ifc::def::schema::Entity::pFrom(model_->getSchema().pObjectFromName(name));
    }

    /// A page of the site, which is written when the first one is asked for.
    std::string sPage(const std::string& name) const {
        if (!isWritten_) {
            SiteFolder folder(folder_.sPath("site"), false);
            vSitePagesWrite(*model_, folder);
            EXPECT_EQ(folder.sFinish(), "");
            isWritten_ = true;
        }
        return kiv::kivifc::test::sFileText(folder_.sPath("site/" + name));
    }

private:
    static ifc::def::SchemaContextAndPropertySetDefinitions& registry() {
        return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
    }

    void vSetAdd(const std::string& context, const std::string& text) {
        kit::SetCollection sets;
        kit::vSetAdd(sets, *loaded_.schema.schema, kit::setTextRead(text, "Set.xml"));
        EXPECT_TRUE(sets.problems.empty());
        loaded_.paths.merge(sets.paths);
        registry().addPropertySets({context, context == "TEST"}, std::move(sets.definitions));
    }

    SchemaWithSets loaded_;
    std::unique_ptr<SiteModel> model_;
    kiv::kivifc::test::TemporaryFolder folder_;
    mutable bool isWritten_ = false;
};

} // namespace kiv::kivifc::site::test
