/// @file
/// The site of a schema and sets that a test writes down, in a folder of its own.
///
///     const SiteSample sample("ENTITY A; END_ENTITY;", {{"standard", SetText}});
///     EXPECT_THAT(sample.sPage("A.html"), HasSubstr("..."));
///
/// Threads: one sample at a time, as the sets of a process are registered in one place.
#pragma once

#include "kivifc/Site/SiteModel.h"

#include "Support/TemporaryFolder.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc::site::test {

/// The schema is called TEST; the text has its declarations.
SchemaFile schemaFileOf(const std::string& declarations);

class SiteSample {
public:
    /// Each set with the name of its context; TEST is the standard one.
    explicit SiteSample(const std::string& declarations,
                        const std::vector<std::pair<std::string, std::string>>& sets = {});
    ~SiteSample();
    SiteSample(const SiteSample&) = delete;
    SiteSample& operator=(const SiteSample&) = delete;

    const SiteModel& getModel() const { return *model_; }

    const ifc::def::schema::Entity& entity(std::string_view name) const;

    /// A page of the site, which is written when the first one is asked for.
    std::string sPage(const std::string& name) const;

private:
    void vSetAdd(const std::string& context, const std::string& text);

    SchemaWithSets loaded_;
    std::unique_ptr<SiteModel> model_;
    kiv::test::TemporaryFolder folder_;
    mutable bool isWritten_ = false;
};

} // namespace kiv::kivifc::site::test
