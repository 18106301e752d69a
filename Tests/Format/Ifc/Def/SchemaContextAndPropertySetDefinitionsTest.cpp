#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"

#include "Format/Ifc/Def/DefDoubles.h"
#include "Format/Ifc/Def/StoreTools.h"
#include "Support/Allocations.h"

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kiv::test {

namespace {

using ifc::def::SchemaContextAndPropertySetDefinitions;
using ifc::def::SchemaPropertySetDefinitions;
using Context = ifc::def::SchemaPropertySetDefinitionsContext;

static_assert(!std::is_copy_constructible_v<SchemaContextAndPropertySetDefinitions>);
static_assert(!std::is_default_constructible_v<SchemaContextAndPropertySetDefinitions>,
              "there is one a process");

/// A set that counts down when it ends.
class CountedSet : public PlainSet {
public:
    CountedSet(std::string_view name, int& alive) : PlainSet(name), alive_(alive) { ++alive_; }
    ~CountedSet() override { --alive_; }

private:
    int& alive_;
};

class SchemaContextAndPropertySetDefinitionsTest : public StoreTest {
protected:
    /// A collection of one set of this name.
    SchemaPropertySetDefinitions collection(std::string_view setName) {
        SchemaPropertySetDefinitions sets;
        ifc::def::xml::XmlSetErrors errors;
        sets.xmlSetAdd(*schema, std::make_unique<CountedSet>(setName, alive), errors);
        return sets;
    }

    void vAdd(Context context, std::string_view setName) {
        registry().addPropertySets(std::move(context), collection(setName));
    }

    /// The name of the one set in that context; "none" when it is not registered.
    static std::string sSetIn(const Context& context) {
        const auto* const sets = registry().getPropertySetsFromContext(context);
        return sets ? sets->getXmlSets().at(0)->getName() : "none";
    }

    /// The contexts in the order of the search, standard ones with a "*".
    static Texts contexts() {
        Texts names;
        for (const auto& [context, sets] : registry().getContexts())
            names.push_back(context.name + (context.isStandard ? "*" : ""));
        return names;
    }

    std::unique_ptr<ifc::def::SchemaPset> schema = schemaPsetFromText("");
    int alive = 0;
};

TEST_F(SchemaContextAndPropertySetDefinitionsTest, IsOneAndEmpty) {
    EXPECT_EQ(&SchemaContextAndPropertySetDefinitions::instance(),
              &SchemaContextAndPropertySetDefinitions::instance());
    EXPECT_EQ(contexts(), Texts());
    EXPECT_EQ(registry().getPropertySetsFromContext({"", false}), nullptr);
    EXPECT_EQ(registry().getPropertySetsFromContext({"", true}), nullptr);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, HostContextsComeBeforeStandardOnesEachByName) {
    const Texts ordered{"", "IFC4", "IFC4X", "Z", "a", "\x80", "*", "A*", "IFC2X3*", "IFC4*", "IFC4X*", "b*"};
    for (auto context = ordered.rbegin(); context != ordered.rend(); ++context) {
        const bool isStandard = context->ends_with('*');
        vAdd({isStandard ? context->substr(0, context->size() - 1) : *context, isStandard}, "Pset_A");
    }
    EXPECT_EQ(contexts(), ordered);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, ContextsAreEqualWhenBothFieldsAre) {
    EXPECT_EQ((Context{"IFC4", true}), (Context{"IFC4", true}));
    EXPECT_NE((Context{"IFC4", true}), (Context{"IFC4", false}));
    EXPECT_NE((Context{"IFC4", true}), (Context{"ifc4", true}));
    EXPECT_LT((Context{"b", false}), (Context{"a", true}));
    EXPECT_LT((Context{"IFC4", true}), (Context{"IFC4X", true}));
    EXPECT_EQ(Context().isStandard, false);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, ARegisteredCollectionAnswersAsBefore) {
    auto sets = collection("Pset_A");
    const auto* const set = sets.getXmlSetFromName("Pset_A");
    registry().addPropertySets({"IFC4", true}, std::move(sets));
    const auto* const registered = registry().getPropertySetsFromContext({"IFC4", true});
    ASSERT_NE(registered, nullptr);
    EXPECT_EQ(registered->getXmlSetFromName("PSET_A"), set);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, SecondCollectionUnderAnEqualContextIsDestroyed) {
    vAdd({"IFC4", true}, "Pset_First");
    const auto* const first = registry().getPropertySetsFromContext({"IFC4", true});
    vAdd({"IFC4", true}, "Pset_Second");
    EXPECT_EQ(registry().getPropertySetsFromContext({"IFC4", true}), first);
    EXPECT_EQ(sSetIn({"IFC4", true}), "Pset_First");
    EXPECT_EQ(alive, 1);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, SecondCollectionIsDestroyedAtOnceAndNotWithItsVariable) {
    vAdd({"IFC4", true}, "Pset_First");
    auto second = collection("Pset_Second");
    ASSERT_EQ(alive, 2);
    registry().addPropertySets({"IFC4", true}, std::move(second));
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(sSetIn({"IFC4", true}), "Pset_First");
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, WhenMemoryRunsOutContextAndCollectionStayWithTheCaller) {
    const std::string name(100, 'n');
    Context context{name, false};
    auto sets = collection("Pset_A");
    const auto* const set = sets.getXmlSetFromName("Pset_A");
    std::size_t count = 0;
    while (!boRunWith(count, [&] { registry().addPropertySets(std::move(context), std::move(sets)); })) {
        ++count;
        EXPECT_EQ(context.name, name);
        EXPECT_EQ(sets.getXmlSetFromName("Pset_A"), set);
        EXPECT_EQ(contexts(), Texts());
        ASSERT_EQ(alive, 1);
    }
    EXPECT_GE(count, 2U) << "the collection and its place";
    EXPECT_EQ(sSetIn({name, false}), "Pset_A");
    EXPECT_EQ(alive, 1);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, CollectionsStayWhereTheyAreWhenOthersComeAndGo) {
    vAdd({"m", false}, "Pset_M");
    const auto* const sets = registry().getPropertySetsFromContext({"m", false});
    vAdd({"a", false}, "Pset_A");
    vAdd({"z", true}, "Pset_Z");
    registry().removePropertySets("a");
    EXPECT_EQ(registry().getPropertySetsFromContext({"m", false}), sets);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, AnotherValueOfIsStandardIsAnotherContext) {
    vAdd({"IFC4", true}, "Pset_A");
    EXPECT_EQ(registry().getPropertySetsFromContext({"IFC4", false}), nullptr);
    EXPECT_EQ(sSetIn({"IFC4", true}), "Pset_A");
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, NamesAreComparedByteByByte) {
    vAdd({"IFC4", true}, "Pset_A");
    for (const auto* name : {"ifc4", "IFC", "IFC4 ", ""}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(registry().getPropertySetsFromContext({name, true}), nullptr);
        registry().removePropertySets(name);
        registry().clear({name, true});
        EXPECT_EQ(contexts(), Texts{"IFC4*"});
    }
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, RemoveTakesTheHostContextOfThatNameOnly) {
    vAdd({"IFC4", true}, "Pset_Standard");
    vAdd({"IFC4", false}, "Pset_Host");
    registry().removePropertySets("IFC4");
    EXPECT_EQ(contexts(), Texts{"IFC4*"});
    EXPECT_EQ(sSetIn({"IFC4", true}), "Pset_Standard");
    registry().removePropertySets("IFC4");
    EXPECT_EQ(contexts(), Texts());
    EXPECT_EQ(alive, 0);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, RemoveTakesANameThatTheRegistryItselfHolds) {
    vAdd({"IFC4", true}, "Pset_A");
    registry().removePropertySets(registry().getContexts().begin()->first.name);
    EXPECT_EQ(contexts(), Texts());
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, ClearOfAContextTakesExactlyThat) {
    vAdd({"IFC4", true}, "Pset_Standard");
    vAdd({"IFC4", false}, "Pset_Host");
    registry().clear({"IFC4", true});
    EXPECT_EQ(contexts(), Texts{"IFC4"});
    registry().clear({"IFC4", true});
    EXPECT_EQ(contexts(), Texts{"IFC4"});
    registry().clear(registry().getContexts().begin()->first);
    EXPECT_EQ(contexts(), Texts());
    EXPECT_EQ(alive, 0);
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, AClearedContextTakesANewCollection) {
    vAdd({"IFC4", true}, "Pset_Old");
    registry().clear({"IFC4", true});
    vAdd({"IFC4", true}, "Pset_New");
    EXPECT_EQ(sSetIn({"IFC4", true}), "Pset_New");
}

TEST_F(SchemaContextAndPropertySetDefinitionsTest, AfterClearNothingIsFoundAndAddingWorksAgain) {
    vAdd({"IFC4", true}, "Pset_A");
    vAdd({"host", false}, "Pset_B");
    registry().clear();
    EXPECT_EQ(sSetIn({"IFC4", true}), "none");
    EXPECT_EQ(sSetIn({"host", false}), "none");
    EXPECT_EQ(alive, 0);
    vAdd({"IFC4", true}, "Pset_C");
    EXPECT_EQ(sSetIn({"IFC4", true}), "Pset_C");
}

} // namespace

} // namespace kiv::test
