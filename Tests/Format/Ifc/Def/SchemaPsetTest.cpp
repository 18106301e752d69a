#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include "Format/Ifc/Def/StoreTools.h"
#include "Support/Allocations.h"
#include "Support/AssertCollector.h"
#include "Support/FailingStream.h"
#include "Support/SchemaFromText.h"
#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <atomic>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace kiv::test {

namespace {

using ifc::def::SchemaPropertySetDefinitions;
using ifc::def::SchemaPset;
using Context = SchemaPset::Context;
using Filter = SchemaPset::ContextFilter;

std::string sText(const Context& context) {
    return context.name + (context.isStandard ? "*" : "");
}

/// A filter that refuses this context and accepts all others.
Filter allBut(const Context& refused) {
    return [refused](const Context& context) { return context != refused; };
}

/// The schema TEST and two host contexts "a" and "b", the standard context of TEST and one of a foreign
/// schema.
class SchemaPsetTest : public StoreTest {
protected:
    SchemaPsetTest() {
        vAdd({"FOREIGN", true}, {sPropertySet("Pset_Foreign", {"IfcWall"}, sProperty("F", "", sGuid(9)))});
        vAdd({"TEST", true},
             {sPropertySet("Pset_X", {"IfcWall"},
                           sProperty("Standard", "", sGuid(1)) + sProperty("S", "", sGuid(2))),
              sPropertySet("Pset_Free"), sPropertySet("Pset_Root", {"IfcRoot"})});
        vAdd({"b", false}, {sPropertySet("Pset_X", {"IfcWall"}, sProperty("B", "", sGuid(1))),
                            sPropertySet("Pset_FreeB"), sPropertySet("Pset_RootB", {"IfcRoot"})});
        vAdd({"a", false}, {sQuantitySet("Qto_A", {"IfcWall"}, sQuantity("A", "", sGuid(3)))});
    }

    void vAdd(Context context, const Texts& texts) {
        registry().addPropertySets(std::move(context), collectionOf(*schema, texts));
    }

    /// The context in which a set was found; "none" when it was not.
    static std::string sContextOf(const ifc::def::xml::SetDef* set) {
        for (const auto& [context, sets] : registry().getContexts()) {
            if (set && sets->getXmlSetFromName(set->getName()) == set)
                return sText(context);
        }
        return "none";
    }

    const ifc::def::schema::Entity& entity(const char* name) const { return entityOf(*schema, name); }

    std::unique_ptr<SchemaPset> schema = schemaPsetFromText(StoreSchema);
};

TEST_F(SchemaPsetTest, StandardDefinitionsAreThoseOfTheSchemasName) {
    EXPECT_EQ(schema->getStandardDefinitions(), registry().getPropertySetsFromContext({"TEST", true}));
    EXPECT_NE(schema->getStandardDefinitions(), nullptr);
    EXPECT_EQ(schemaPsetFromText("", "test")->getStandardDefinitions(), nullptr);
    registry().clear({"TEST", true});
    vAdd({"TEST", false}, {});
    EXPECT_EQ(schema->getStandardDefinitions(), nullptr);
}

TEST_F(SchemaPsetTest, DefinitionsFromContextAreThoseOfAnyContext) {
    for (const auto& context : {Context{"FOREIGN", true}, Context{"TEST", true}, Context{"b", false}}) {
        SCOPED_TRACE(sText(context));
        EXPECT_NE(schema->getDefinitionsFromContext(context), nullptr);
        EXPECT_EQ(schema->getDefinitionsFromContext(context), registry().getPropertySetsFromContext(context));
    }
    EXPECT_EQ(schema->getDefinitionsFromContext({"b", true}), nullptr);
    EXPECT_EQ(schema->getDefinitionsFromContext({"c", false}), nullptr);
}

TEST_F(SchemaPsetTest, ContextsOfHostsAndTheOwnStandardOneAreSearched) {
    const struct {
        Context context;
        bool searched;
    } rows[] = {
        {{"TEST", true}, true},     {{"FOREIGN", true}, false}, {{"test", true}, false},
        {{"TEST ", true}, false},   {{"", true}, false},        {{"TEST", false}, true},
        {{"FOREIGN", false}, true}, {{"", false}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(sText(row.context));
        EXPECT_EQ(schema->checkContextDefault(row.context), row.searched);
        EXPECT_EQ(schema->checkContext(row.context, {}), row.searched);
        EXPECT_EQ(schema->checkContext(row.context, [](const Context&) { return true; }), row.searched);
        EXPECT_FALSE(schema->checkContext(row.context, [](const Context&) { return false; }));
    }
}

TEST_F(SchemaPsetTest, TheFilterIsNotAskedForAContextThatIsNotSearchedAnyway) {
    EXPECT_FALSE(schema->checkContext({"FOREIGN", true},
                                      [](const Context&) -> bool { throw std::logic_error("asked"); }));
}

TEST_F(SchemaPsetTest, EachDefinitionIsVisitedInTheOrderOfTheSearch) {
    vAdd({"c", false}, {});
    Texts visited;
    const auto visitor = [&](const Context& context, const SchemaPropertySetDefinitions& sets) {
        visited.push_back(sText(context));
        EXPECT_EQ(&sets, registry().getPropertySetsFromContext(context));
    };
    schema->forEachDefinition(visitor, {});
    EXPECT_EQ(visited, (Texts{"a", "b", "c", "TEST*"}));
    visited.clear();
    schema->forEachDefinition(visitor, allBut({"b", false}));
    EXPECT_EQ(visited, (Texts{"a", "c", "TEST*"}));
}

TEST_F(SchemaPsetTest, OnlyTheStandardContextOfTheSchemasOwnNameIsSearched) {
    EXPECT_EQ(schema->pXmlSetFromName("Pset_Foreign", {}), nullptr);
    EXPECT_EQ(schema->pXmlDefFromIfd(guidOf(9)), nullptr);
    const auto foreign = schemaPsetFromText(StoreSchema, "FOREIGN");
    EXPECT_EQ(sContextOf(foreign->pXmlSetFromName("Pset_Foreign", {})), "FOREIGN*");
    EXPECT_EQ(foreign->pXmlDefFromIfd(guidOf(9))->getName(), "F");
    EXPECT_EQ(foreign->pXmlSetFromName("Pset_Free", {}), nullptr);
    EXPECT_EQ(sContextOf(foreign->pXmlSetFromName("Pset_FreeB", {})), "b");
}

TEST_F(SchemaPsetTest, ASetOfAHostHidesTheStandardOne) {
    EXPECT_EQ(sContextOf(schema->pXmlSetFromName("Pset_X", {})), "b");
    EXPECT_EQ(sContextOf(schema->pXmlSetFromName("Pset_X", allBut({"b", false}))), "TEST*");
    EXPECT_EQ(sContextOf(schema->pXmlSetFromNameUpper("PSET_X", {})), "b");
    EXPECT_EQ(sContextOf(schema->pXmlSetFromNameUpper("PSET_X", allBut({"b", false}))), "TEST*");
    registry().clear({"b", false});
    EXPECT_EQ(sContextOf(schema->pXmlSetFromName("Pset_X", {})), "TEST*");
}

TEST_F(SchemaPsetTest, OfTwoHostContextsTheOneOfTheSmallerNameHidesTheOther) {
    vAdd({"aa", false}, {sPropertySet("PSET_x")});
    EXPECT_EQ(sContextOf(schema->pXmlSetFromName("Pset_X", {})), "aa");
}

TEST_F(SchemaPsetTest, ANameIsConvertedOnlyWhereItIsNotUpperCaseAlready) {
    const struct {
        const char* name;
        bool found;
        bool foundAsUpper;
    } rows[] = {{"PSET_FREE", true, true},
                {"Pset_Free", true, false},
                {"pset_free", true, false},
                {"Pset_Fre", false, false},
                {"", false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(schema->pXmlSetFromName(row.name, {}) != nullptr, row.found);
        EXPECT_EQ(schema->pXmlSetFromNameUpper(row.name, {}) != nullptr, row.foundAsUpper);
    }
}

TEST_F(SchemaPsetTest, AGuidIsSearchedInEveryContextOfAHostAndThenInTheStandardOne) {
    const struct {
        std::uint8_t guid;
        const char* name;
    } rows[] = {{1, "B"}, {2, "S"}, {3, "A"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_NE(schema->pXmlDefFromIfd(guidOf(row.guid)), nullptr);
        EXPECT_EQ(schema->pXmlDefFromIfd(guidOf(row.guid))->getName(), row.name);
    }
    EXPECT_EQ(schema->pXmlDefFromIfd(guidOf(4)), nullptr);
    EXPECT_EQ(schema->pXmlDefFromIfd(kiv::Guid()), nullptr);
}

TEST_F(SchemaPsetTest, TheNullGuidFindsTheFirstDefinitionWithoutGuidInTheOrderOfTheSearch) {
    vAdd({"c", false}, {sPropertySet("Pset_C", {}, sProperty("C"))});
    vAdd({"0", false}, {sPropertySet("Pset_0", {}, sProperty("D", "", sGuid(5)) + sProperty("E"))});
    ASSERT_NE(schema->pXmlDefFromIfd(kiv::Guid()), nullptr);
    EXPECT_EQ(schema->pXmlDefFromIfd(kiv::Guid())->getName(), "E");
}

TEST_F(SchemaPsetTest, SetsOfAnEntityAreJoinedInTheOrderOfTheSearchWithAllDuplicates) {
    const auto& wall = entity("IfcWall");
    const Filter notB = allBut({"b", false});
    EXPECT_EQ(namesOf(schema->getXmlSetsToEntity(wall, false, {})), (Texts{"Qto_A", "Pset_X", "Pset_X"}));
    EXPECT_EQ(namesOf(schema->getXmlSetsToEntity(wall, true, {})),
              (Texts{"Qto_A", "Pset_FreeB", "Pset_X", "Pset_Free", "Pset_X"}));
    EXPECT_EQ(namesOf(schema->getXmlSetsToEntity(wall, true, notB)), (Texts{"Qto_A", "Pset_Free", "Pset_X"}));
    const auto sets = schema->getXmlSetsToEntity(wall, false, {});
    EXPECT_EQ(sContextOf(sets.at(1)), "b");
    EXPECT_EQ(sContextOf(sets.at(2)), "TEST*");
}

TEST_F(SchemaPsetTest, SetsOfAnEntityAndItsSupertypesAreJoinedContextByContext) {
    const auto& wall = entity("IfcWall");
    const Filter notB = allBut({"b", false});
    EXPECT_EQ(namesOf(schema->getXmlSetsAllToEntity(wall, false, {})),
              (Texts{"Qto_A", "Pset_RootB", "Pset_X", "Pset_Root", "Pset_X"}));
    EXPECT_EQ(namesOf(schema->getXmlSetsAllToEntity(wall, true, {})),
              (Texts{"Qto_A", "Pset_FreeB", "Pset_RootB", "Pset_X", "Pset_Free", "Pset_Root", "Pset_X"}));
    EXPECT_EQ(namesOf(schema->getXmlSetsAllToEntity(wall, true, notB)),
              (Texts{"Qto_A", "Pset_Free", "Pset_Root", "Pset_X"}));
}

TEST_F(SchemaPsetTest, AFilterThatRefusesAllLeavesNothing) {
    const Filter none = [](const Context&) { return false; };
    EXPECT_EQ(schema->pXmlSetFromName("Pset_X", none), nullptr);
    EXPECT_EQ(schema->pXmlSetFromNameUpper("PSET_X", none), nullptr);
    EXPECT_EQ(schema->getXmlSetsToEntity(entity("IfcWall"), true, none).size(), 0U);
    EXPECT_EQ(schema->getXmlSetsAllToEntity(entity("IfcWall"), true, none).size(), 0U);
}

TEST_F(SchemaPsetTest, WithoutContextsNothingIsFound) {
    registry().clear();
    EXPECT_EQ(schema->getStandardDefinitions(), nullptr);
    EXPECT_EQ(schema->pXmlSetFromName("Pset_X", {}), nullptr);
    EXPECT_EQ(schema->pXmlDefFromIfd(guidOf(1)), nullptr);
    EXPECT_EQ(schema->getXmlSetsToEntity(entity("IfcWall"), true, {}).size(), 0U);
    EXPECT_EQ(schema->getXmlSetsAllToEntity(entity("IfcWall"), true, {}).size(), 0U);
}

/// Every operation that takes a filter, and the contexts it must ask the filter for.
struct FilteredOperation {
    const char* name;
    std::function<void(const SchemaPset&, Filter)> call;
    Texts asked;
};

const ifc::def::schema::Entity& wallOf(const SchemaPset& schema) {
    return entityOf(schema, "IfcWall");
}

std::vector<FilteredOperation> filteredOperations() {
    const Texts all{"a", "b", "TEST*"};
    return {
        {"checkContext",
         [](const auto& schema, Filter filter) {
             schema.checkContext({"a", false}, filter);
         },
         {"a"}},
        {"forEachDefinition",
         [](const auto& schema, Filter filter) {
             schema.forEachDefinition([](const auto&, const auto&) {}, filter);
         },
         all},
        {"pXmlSetFromName, found in b",
         [](const auto& schema, Filter filter) { schema.pXmlSetFromName("Pset_X", filter); },
         {"a", "b"}},
        {"pXmlSetFromName, not found",
         [](const auto& schema, Filter filter) { schema.pXmlSetFromName("Pset_No", filter); }, all},
        {"pXmlSetFromNameUpper, found in a",
         [](const auto& schema, Filter filter) { schema.pXmlSetFromNameUpper("QTO_A", filter); },
         {"a"}},
        {"getXmlSetsToEntity",
         [](const auto& schema, Filter filter) { schema.getXmlSetsToEntity(wallOf(schema), true, filter); },
         all},
        {"getXmlSetsAllToEntity",
         [](const auto& schema, Filter filter) {
             schema.getXmlSetsAllToEntity(wallOf(schema), true, filter);
         },
         all},
    };
}

TEST_F(SchemaPsetTest, AFilterIsCalledOncePerContextAndReleasedAtTheEnd) {
    for (const auto& operation : filteredOperations()) {
        SCOPED_TRACE(operation.name);
        const auto asked = std::make_shared<Texts>();
        operation.call(*schema, [asked](const Context& context) {
            asked->push_back(sText(context));
            return true;
        });
        EXPECT_EQ(*asked, operation.asked);
        EXPECT_EQ(asked.use_count(), 1);
    }
}

TEST_F(SchemaPsetTest, WhatAFilterThrowsIsPassedOn) {
    for (const auto& operation : filteredOperations()) {
        SCOPED_TRACE(operation.name);
        const Filter throwing = [](const Context&) -> bool { throw std::range_error("filter"); };
        EXPECT_THROW(operation.call(*schema, throwing), std::range_error);
    }
}

TEST_F(SchemaPsetTest, WhatAVisitorThrowsIsPassedOnAtOnce) {
    int visits = 0;
    const auto throwing = [&visits](const Context&, const SchemaPropertySetDefinitions&) {
        ++visits;
        throw std::range_error("visitor");
    };
    EXPECT_THROW(schema->forEachDefinition(throwing, {}), std::range_error);
    EXPECT_EQ(visits, 1);
}

/// A visitor that writes down the contexts and does `change` when it comes to "b".
SchemaPset::Visitor changingAtB(Texts& visited, std::function<void()> change) {
    return [&visited, change = std::move(change)](const Context& context, const auto& sets) {
        visited.push_back(sText(context));
        if (context.name != "b")
            return;
        change();
        // What it was handed is still there, whatever became of the registry.
        EXPECT_EQ(context.name, "b");
        EXPECT_NE(sets.getXmlSetFromName("Pset_RootB"), nullptr);
    };
}

TEST_F(SchemaPsetTest, AVisitorMayChangeTheRegistry) {
    const struct {
        const char* what;
        std::function<void()> change;
        Texts visited;
    } rows[] = {
        {"removes all", [] { registry().clear(); }, {"a", "b"}},
        {"removes its own context",
         [] {
             registry().clear({"b", false});
         },
         {"a", "b", "c", "TEST*"}},
        {"removes the one before",
         [] {
             registry().clear({"a", false});
         },
         {"a", "b", "c", "TEST*"}},
        {"removes the next",
         [] {
             registry().clear({"c", false});
         },
         {"a", "b", "TEST*"}},
        {"removes its own by name", [] { registry().removePropertySets("b"); }, {"a", "b", "c", "TEST*"}},
        {"adds one before",
         [this] {
             vAdd({"0", false}, {});
         },
         {"a", "b", "c", "TEST*"}},
        {"adds one after",
         [this] {
             vAdd({"bb", false}, {});
         },
         {"a", "b", "bb", "c", "TEST*"}},
        {"replaces its own",
         [this] {
             registry().clear({"b", false});
             vAdd({"b", false}, {});
         },
         {"a", "b", "c", "TEST*"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        registry().clear();
        vAdd({"a", false}, {});
        vAdd({"b", false}, {sPropertySet("Pset_RootB")});
        vAdd({"c", false}, {});
        vAdd({"TEST", true}, {});
        Texts visited;
        schema->forEachDefinition(changingAtB(visited, row.change), {});
        EXPECT_EQ(visited, row.visited);
    }
}

TEST_F(SchemaPsetTest, AVisitorMayLetGoOfTheSchema) {
    Texts visited;
    schema->forEachDefinition(changingAtB(visited, [this] { schema.reset(); }), {});
    EXPECT_EQ(visited, (Texts{"a", "b", "TEST*"}));
}

TEST_F(SchemaPsetTest, AVisitorMayThrowAfterItRemovedItsContext) {
    const auto removing = [](const Context&, const SchemaPropertySetDefinitions&) {
        registry().clear();
        throw std::range_error("visitor");
    };
    EXPECT_THROW(schema->forEachDefinition(removing, {}), std::range_error);
    EXPECT_EQ(schema->pXmlSetFromName("Pset_X", {}), nullptr);
}

TEST_F(SchemaPsetTest, AContextThatTheFilterRemovesIsNotSearched) {
    const Filter removing = [](const Context& context) {
        if (context.name == "b")
            registry().clear({"b", false});
        return true;
    };
    EXPECT_EQ(sContextOf(schema->pXmlSetFromName("Pset_X", removing)), "TEST*");
    const Filter removingAll = [](const Context&) {
        registry().clear();
        return true;
    };
    EXPECT_EQ(schema->getXmlSetsToEntity(entity("IfcWall"), true, removingAll).size(), 0U);
}

TEST_F(SchemaPsetTest, ManyThreadsSearchAtOnce) {
    const auto* const set = schema->pXmlSetFromName("Pset_X", {});
    const auto* const def = schema->pXmlDefFromIfd(guidOf(2));
    const auto all = schema->getXmlSetsAllToEntity(entity("IfcWall"), true, {});
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int index = 0; index < 4; ++index)
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                wrong += schema->pXmlSetFromName("pset_x", {}) == set ? 0 : 1;
                wrong += schema->pXmlDefFromIfd(guidOf(2)) == def ? 0 : 1;
                wrong += schema->getXmlSetsAllToEntity(entity("IfcWall"), true, {}) == all ? 0 : 1;
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(SchemaPsetTest, DefinitionsLiveOnWhenTheSchemaEnds) {
    const auto* const set = schema->pXmlSetFromName("Pset_Free", {});
    const auto* const def = schema->pXmlDefFromIfd(guidOf(2));
    schema.reset();
    EXPECT_EQ(set->getName(), "Pset_Free");
    EXPECT_EQ(def->getConcept(), "Pset_X.S");
}

TEST_F(SchemaPsetTest, IsReadFromAStreamOrNullWithoutASchema) {
    const auto read =
        schemaPsetFromWholeText("SCHEMA A;\nENTITY X;\nEND_ENTITY;\nEND_SCHEMA;\nSCHEMA B;\nEND_SCHEMA;\n");
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->getName(), "B") << "of several the last counts";
    EXPECT_EQ(read->pObjectFromName("X"), nullptr);
    EXPECT_EQ(schemaPsetFromWholeText("ENTITY X;\nEND_ENTITY;\n"), nullptr);
    EXPECT_EQ(schemaPsetFromWholeText(""), nullptr);
}

TEST_F(SchemaPsetTest, AStreamThatFailsIsAnExceptionWithoutMessage) {
    const std::string_view text = "SCHEMA A;\nENTITY X;\nEND_ENTITY;\nEND_SCHEMA;\n";
    FailingStream stream(text, 15);
    try {
        SchemaPset::pStepStreamRead(stream);
        ADD_FAILURE() << "read to the end";
    } catch (const kiv::exception& error) {
        EXPECT_STREQ(error.what(), "");
    }
}

/// One entity that has its record in this configuration.
std::string sConfig(const std::string& entity, const std::string& attribute,
                    const std::string& representation) {
    return "<cnf:configuration xmlns:cnf='c' id='TEST'><cnf:entity select='" + entity +
           "'><cnf:attribute select='" + attribute + "' exp-attribute='" + representation +
           "'/></cnf:entity></cnf:configuration>";
}

class SchemaPsetConfigTest : public StoreTest {
protected:
    void vInit(const std::string& xml) {
        std::istringstream stream(xml);
        schema->vXmlSchemaConfigInit(stream);
    }

    const ifc::def::xmlschema::Attribute* pRecord(const char* entity, const char* attribute) const {
        const auto* const found =
            entityOf(*schema, entity).pAttributeFromName(ifc::def::schema::AttributeName(attribute), false);
        return found->pXmlAttribute();
    }

    std::unique_ptr<SchemaPset> schema = schemaPsetFromText(StoreSchema);
    AssertCollector reports;
};

using ifc::def::xmlschema::ExpAttribute;

TEST_F(SchemaPsetConfigTest, IsNullUntilOneIsRead) {
    EXPECT_EQ(schema->pXmlSchemaConfig(), nullptr);
    EXPECT_EQ(pRecord("IfcRoot", "Name"), nullptr);
    vInit(sConfig("IfcRoot", "Name", "double-tag"));
    ASSERT_NE(schema->pXmlSchemaConfig(), nullptr);
    ASSERT_EQ(schema->pXmlSchemaConfig()->getAttributes().size(), 1U);
    EXPECT_EQ(pRecord("IfcRoot", "Name"), &schema->pXmlSchemaConfig()->getAttributes().front());
    EXPECT_EQ(reports.getMessages(), Texts());
}

TEST_F(SchemaPsetConfigTest, ALaterOneTakesThePlaceOfAnEarlierWhoseRecordsLiveOn) {
    vInit(sConfig("IfcRoot", "Name", "double-tag"));
    const auto* const first = schema->pXmlSchemaConfig();
    const auto* const record = pRecord("IfcRoot", "Name");
    vInit(sConfig("IfcWall", "PredefinedType", "attribute-tag"));
    EXPECT_NE(schema->pXmlSchemaConfig(), first);
    EXPECT_EQ(pRecord("IfcWall", "PredefinedType"), &schema->pXmlSchemaConfig()->getAttributes().front());
    // The attribute that only the first configuration knows stays linked to it.
    EXPECT_EQ(pRecord("IfcRoot", "Name"), record);
    EXPECT_EQ(record->getRepresentation(), ExpAttribute::DoubleTag);
    EXPECT_EQ(first->getAttributes().size(), 1U);
}

TEST_F(SchemaPsetConfigTest, OfTwoRecordsForAnAttributeThatOfTheLaterConfigurationCounts) {
    vInit(sConfig("IfcRoot", "Name", "double-tag"));
    vInit(sConfig("IfcRoot", "Name", "attribute-tag"));
    EXPECT_EQ(pRecord("IfcRoot", "Name")->getRepresentation(), ExpAttribute::AttributeTag);
}

TEST_F(SchemaPsetConfigTest, ManyConfigurationsAreAllKept) {
    vInit(sConfig("IfcRoot", "Name", "double-tag"));
    const auto* const record = pRecord("IfcRoot", "Name");
    for (int count = 0; count < 20; ++count)
        vInit(sConfig("IfcWall", "PredefinedType", "attribute-tag"));
    EXPECT_EQ(pRecord("IfcRoot", "Name"), record);
    EXPECT_EQ(record->getRepresentation(), ExpAttribute::DoubleTag);
}

const kiv::assert::AssertRecord IllegalDocument{0, "Illegal xml document",
                                                "kiv::ifc::def::xmlschema::Config::Config",
                                                "Source/Format/Ifc/Def/XmlSchema/IfcXmlConfig", 0};

TEST_F(SchemaPsetConfigTest, ATextThatIsNoXmlLeavesOneReportAndTheSchemaAsItWas) {
    vInit(sConfig("IfcRoot", "Name", "double-tag"));
    const auto* const record = pRecord("IfcRoot", "Name");
    const auto whole = sConfig("IfcRoot", "Name", "attribute-tag");
    for (const auto& text :
         {std::string(), std::string("configuration"), whole.substr(0, whole.size() - 1)}) {
        SCOPED_TRACE(text);
        reports.vClear();
        vInit(text);
        EXPECT_EQ(reports.getRecords(), std::vector{IllegalDocument});
        ASSERT_NE(schema->pXmlSchemaConfig(), nullptr);
        EXPECT_EQ(schema->pXmlSchemaConfig()->getAttributes().size(), 0U);
        EXPECT_EQ(pRecord("IfcRoot", "Name"), record);
        EXPECT_EQ(record->getRepresentation(), ExpAttribute::DoubleTag);
    }
}

TEST_F(SchemaPsetConfigTest, AStreamThatFailsIsNoXml) {
    const auto text = sConfig("IfcRoot", "Name", "attribute-tag");
    FailingStream stream(text, text.size() - 10);
    schema->vXmlSchemaConfigInit(stream);
    EXPECT_EQ(reports.getRecords(), std::vector{IllegalDocument});
    EXPECT_EQ(pRecord("IfcRoot", "Name"), nullptr);
}

TEST_F(SchemaPsetConfigTest, AllEndWithTheirSchema) {
    const auto config = sConfig("IfcRoot", "Name", "double-tag");
    const auto allocationsLeftBehind = [this, &config] {
        const auto before = allocationsHeld();
        schema = schemaPsetFromText(StoreSchema);
        vInit(config);
        vInit(config);
        EXPECT_GE(allocationsHeld() - before, 2) << "two configurations at least";
        schema.reset();
        return allocationsHeld() - before;
    };
    schema.reset();
    allocationsLeftBehind(); // What is made once in a process stays.
    EXPECT_EQ(allocationsLeftBehind(), 0);
}

} // namespace

} // namespace kiv::test
