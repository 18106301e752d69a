#include "Support/FrozenMemory.h"
#include "Support/ModelText.h"
#include "Support/NestedSelects.h"
#include "Support/SampleStore.h"
#include "Support/Sanitized.h"
#include "Support/StoreAnswers.h"
#include "kiv/Format/Ifc/Def/IfcDefExtraExportInfo.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kiv/Host/Locale/KivLocale.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

namespace kiv::test {

namespace {

using namespace ifc::def;
namespace defs = ifc::def::xml;

/// All that many threads may ask at once: a schema with its configuration, the registry with two collections,
/// a document, and the records about a set.
struct Shared {
    Shared() {
        std::istringstream config(SampleConfig);
        store.schema().vXmlSchemaConfigInit(config);
        const XmlFromText broken(sSampleText("BrokenSets/Broken_UnknownNodes.xml"));
        defs::XmlSetErrors found;
        pSetFromElement(broken.root(), found);
        errors.sets.insert(found);
    }

    SampleStore store;
    NestedSelects selects;
    XmlFromText document{sSampleText("Sets/Pset_BldWall.xml")};
    defs::XmlSetsErrors errors;
};

std::string sInverseAnswers(const SchemaPset& schema) {
    std::string text;
    for (const auto* const object : schema.getObjects()) {
        const auto* const entity = schema::Entity::pFrom(object);
        if (!entity)
            continue;
        for (const auto& attribute : entity->getAttributesInverse()) {
            const std::string name(attribute.getName());
            const auto* const found = entity->pAttributeInverseFromName(name, true);
            text += found && found->pXmlAttribute() ? name + " with a record\n" : name + '\n';
        }
        text += schema.pObjectFromName(schema::ObjectName(*entity)) == object ? "same\n" : "other\n";
    }
    return text;
}

/// What the definitions of a host's filter and visitor hear, and each set as a document.
std::string sSetAnswers(const SchemaPset& schema) {
    const auto german = kiv::locale::Locale::get("de", nullptr);
    std::string text;
    const auto visit = [&](const SchemaPset::Context& context, const SchemaPropertySetDefinitions& sets) {
        text += context.name + '\n';
        for (const auto* const set : sets.getXmlSets()) {
            defs::XmlSetErrors errors;
            text += set->checkForErrors(schema, errors) ? "fine\n" : "not fine\n";
            text += set->getDefinitionAliases().sValueFromLanguage(german) + '\n';
            defs::ExtraExportInfo info;
            info.schemaForBaseTypes = &schema;
            XmlTarget target(set->pXmlElementName());
            set->exportDef(target.root(), &info);
            text += target.sText();
        }
    };
    schema.forEachDefinition(visit, {});
    schema.forEachDefinition(visit, [](const auto& context) { return context.isStandard; });
    const auto* const set =
        schema.pXmlSetFromName("qto_bldwall", [](const auto& context) { return context.isStandard; });
    return text + (set ? set->getName() : "none");
}

std::string sConfigAnswers(const xmlschema::Config& config) {
    std::string text(config.getNamespace().getPrefix());
    for (const auto& record : config.getAttributes())
        text += ' ' + std::to_string(static_cast<int>(record.getRepresentation()));
    return text;
}

/// Everything that there is to ask.
std::string sAllAnswers(const Shared& shared) {
    const auto& schema = shared.store.schema();
    defs::XmlSetErrors errors;
    const auto set = pSetFromElement(shared.document.root(), errors);
    return sAnswers(schema) + sModelText(schema) + sInverseAnswers(schema) + sSetAnswers(schema) +
           sConfigAnswers(*schema.pXmlSchemaConfig()) + shared.selects.sAnswers() +
           sXmlText(shared.document.root()) + set->getName() + shared.errors.getFormattedErrors();
}

/// The status of a process that read-only memory did not end.
constexpr int RightAnswers = 0;
constexpr int WrongAnswers = 1;

/// Asks with nothing but the answers' own memory to write to. No destructor runs at the end: these may write.
[[noreturn]] void vAskFrozen(const Shared& shared, const std::string& expected) {
    FrozenMemory::vFreeze();
    std::_Exit(sAllAnswers(shared) == expected ? RightAnswers : WrongAnswers);
}

/// The same with the variables of the libraries read-only too, once all of them have been set up.
[[noreturn]] void vAskAllFrozen(const Shared& shared, const std::string& expected) {
    FrozenMemory::vFreeze();
    const bool isRight = sAllAnswers(shared) == expected;
    const bool isFrozen = FrozenMemory::librariesFreeze("libKiv") > 0;
    std::_Exit(isRight && isFrozen && sAllAnswers(shared) == expected ? RightAnswers : WrongAnswers);
}

/// What `expected` is comes from objects of their own, so that a cache that the first question fills is seen.
class LookUpWrites : public testing::Test {
protected:
    LookUpWrites() {
        {
            const Shared other;
            expected_ = sAllAnswers(other);
        }
        const FrozenMemory::Placing placing;
        shared_ = std::make_unique<Shared>();
    }

    void SetUp() override {
        if (isSanitized)
            GTEST_SKIP() << "the sanitizer has its own memory";
        ASSERT_TRUE(FrozenMemory::has(shared_.get()));
        ASSERT_TRUE(FrozenMemory::has(pWall()));
        ASSERT_TRUE(FrozenMemory::has(shared_->store.schema().getStandardDefinitions()));
    }

    const schema::ObjectBase* pWall() const { return shared_->store.schema().pObjectFromName("BldWall"); }

    std::string expected_;
    std::unique_ptr<Shared> shared_;
};

using LookUpWritesDeathTest = LookUpWrites;

TEST_F(LookUpWritesDeathTest, NoLookUpWritesToWhatItAsks) {
    EXPECT_EXIT(vAskFrozen(*shared_, expected_), testing::ExitedWithCode(RightAnswers), "");
}

TEST_F(LookUpWritesDeathTest, NoLookUpWritesToAVariableOfTheLibraries) {
#ifdef KIV_SHARED
    EXPECT_EXIT(vAskAllFrozen(*shared_, expected_), testing::ExitedWithCode(RightAnswers), "");
#else
    GTEST_SKIP() << "the libraries are part of the test program";
#endif
}

/// The first letter of a name, the reference count of a collection, and a set of the registry.
TEST_F(LookUpWritesDeathTest, EveryWriteIsSeen) {
    const auto ended = testing::KilledBySignal(SIGSEGV);
    EXPECT_EXIT(
        {
            FrozenMemory::vFreeze();
            *const_cast<char*>(pWall()->getName().data()) = 'X';
            std::_Exit(0);
        },
        ended, "");
    EXPECT_EXIT(
        {
            FrozenMemory::vFreeze();
            const auto kept = SampleStore::registry().getContexts().begin()->second;
            std::_Exit(kept ? 0 : 1);
        },
        ended, "");
    EXPECT_EXIT(
        {
            FrozenMemory::vFreeze();
            SampleStore::registry().clear();
            std::_Exit(0);
        },
        ended, "");
}

} // namespace

} // namespace kiv::test
