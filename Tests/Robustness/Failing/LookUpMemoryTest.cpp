#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"
#include "MemoryFailures.h"
#include "Support/NestedSelects.h"
#include "Support/SampleStore.h"
#include "Support/StoreAnswers.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;
namespace defs = ifc::def::xml;

/// A look-up with its answer as text.
struct Question {
    const char* name;
    std::function<std::string(const SchemaPset&)> ask;
    std::string answer;
};

struct Answer {
    std::string text;
};

/// Names beyond 64 bytes have no room on the stack.
std::string sLong(const std::string& name) {
    return name + std::string(100, '_');
}

std::string sNames(const std::vector<const defs::SetDef*>& sets) {
    std::string names;
    for (const auto* const set : sets)
        names += set->getName() + ' ';
    return names;
}

const schema::Entity& wallOf(const SchemaPset& schema) {
    return *schema::Entity::pFrom(schema.pObjectFromName("BldWall"));
}

SchemaPset::ContextFilter standardOnly() {
    // So large that the function must allocate to hold it.
    struct Filter {
        std::string name = sLong("filter");
        bool operator()(const SchemaPset::Context& context) const {
            return context.isStandard && !name.empty();
        }
    };
    return Filter();
}

std::string sWhether(bool isSo) {
    return isSo ? "yes" : "no";
}

/// The answers are those that the sample's documents and schema give.
const std::vector<Question> Questions{
    {"an object",
     [](const auto& schema) { return std::string(schema.pObjectFromName("bldwall")->getName()); }, "BldWall"},
    {"no object", [](const auto& schema) { return sWhether(schema.pObjectFromName(sLong("Bld"))); }, "no"},
    {"an attribute",
     [](const auto& schema) {
         return std::string(schema.pAttributeGet(std::string("bldroot"), std::string("NAME"))->getName());
     },
     "Name"},
    {"no attribute",
     [](const auto& schema) { return sWhether(schema.pAttributeGet(sLong("BldRoot"), sLong("Name"))); },
     "no"},
    {"attributes", [](const auto& schema) { return sWhether(!schema.attributesGet("name").empty()); }, "yes"},
    {"all attributes", [](const auto& schema) { return sWhether(!schema.getAttributesByName().empty()); },
     "yes"},
    {"data types", [](const auto& schema) { return sWhether(!schema.getDataTypes().empty()); }, "yes"},
    {"shared data types", [](const auto& schema) { return sWhether(!schema.getSharedDataTypes().empty()); },
     "yes"},
    {"an inherited attribute",
     [](const auto& schema) {
         return std::string(
             wallOf(schema).pAttributeFromName(schema::AttributeName("Name"), true)->getName());
     },
     "Name"},
    {"an inverse attribute",
     [](const auto& schema) {
         return std::string(wallOf(schema).pAttributeInverseFromName("onlayer", true)->getName());
     },
     "OnLayer"},
    {"no inverse attribute",
     [](const auto& schema) {
         return sWhether(wallOf(schema).pAttributeInverseFromName(sLong("OnLayer"), true));
     },
     "no"},
    {"the standard sets", [](const auto& schema) { return sWhether(schema.getStandardDefinitions()); },
     "yes"},
    {"the sets of a context",
     [](const auto& schema) {
         return sWhether(schema.getDefinitionsFromContext({"a host with a long name", false}));
     },
     "yes"},
    {"a context",
     [](const auto& schema) {
         return sWhether(schema.checkContext({"x", false}, standardOnly()));
     },
     "no"},
    {"each collection",
     [](const auto& schema) {
         std::string names;
         schema.forEachDefinition([&](const auto& context, const auto&) { names += context.name + ' '; },
                                  standardOnly());
         return names;
     },
     "BUILDING1 "},
    {"a set", [](const auto& schema) { return schema.pXmlSetFromName("pset_bldwall", {})->getName(); },
     "Pset_BldWall"},
    {"a set of a context",
     [](const auto& schema) { return schema.pXmlSetFromName("pset_bldwall", standardOnly())->getName(); },
     "Pset_BldWall"},
    {"no set", [](const auto& schema) { return sWhether(schema.pXmlSetFromName(sLong("Pset"), {})); }, "no"},
    {"a set by its key",
     [](const auto& schema) {
         return schema.pXmlSetFromNameUpper("PSET_BLDWALL", standardOnly())->getName();
     },
     "Pset_BldWall"},
    {"a property by its GUID",
     [](const auto& schema) {
         kiv::Guid guid;
         guid.boSet("ce3184ebc6c495923f57790b777179e3");
         return schema.pXmlDefFromIfd(guid)->getConcept();
     },
     "Pset_BldStair.TreadByRiser"},
    {"the sets of an entity",
     [](const auto& schema) {
         return sNames(schema.getXmlSetsToEntity(wallOf(schema), false, standardOnly()));
     },
     "Pset_BldWall Qto_BldWall "},
    {"all sets of an entity",
     [](const auto& schema) {
         return sWhether(!schema.getXmlSetsAllToEntity(wallOf(schema), true, {}).empty());
     },
     "yes"},
    {"the type of an attribute",
     [](const auto& schema) { return ifc::findPropertyTypeName("BldRoot.Name", schema).value(); }, "BldName"},
    {"no type",
     [](const auto& schema) {
         return sWhether(ifc::findPropertyTypeName(sLong("Pset") + '.' + sLong("Name"), schema).has_value());
     },
     "no"},
    {"the type of a quantity",
     [](const auto& schema) { return ifc::findPropertyTypeName("Qto_BldWall.GrossVolume", schema).value(); },
     "IfcVolumeMeasure"},
};

TEST(LookUpMemory, EveryLookUpPassesOnThatThereIsNone) {
    const SampleStore store;
    const auto& schema = store.schema();
    const auto before = sAnswers(schema);
    std::size_t failures = 0;
    for (const auto& question : Questions) {
        SCOPED_TRACE(question.name);
        const Operation<Answer> operation{.prepare = [] { return Answer(); },
                                          .run = [&](Answer& answer) { answer.text = question.ask(schema); },
                                          .answers = [](const Answer& answer) { return answer.text; }};
        failures += failuresOf(operation);
        EXPECT_EQ(question.ask(schema), question.answer);
    }
    EXPECT_GT(failures, Questions.size() / 2);
    EXPECT_EQ(sAnswers(schema), before);
}

TEST(LookUpMemory, SelectPassesOnThatThereIsNone) {
    const NestedSelects selects;
    const Operation<Answer> operation{.prepare = [] { return Answer(); },
                                      .run = [&](Answer& answer) { answer.text = selects.sAnswers(); },
                                      .answers = [](const Answer& answer) { return answer.text; }};
    // What is kept of a line of two supertypes, and of three selects, for each question.
    EXPECT_GT(failuresOf(operation), 10U);
    EXPECT_EQ(selects.sAnswers(), NestedSelects::Expected);
}

/// A line of entities whose attributes repeat one another.
constexpr const char* Line =
    "ENTITY Top;\n  A : REAL;\n  B : REAL;\n INVERSE\n  I : Top FOR A;\nEND_ENTITY;\n"
    "ENTITY Middle\n SUBTYPE OF (Top);\n  B : REAL;\n  C : REAL;\n  C : REAL;\n"
    " INVERSE\n  J : Top FOR B;\nEND_ENTITY;\n"
    "ENTITY Bottom\n SUBTYPE OF (Middle);\n  A : REAL;\n  D : REAL;\n"
    " INVERSE\n  I : Top FOR D;\nEND_ENTITY;\n";

/// A search that makes its table at once, or goes on with it.
template <class Kind>
struct Search {
    std::unique_ptr<schema::AttributeSearch<Kind>> search =
        std::make_unique<schema::AttributeSearch<Kind>>(std::size_t{0});

    /// For each entity and name the entity that has the attribute.
    std::string sFound(const schema::Schema& line, const std::vector<std::string>& names) const {
        std::string found;
        for (const auto* const entity : {"Middle", "Bottom", "Top"}) {
            for (const auto& name : names) {
                const auto* const attribute =
                    search->pFind(entityOf(line, entity), typename schema::AttributeSearch<Kind>::Key(name));
                found += attribute ? std::string(attribute->getEntity().getName()) + ' ' : "none ";
            }
        }
        return found;
    }
};

template <class Kind>
void vSearchExpect(const std::vector<std::string>& names, const std::string& expected) {
    const auto line = schemaFromText(Line);
    const Operation<Search<Kind>> operation{
        .prepare = [] { return Search<Kind>(); },
        .run = [&](Search<Kind>& search) { search.sFound(*line, names); },
        .answers = [&](const Search<Kind>& search) { return search.sFound(*line, names); }};
    EXPECT_GT(failuresOf(operation), 10U);
    EXPECT_EQ(Search<Kind>().sFound(*line, names), expected);
}

TEST(LookUpMemory, TableOfASearchForAttributesIsMadeOrGoneOnWith) {
    vSearchExpect<schema::Attribute>({"A", "B", "C", "D", "E"}, "Top Middle Middle none none "
                                                                "Bottom Middle Middle Bottom none "
                                                                "Top Top none none none ");
}

TEST(LookUpMemory, TableOfASearchForInverseAttributesIsMadeOrGoneOnWith) {
    vSearchExpect<schema::AttributeInverse>({"I", "J", "K"}, "Top Middle none "
                                                             "Bottom Middle none "
                                                             "Top none none ");
}

} // namespace

} // namespace kiv::test
