#include "Tools/kivifc/Site/SiteSample.h"

#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Kit/Documents/SetCollection.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SitePages.h"

#include <gtest/gtest.h>

namespace kiv::kivifc::site::test {

namespace {

ifc::def::SchemaContextAndPropertySetDefinitions& registry() {
    return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
}

} // namespace

SchemaFile schemaFileOf(const std::string& declarations) {
    return {kit::schemaTextRead("SCHEMA TEST;\n" + declarations + "\nEND_SCHEMA;\n", "Test.exp"), {}};
}

SiteSample::SiteSample(const std::string& declarations,
                       const std::vector<std::pair<std::string, std::string>>& sets) :
    loaded_{schemaFileOf(declarations), {}, {}} {
    for (const auto& [context, text] : sets)
        vSetAdd(context, text);
    model_ = std::make_unique<SiteModel>(loaded_, "Sample");
}

SiteSample::~SiteSample() {
    registry().clear();
}

const ifc::def::schema::Entity& SiteSample::entity(std::string_view name) const {
    return *ifc::def::schema::Entity::pFrom(model_->getSchema().pObjectFromName(name));
}

std::string SiteSample::sPage(const std::string& name) const {
    if (!isWritten_) {
        SiteFolder folder(folder_.sPath("site"), false);
        vSitePagesWrite(*model_, folder);
        EXPECT_EQ(folder.sFinish(), "");
        isWritten_ = true;
    }
    return kiv::test::sFileText(folder_.sPath("site/" + name));
}

void SiteSample::vSetAdd(const std::string& context, const std::string& text) {
    kit::SetCollection sets;
    kit::vSetAdd(sets, *loaded_.schema.schema, kit::setTextRead(text, "Set.xml"));
    EXPECT_TRUE(sets.problems.empty());
    loaded_.paths.merge(sets.paths);
    registry().addPropertySets({context, context == "TEST"}, std::move(sets.definitions));
}

} // namespace kiv::kivifc::site::test
