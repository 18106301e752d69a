// What kivifc makes of large schemas and sets as a site: the work, the memory that is held at once, and what
// is written. What each page repeats of others has a limit there; sizes are above these limits.

#include "Support/AssertCollector.h"
#include "Support/Growth.h"
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/Site/SetTexts.h"
#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Kit/Documents/SetCollection.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Site/Addresses.h"
#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"
#include "kivifc/Site/SitePages.h"

#include "Robustness/Growth/GrowthRow.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using kivifc::site::test::sEnumeration;
using kivifc::site::test::sNameAlias;
using kivifc::site::test::sProperty;
using kivifc::site::test::sSet;
using kivifc::site::test::sSingle;

/// Of which a site is made.
struct SiteInput {
    std::string declarations;
    std::vector<std::string> sets;
};

kivifc::SchemaFile schemaFileOf(const std::string& declarations) {
    const AssertCollector reports;
    return {kit::schemaTextRead("SCHEMA TEST;\n" + declarations + "END_SCHEMA;\n", "Test.exp"), {}};
}

/// A schema with its sets, which are registered in one place for the process.
class LoadedInput {
public:
    explicit LoadedInput(const SiteInput& input) : loaded_{schemaFileOf(input.declarations), {}, {}} {
        kit::SetCollection sets;
        // Of this path nobody reads the document again to look for mistakes in it.
        for (const auto& text : input.sets)
            kit::vSetAdd(sets, *loaded_.schema.schema,
                         kit::setTextRead(text, std::string(kivifc::StandardInputPath)));
        EXPECT_TRUE(sets.problems.empty());
        loaded_.paths.merge(sets.paths);
        registry().addPropertySets({"TEST", true}, std::move(sets.definitions));
    }
    LoadedInput(const LoadedInput&) = delete;
    LoadedInput& operator=(const LoadedInput&) = delete;
    ~LoadedInput() { registry().clear(); }

    void vSiteWrite() const {
        const TemporaryFolder folder;
        kivifc::site::SiteFolder site(folder.sPath("site"), false);
        kivifc::site::vSitePagesWrite(kivifc::site::SiteModel(loaded_, "Growth"), site);
        EXPECT_EQ(site.sFinish(), "");
        vOutputCount(site.getBytes());
    }

private:
    static ifc::def::SchemaContextAndPropertySetDefinitions& registry() {
        return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
    }

    kivifc::SchemaWithSets loaded_;
};

struct Family {
    const char* name;
    std::size_t size;
    std::function<SiteInput(std::size_t)> input;
};

void PrintTo(const Family& family, std::ostream* stream) {
    *stream << family.name;
}

constexpr const char* Label = "TYPE Label = STRING;\nEND_TYPE;\n";

std::string sNumbered(const std::string& name, std::size_t number) {
    return name + std::to_string(number);
}

std::string sEntity(const std::string& name, const std::string& supertype, const std::string& lines) {
    return "ENTITY " + name + (supertype.empty() ? "" : "\n SUBTYPE OF (" + supertype + ")") + ";\n" + lines +
           "END_ENTITY;\n";
}

/// An entity named Root with these lines, and that many below it.
std::string sRootWithSubtypes(std::size_t count, const std::string& lines,
                              const std::string& linesBelow = {}) {
    return Label + sEntity("Root", "", lines) +
           sJoined(count, [&](std::size_t i) { return sEntity(sNumbered("Sub", i), "Root", linesBelow); });
}

/// For each number below `count`.
std::vector<std::string> textsOf(std::size_t count, const std::function<std::string(std::size_t)>& text) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i != count; ++i)
        texts.push_back(text(i));
    return texts;
}

SiteInput entities(std::size_t count) {
    return {Label + sJoined(count,
                            [&](std::size_t i) {
                                return sEntity(sNumbered("E", i), "",
                                               " Name : OPTIONAL Label;\n Next : E" +
                                                   std::to_string(i * 7 % count) + ";\n");
                            }),
            {}};
}

/// With eight subtypes each; what a page lists of supertypes grows with the depth.
SiteInput treeOfEntities(std::size_t count) {
    return {Label + sJoined(count,
                            [](std::size_t i) {
                                const auto above = i == 0 ? "" : sNumbered("E", (i - 1) / 8);
                                return sEntity(sNumbered("E", i), above, sNumbered(" A", i) + " : Label;\n");
                            }),
            {}};
}

SiteInput lineOfSupertypes(std::size_t count) {
    return {Label + sJoined(count,
                            [](std::size_t i) {
                                return sEntity(sNumbered("E", i), i == 0 ? "" : sNumbered("E", i - 1),
                                               sNumbered(" A", i) + " : Label;\n WHERE\n W : TRUE;\n");
                            }),
            {}};
}

SiteInput subtypesOfOne(std::size_t count) {
    return {sRootWithSubtypes(count, " Name : Label;\n"), {}};
}

SiteInput inheritedAttributes(std::size_t count) {
    return {sRootWithSubtypes(
                count, sJoined(count, [](std::size_t i) { return sNumbered(" A", i) + " : Label;\n"; })),
            {}};
}

SiteInput inheritedRules(std::size_t count) {
    return {sRootWithSubtypes(
                count,
                " WHERE\n" + sJoined(count, [](std::size_t i) { return sNumbered(" W", i) + " : TRUE;\n"; })),
            {}};
}

SiteInput redeclaredAttributes(std::size_t count) {
    return {sRootWithSubtypes(count, " Name : OPTIONAL Label;\n", " SELF\\Root.Name : Label;\n"), {}};
}

/// Each for another predefined type, so that it is in a group of its own.
SiteInput inheritedSets(std::size_t count) {
    return {sRootWithSubtypes(count, ""), textsOf(count, [](std::size_t i) {
                return sSet(sNumbered("Pset_", i), {"Root/" + sNumbered("T", i)},
                            sProperty("Mark", sSingle("Label")));
            })};
}

SiteInput setsOfEveryEntity(std::size_t count) {
    return {sRootWithSubtypes(count, ""), textsOf(count, [](std::size_t i) {
                return sSet(sNumbered("Pset_", i), {}, sProperty("Mark", sSingle("Label")));
            })};
}

SiteInput setThatNamesAllEntities(std::size_t count) {
    return {sRootWithSubtypes(count, ""),
            {sSet("Pset_A", textsOf(count, [](std::size_t i) { return sNumbered("Sub", i) + "/T"; }),
                  sProperty("Mark", sSingle("Label")))}};
}

SiteInput inheritedMembers(std::size_t count) {
    return {sRootWithSubtypes(count, ""), {sSet("Pset_A", {"Root"}, sJoined(count, [](std::size_t i) {
                                                    return sProperty(sNumbered("P", i), sSingle("Label"));
                                                }))}};
}

SiteInput inheritedItems(std::size_t count) {
    const auto items = textsOf(count, [](std::size_t i) { return sNumbered("ITEM", i); });
    return {sRootWithSubtypes(count, ""),
            {sSet("Pset_A", {"Root"}, sProperty("Kind", sEnumeration("PEnum_Kind", items)))}};
}

SiteInput propertiesOfOneName(std::size_t count) {
    return {Label, textsOf(count, [](std::size_t i) {
                return sSet(sNumbered("Pset_", i), {},
                            sProperty("Mark", sEnumeration("PEnum_Kind", {sNumbered("ITEM", i)})));
            })};
}

SiteInput membersOfOneName(std::size_t count) {
    return {Label, {sSet("Pset_A", {}, sJoined(count, [](std::size_t) {
                             return sProperty("Mark", sSingle("Label"), sNameAlias("de", "Kennzeichen"));
                         }))}};
}

/// Of names that the schema does not declare: these are shown too, and have no pages.
SiteInput selectsOfOneSelect(std::size_t count) {
    const auto names = sJoined(count, [](std::size_t i) { return sNumbered(i == 0 ? "T" : ", T", i); });
    return {"TYPE Big = SELECT (" + names + ");\nEND_TYPE;\n" +
                sJoined(count,
                        [](std::size_t i) {
                            return "TYPE " + sNumbered("S", i) + " = SELECT (Big);\nEND_TYPE;\n";
                        }),
            {}};
}

SiteInput functions(std::size_t count) {
    return {sJoined(count,
                    [&](std::size_t i) {
                        return "FUNCTION " + sNumbered("F", i) + " (X : REAL) : REAL;\n RETURN (F" +
                               std::to_string(i * 7 % count) + "(X) + F0(X));\nEND_FUNCTION;\n";
                    }),
            {}};
}

SiteInput functionsOfOneName(std::size_t count) {
    return {sTimes("FUNCTION F (X : REAL) : REAL;\n RETURN (X);\nEND_FUNCTION;\n", count), {}};
}

/// Queries within queries, each of which hides a parameter by a variable of that name.
SiteInput localNames(std::size_t count) {
    const auto parameters = sJoined(count, [](std::size_t i) { return sNumbered(i == 0 ? "P" : ", P", i); });
    return {"FUNCTION F (" + parameters + " : REAL) : REAL;\n RETURN (" +
                sJoined(count, [](std::size_t i) { return "QUERY(" + sNumbered("P", i) + " <* P0 | "; }) +
                "P1" + sTimes(")", count) + ");\nEND_FUNCTION;\n",
            {}};
}

/// Statements that nothing ends, and ends of statements that did not begin.
SiteInput unendedLocalNames(std::size_t count) {
    return {"FUNCTION F (X : REAL) : REAL;\n" + sTimes("ALIAS a FOR X;\n", count) +
                sTimes("END_REPEAT;\n", count) + " RETURN (X);\nEND_FUNCTION;\n",
            {}};
}

/// Names after points that belong to the type of the last one, and one that is nowhere.
SiteInput namesAfterPoints(std::size_t count) {
    return {sJoined(count,
                    [](std::size_t i) {
                        const auto above = i == 0 ? "" : sNumbered("E", i - 1);
                        return sEntity(sNumbered("E", i), above,
                                       sNumbered(" A", i) + " : E0;\n DERIVE\n" + sNumbered(" D", i) +
                                           " : E0 := A0[1];\n WHERE\n W : A0.D0[A0.A0].None = D0.A0.None;\n");
                    }),
            {}};
}

/// Each would try the numbers of all before it, if the file names did not count them.
TEST(FileNamesGrowth, EqualNamesTakeWorkInProportion) {
    const auto growth = growthFrom(1'000, [](std::size_t size) {
        return [size] {
            kivifc::site::FileNames names;
            for (std::size_t number = 0; number != size; ++number)
                names.sTake("Pset_Wall", "office");
        };
    });
    EXPECT_LE(growth, ProportionalGrowth);
}

class SiteGrowthTest : public testing::TestWithParam<Family> {};

TEST_P(SiteGrowthTest, SiteIsInProportionToWhatItIsMadeOf) {
    const auto& family = GetParam();
    const auto growth = growthFrom(family.size, [&](std::size_t size) {
        // Gone when the site is written: sets of the other size must not be registered meanwhile.
        auto input =
            std::make_shared<std::unique_ptr<LoadedInput>>(std::make_unique<LoadedInput>(family.input(size)));
        return [input] {
            (*input)->vSiteWrite();
            input->reset();
        };
    });
    EXPECT_LE(growth, ProportionalGrowth);
}

INSTANTIATE_TEST_SUITE_P(
    Families, SiteGrowthTest,
    testing::Values(
        Family{"Entities", 500, entities}, Family{"TreeOfEntities", 500, treeOfEntities},
        Family{"LineOfSupertypes", 500, lineOfSupertypes}, Family{"SubtypesOfOne", 500, subtypesOfOne},
        Family{"InheritedAttributes", 250, inheritedAttributes},
        Family{"InheritedRules", 400, inheritedRules},
        Family{"RedeclaredAttributes", 500, redeclaredAttributes},
        Family{"InheritedSets", 300, inheritedSets}, Family{"SetsOfEveryEntity", 200, setsOfEveryEntity},
        Family{"SetThatNamesAllEntities", 500, setThatNamesAllEntities},
        Family{"InheritedMembers", 400, inheritedMembers}, Family{"InheritedItems", 500, inheritedItems},
        Family{"PropertiesOfOneName", 500, propertiesOfOneName},
        Family{"MembersOfOneName", 1'000, membersOfOneName},
        Family{"SelectsOfOneSelect", 1'100, selectsOfOneSelect}, Family{"Functions", 500, functions},
        Family{"FunctionsOfOneName", 500, functionsOfOneName}, Family{"LocalNames", 500, localNames},
        Family{"UnendedLocalNames", 1'000, unendedLocalNames},
        Family{"NamesAfterPoints", 500, namesAfterPoints}),
    [](const testing::TestParamInfo<Family>& tested) { return std::string(tested.param.name); });

} // namespace

} // namespace kiv::test
