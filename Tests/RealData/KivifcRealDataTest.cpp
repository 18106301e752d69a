// The program on real schemas and sets: what it prints is what the library answers.
#include "RealData/StoreRealData.h"
#include "Support/ErrorRecords.h"
#include "Support/SetFromText.h"
#include "Support/SetText.h"
#include "Support/TemporaryFolder.h"
#include "Support/XmlFromText.h"
#include "Tools/kivifc/KivifcRun.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

namespace kiv::test {

namespace {

namespace defs = ifc::def::xml;
namespace express = ifc::def::schema;
namespace pset = ifc::def::pset;
namespace xmlschema = ifc::def::xmlschema;
using ifc::def::SchemaPset;
using kivifc::test::kivifcRun;
using kivifc::test::linesOf;
using nlohmann::json;
using Names = std::vector<std::string>;

/// Every few of what takes a run of its own.
template <class Value>
std::vector<Value> sampleOf(const std::vector<Value>& values, std::size_t stride) {
    std::vector<Value> sample;
    for (std::size_t index = 0; index < values.size(); index += stride)
        sample.push_back(values[index]);
    return sample;
}

class KivifcRealDataTest : public StoreRealDataTest {
protected:
    /// The arguments of a command: the schema, its sets when they are wanted, and the rest.
    static Names arguments(const std::string& command, const std::string& release, bool withSets,
                           const Names& rest) {
        Names words{command, schemaPath(release).native()};
        if (withSets) {
            for (const auto& folder : setFolders(release))
                words.push_back(path("sets/" + folder).native());
        }
        words.insert(words.end(), rest.begin(), rest.end());
        return words;
    }

    static kivifc::test::Run run(const std::string& command, const std::string& release, const Names& rest) {
        return kivifcRun(arguments(command, release, true, rest));
    }
};

/// All members of the sets and all attributes of the entities, the inherited ones too.
Names questionsOf(const std::vector<const defs::SetDef*>& sets,
                  const std::vector<const express::Entity*>& entities) {
    Names questions;
    for (const auto* const set : sets) {
        for (const auto* const member : membersOf(*set))
            questions.push_back(member->getConcept());
    }
    for (const auto* const entity : entities) {
        for (const auto* each = entity; each; each = each->pSupertype()) {
            for (const auto& attribute : each->getAttributes())
                questions.push_back(std::string(entity->getName()) + "." + std::string(attribute.getName()));
        }
    }
    return questions;
}

TEST_F(KivifcRealDataTest, TypeGivesTheLibrarysAnswers) {
    for (const auto& release : Releases) {
        auto& own = schema(release);
        auto questions =
            questionsOf(own.getStandardDefinitions()->getXmlSets(), sampleOf(entitiesOf(own), 20));
        questions.emplace_back("IfcWall.Nothing");
        auto words = questions;
        words.emplace_back("--json");
        const auto answer = run("type", release, words);
        EXPECT_EQ(answer.status, 1) << "members of some kinds have no value";
        const auto answers = json::parse(answer.out);
        ASSERT_EQ(answers.size(), questions.size());
        std::size_t valueless = 0;
        for (std::size_t index = 0; index < questions.size(); ++index) {
            const auto type = ifc::findPropertyTypeName(questions[index], own);
            EXPECT_EQ(answers[index]["question"], questions[index]);
            EXPECT_EQ(answers[index]["type"], type ? json(*type) : json(nullptr)) << questions[index];
            valueless += type ? 0 : 1;
        }
        EXPECT_EQ(linesOf(answer.err).size(), valueless) << "a line for each question without a value";
        EXPECT_EQ(linesOf(run("type", release, questions).out).size(), questions.size());
    }
}

/// The names that the entity and all above it declare, from the topmost down.
Names declaredNames(const express::Entity& entity,
                    const std::function<void(const express::Entity&, Names&)>& add) {
    auto names = entity.pSupertype() ? declaredNames(*entity.pSupertype(), add) : Names();
    add(entity, names);
    return names;
}

template <class Range>
void vNamesAdd(const Range& range, Names& names) {
    for (const auto& each : range)
        names.emplace_back(each.getName());
}

Names valuesOf(const json& list, const char* key) {
    Names values;
    for (const auto& each : list)
        values.push_back(each[key]);
    return values;
}

void vExpectPicture(const json& picture, const express::Entity& entity) {
    const auto names = [&](const auto& add) { return declaredNames(entity, add); };
    EXPECT_EQ(picture["name"], entity.getName());
    EXPECT_EQ(picture["line"].get<Names>(),
              names([](const auto& each, auto& all) { all.emplace_back(each.getName()); }));
    EXPECT_EQ(valuesOf(picture["attributes"], "name"),
              names([](const auto& each, auto& all) { vNamesAdd(each.getAttributes(), all); }));
    EXPECT_EQ(valuesOf(picture["inverses"], "name"),
              names([](const auto& each, auto& all) { vNamesAdd(each.getAttributesInverse(), all); }));
    EXPECT_EQ(valuesOf(picture["derived"], "name"), names([](const auto& each, auto& all) {
                  if (each.pDerive())
                      vNamesAdd(each.pDerive()->getValues(), all);
              }));
    EXPECT_EQ(valuesOf(picture["where"], "label"), names([](const auto& each, auto& all) {
                  if (!each.pWhere())
                      return;
                  for (const auto& rule : each.pWhere()->getRules())
                      all.emplace_back(rule.label);
              }));
}

/// Each derived attribute has a type and an expression, on one line, and nothing of the text around them.
void vExpectDerived(const json& picture) {
    for (const auto& derived : picture["derived"]) {
        for (const std::string text : {derived["type"], derived["expression"]}) {
            EXPECT_NE(text, "") << derived;
            EXPECT_EQ(text.find_first_of("\t\n\r;"), std::string::npos) << derived;
            EXPECT_EQ(text.find("  "), std::string::npos) << derived;
        }
        const std::string name = derived["name"];
        EXPECT_EQ(derived["redeclares"].is_null(), name.find('.') == std::string::npos) << derived;
    }
}

class KivifcEntityRealDataTest : public KivifcRealDataTest,
                                 public testing::WithParamInterface<std::string> {};

TEST_P(KivifcEntityRealDataTest, EntitiesAreShownWithAllThatTheyInherit) {
    for (const auto* const entity : sampleOf(entitiesOf(schema(GetParam())), 12)) {
        SCOPED_TRACE(entity->getName());
        const auto answer =
            kivifcRun(arguments("entity", GetParam(), false, {std::string(entity->getName()), "--json"}));
        EXPECT_EQ(answer.status, 0);
        EXPECT_EQ(answer.err, "");
        const auto picture = json::parse(answer.out);
        vExpectPicture(picture, *entity);
        vExpectDerived(picture);
    }
}

INSTANTIATE_TEST_SUITE_P(All, KivifcEntityRealDataTest, testing::ValuesIn(Releases),
                         [](const auto& row) { return row.param; });

TEST_F(KivifcRealDataTest, EntityAsTextNamesEverySupertype) {
    for (const auto& release : Releases) {
        for (const auto* const entity : sampleOf(entitiesOf(schema(release)), 50)) {
            const auto answer = run("entity", release, {sUpper(std::string(entity->getName()))});
            EXPECT_EQ(answer.status, 0);
            std::string line(entity->getName());
            for (const auto* above = entity->pSupertype(); above; above = above->pSupertype())
                line = std::string(above->getName()) + " > " + line;
            EXPECT_EQ(linesOf(answer.out).at(1), "line             " + line);
        }
    }
}

/// The program lists a set once that names several of the entities.
Names withoutRepeats(const Names& names) {
    Names once;
    std::ranges::copy_if(names, std::back_inserter(once),
                         [&](const auto& name) { return std::ranges::find(once, name) == once.end(); });
    return once;
}

/// Entities that a release does not have are left out.
std::vector<const express::Entity*> entitiesNamed(const SchemaPset& schema, const Names& names) {
    std::vector<const express::Entity*> entities;
    for (const auto& name : names) {
        if (const auto* const entity = express::Entity::pFrom(schema.pObjectFromName(name)))
            entities.push_back(entity);
    }
    return entities;
}

TEST_F(KivifcRealDataTest, SetsOfAnEntityAreTheLibrarysAnswer) {
    const Names asked{"IfcWall", "IfcWallStandardCase",        "IfcDoor", "IfcSpace",         "IfcPump",
                      "IfcBeam", "IfcDistributionFlowElement", "IfcRoot", "IfcCartesianPoint"};
    std::size_t count = 0;
    for (const auto& release : Releases) {
        auto& own = schema(release);
        for (const auto* const entity : entitiesNamed(own, asked)) {
            SCOPED_TRACE(release + ' ' + std::string(entity->getName()));
            for (const bool isUnrestricted : {false, true}) {
                Names options{"--json", "--entity", std::string(entity->getName())};
                if (isUnrestricted)
                    options.emplace_back("--unrestricted");
                const auto expected =
                    withoutRepeats(namesOf(own.getXmlSetsAllToEntity(*entity, isUnrestricted, {})));
                const auto answer = run("sets", release, options);
                EXPECT_EQ(answer.status, expected.empty() ? 1 : 0);
                EXPECT_EQ(valuesOf(json::parse(answer.out), "name"), expected);
                options.emplace_back("--own");
                EXPECT_EQ(valuesOf(json::parse(run("sets", release, options).out), "name"),
                          namesOf(own.getXmlSetsToEntity(*entity, isUnrestricted, {})));
                count += expected.size();
            }
        }
    }
    EXPECT_GT(count, 20U);
}

TEST_F(KivifcRealDataTest, SetsAreFoundInThreeLetterCases) {
    for (const auto& release : Releases) {
        for (const auto* const set : sampleOf(schema(release).getStandardDefinitions()->getXmlSets(), 60)) {
            for (const auto& name : casesOf(set->getName())) {
                const auto answer = run("find", release, {name, "--json"});
                EXPECT_EQ(answer.status, 0) << name;
                const auto found = json::parse(answer.out);
                EXPECT_EQ(found["set"], set->getName());
                EXPECT_EQ(found["kind"], set->pXmlElementName());
                const auto& definition = found["definition"];
                EXPECT_EQ(definition["definition"], set->getDefinition());
                const auto* const list = definition.contains("properties") ? "properties" : "quantities";
                Names members;
                for (const auto* const member : membersOf(*set))
                    members.emplace_back(member->getName());
                EXPECT_EQ(valuesOf(definition[list], "name"), members);
            }
        }
    }
}

TEST_F(KivifcRealDataTest, MembersAreFoundByTheirGuids) {
    auto& ifc4 = schema("IFC4");
    std::vector<const defs::Def*> members;
    for (const auto& set : sets("IFC4")) {
        for (const auto* const member : membersOf(*set)) {
            if (!member->getIfdGuid().isNull())
                members.push_back(member);
        }
    }
    EXPECT_GT(members.size(), 2400U);
    for (const auto* const member : sampleOf(members, 300)) {
        const auto guid = member->getIfdGuid().toString(false);
        const auto* const expected = ifc4.pXmlDefFromIfd(member->getIfdGuid());
        for (const auto& form : {guid, sUpper(guid)}) {
            const auto answer = run("find", "IFC4", {form, "--json"});
            EXPECT_EQ(answer.status, 0) << form;
            const auto found = json::parse(answer.out);
            EXPECT_EQ(found["set"], expected->pOwner()->getName()) << form;
            EXPECT_EQ(found["definition"]["name"], expected->getName());
            EXPECT_EQ(found["definition"]["ifdGuid"], guid);
        }
    }
}

std::string sRepresentation(xmlschema::ExpAttribute representation) {
    static const Names texts{"not given", "attribute-tag", "attribute-content", "double-tag"};
    return texts.at(static_cast<std::size_t>(representation));
}

/// All that the configuration says, as the program lists it.
Names configuredLines(const SchemaPset& schema) {
    Names lines;
    for (const auto* const entity : entitiesOf(schema)) {
        const auto start = "  " + std::string(entity->getName()) + ".";
        for (const auto& attribute : entity->getAttributes()) {
            if (const auto* const record = attribute.pXmlAttribute())
                lines.push_back(start + std::string(attribute.getName()) + "  " +
                                sRepresentation(record->getRepresentation()) +
                                (record->isTagless() ? ", tagless" : "") +
                                (record->isKeep() ? ", keep" : ""));
        }
        for (const auto& inverse : entity->getAttributesInverse()) {
            if (const auto* const record = inverse.pXmlAttribute())
                lines.push_back(start + std::string(inverse.getName()) + "  " +
                                sRepresentation(record->getRepresentation()) + " (inverse)");
        }
    }
    return lines;
}

TEST_F(KivifcRealDataTest, ConfigShowsEveryRecordAndReport) {
    std::istringstream stream(sText(configPath()));
    schema("IFC4").vXmlSchemaConfigInit(stream);
    const auto answer = kivifcRun(arguments("config", "IFC4", false, {configPath().native()}));
    EXPECT_EQ(answer.status, 1) << "it is that of Addendum 1";
    EXPECT_EQ(answer.err, "");
    const auto attributes = configuredLines(schema("IFC4"));
    // IfcOffsetCurve.BasisCurve has two of the records.
    Names expected{"target namespace http://www.buildingsmart-tech.org/ifcXML/IFC4/final",
                   "prefix           ifc",
                   "alias            http://www.buildingsmart-tech.org/ifcXML/IFC4/final",
                   "concrete         attribute-content",
                   "entity           not given",
                   "uos element      ifcXML",
                   "records          257 of attributes, 19 of inverses",
                   "attributes       " + std::to_string(attributes.size())};
    expected.insert(expected.end(), attributes.begin(), attributes.end());
    const std::string place = " (kiv::ifc::def::xmlschema::";
    expected.emplace_back("reports          3");
    expected.push_back("  Unknown attribute" + place + "Option::vInit::<lambda_1>::operator ())");
    expected.push_back("  Attribute not found" + place + "Attribute::vRead)");
    expected.push_back("  Attribute not found" + place + "Attribute::vRead)");
    EXPECT_EQ(linesOf(answer.out), expected);
    EXPECT_EQ(attributes.size(), 256U + 19U);
}

/// Children inside the element and inside those, in document order.
void vForEachElement(const kiv::xml::const_Element& top,
                     const std::function<void(const kiv::xml::const_Element&)>& visit) {
    for (auto child = top.FirstElementChildGet(); child; child = child->NextElementSiblingGet()) {
        visit(*child);
        vForEachElement(*child, visit);
    }
}

/// What `kivifc export` wrote.
struct ExportedFile {
    std::string set;
    std::string path;
    std::string text;

    /// The text without the comment at the end, which detects changes by a checksum.
    std::string sBody() const { return text.substr(0, text.rfind("<!--")); }
};

class KivifcExportRealDataTest : public KivifcEntityRealDataTest {
protected:
    /// Exports these sets to a new folder and gives what is then in it, in the order of the output.
    std::vector<ExportedFile> exported(const std::string& out, const Names& options,
                                       const std::string& setsFolder = {}) const {
        Names rest{"--out", folder_.sPath(out), "--json"};
        rest.insert(rest.end(), options.begin(), options.end());
        if (!setsFolder.empty())
            rest.insert(rest.begin(), folder_.sPath(setsFolder));
        const auto answer = kivifcRun(arguments("export", GetParam(), setsFolder.empty(), rest));
        EXPECT_EQ(answer.status, 0);
        EXPECT_EQ(answer.err, "");
        std::vector<ExportedFile> files;
        for (const auto& file : json::parse(answer.out))
            files.push_back({file["set"], file["path"], sFileText(file["path"])});
        const std::filesystem::directory_iterator begin(folder_.sPath(out));
        EXPECT_EQ(static_cast<std::size_t>(std::distance(begin, {})), files.size());
        return files;
    }

    const defs::SetDef& set(const std::string& name) const {
        return *schema(GetParam()).getStandardDefinitions()->getXmlSetFromName(name);
    }

    const TemporaryFolder folder_;
};

/// The records without their lines.
Records withoutLines(Records records) {
    for (auto& record : records)
        record.line = 0;
    return records;
}

/// The records that a set's check makes.
Records checked(const defs::SetDef& set, const SchemaPset& schema) {
    defs::XmlSetErrors errors;
    EXPECT_TRUE(set.checkForErrors(schema, errors));
    return withoutLines(errors.getRecords());
}

/// One for each member whose name aliases are written: reading does not know the tag.
Records aliasRecords(const defs::SetDef& set) {
    Records records;
    for (const auto* const member : membersOf(set)) {
        if (!member->getNameAliases().getEntries().empty())
            records.push_back(error("nameAliases", "Unknown xml node", 0));
    }
    return records;
}

TEST_P(KivifcExportRealDataTest, EverySetIsWrittenReadsBackAndChecksTheSame) {
    const auto& own = schema(GetParam());
    const auto files = exported("out", {});
    EXPECT_EQ(files.size(), GetParam() == "IFC4" ? 500U : 159U);
    EXPECT_EQ(files.size(), sets(GetParam()).size());
    for (const auto& file : files) {
        SCOPED_TRACE(file.set);
        EXPECT_EQ(file.path, folder_.sPath("out/" + file.set + ".xml"));
        const XmlFromText document(file.text);
        const auto& original = set(file.set);
        EXPECT_TRUE(document.root().boNodeNameIs(original.pXmlElementName()));
        defs::XmlSetErrors errors;
        const auto read = pSetFromElement(document.root(), errors);
        EXPECT_EQ(sSetText(*read, After::Reading), sSetText(original, After::ReadingBack));
        EXPECT_EQ(withoutLines(errors.getRecords()), aliasRecords(original));
        EXPECT_EQ(checked(*read, own), checked(original, own));
    }
}

TEST_P(KivifcExportRealDataTest, SecondExportReplacesItsOwnFilesByTheSame) {
    const auto first = exported("out", {});
    const auto second = exported("out", {});
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t index = 0; index < first.size(); ++index)
        EXPECT_EQ(first[index].text, second[index].text);
}

/// What an export of this export has to be. Reading does not know "nameAliases", does not look for the data
/// type beside a reference, and takes the item type that was written at the end of a list for one more value,
/// after which the item type is then written again.
class SecondGeneration {
public:
    explicit SecondGeneration(const std::string& text) {
        for (const auto& line : linesOf(text))
            vTake(line);
    }

    const std::string& sText() const { return text_; }

private:
    void vTake(const std::string& line) {
        const auto tag = line.substr(std::min(line.find_first_not_of(' '), line.size()));
        if (tag == "<nameAliases>" || isInAliases_) {
            isInAliases_ = tag != "</nameAliases>";
            return;
        }
        if (tag == "<ListValue>")
            listValue_.clear();
        listValue_ += line + '\n';
        if (tag == "</ListValue>")
            lastValue_ = listValue_;
        if (tag == "</TypePropertyListValue>" && lastValue_.find("type=\"\"") == std::string::npos)
            text_ += lastValue_;
        text_ += isBesideReference_ ? line.substr(0, line.find("type=\"")) + "type=\"\"/>" : line;
        text_ += '\n';
        isBesideReference_ = tag == "<TypePropertyReferenceValue/>";
    }

    std::string text_;
    std::string listValue_;
    std::string lastValue_;
    bool isInAliases_ = false;
    bool isBesideReference_ = false;
};

TEST_P(KivifcExportRealDataTest, ExportOfAnExportIsTheSameButForWhatReadingDoesNotSee) {
    const auto first = exported("first", {});
    const auto second = exported("second", {}, "first");
    ASSERT_EQ(first.size(), second.size());
    std::size_t changed = 0;
    for (std::size_t index = 0; index < first.size(); ++index) {
        SCOPED_TRACE(first[index].set);
        const SecondGeneration expected(first[index].sBody());
        EXPECT_EQ(second[index].sBody(), expected.sText());
        if (expected.sText() == first[index].sBody()) {
            EXPECT_EQ(second[index].text, first[index].text);
        } else {
            ++changed;
        }
    }
    EXPECT_LT(changed, first.size());
}

TEST_P(KivifcExportRealDataTest, GuidsAreGeneratedForMembersThatHaveNone) {
    const auto plain = exported("plain", {});
    const auto files = exported("out", {"--generate-guids"});
    ASSERT_EQ(files.size(), plain.size());
    std::set<std::string> generated;
    std::size_t missing = 0;
    for (const auto& file : files) {
        SCOPED_TRACE(file.set);
        const auto read = pSetFromText(file.text);
        const auto members = membersOf(*read);
        const auto originals = membersOf(set(file.set));
        ASSERT_EQ(members.size(), originals.size());
        for (std::size_t index = 0; index < members.size(); ++index) {
            const auto& guid = members[index]->getIfdGuid();
            EXPECT_FALSE(guid.isNull());
            if (!originals[index]->getIfdGuid().isNull()) {
                EXPECT_EQ(guid, originals[index]->getIfdGuid());
                continue;
            }
            ++missing;
            generated.insert(guid.toString(false));
        }
    }
    EXPECT_GT(missing, 0U);
    EXPECT_EQ(generated.size(), missing) << "each of them is new";
}

std::string sWithoutBaseTypes(std::string text) {
    const std::string_view start = " basetype=\"";
    for (auto pos = text.find(start); pos != std::string::npos; pos = text.find(start, pos))
        text.erase(pos, text.find('"', pos + start.size()) + 1 - pos);
    return text;
}

/// The data type that a defined type of this name is made of; empty when there is no such type.
std::string sBaseType(const SchemaPset& schema, const std::string& name) {
    const auto* const type = express::Type::pFrom(schema.pObjectFromName(name));
    return type && type->pDataType() ? std::string(type->pDataType()->getName()) : std::string();
}

std::string sAttribute(const kiv::xml::const_Element& element, std::string_view name) {
    const auto attribute = element.AttributeNodeGet(name);
    return attribute ? attribute->getValue() : std::string();
}

TEST_P(KivifcExportRealDataTest, BaseTypesAreThoseOfTheSchemaAndTheOnlyDifference) {
    const auto plain = exported("plain", {});
    const auto files = exported("out", {"--basetype"});
    ASSERT_EQ(files.size(), plain.size());
    std::set<std::string> baseTypes;
    for (std::size_t index = 0; index < files.size(); ++index) {
        SCOPED_TRACE(files[index].set);
        EXPECT_EQ(sWithoutBaseTypes(files[index].sBody()), plain[index].sBody());
        const XmlFromText document(files[index].text);
        vForEachElement(document.root(), [&](const auto& parent) {
            // The other places of a data type are the columns of tables and the item type of a list, which
            // have none.
            const auto tag = parent.tagName();
            if (tag != "TypePropertySingleValue" && tag != "TypePropertyBoundedValue" &&
                tag != "PropertyType")
                return;
            for (auto child = parent.FirstElementChildGet(); child; child = child->NextElementSiblingGet()) {
                if (!child->boNodeNameIs("DataType"))
                    continue;
                const auto expected = sBaseType(schema(GetParam()), sAttribute(*child, "type"));
                EXPECT_EQ(sAttribute(*child, "basetype"), expected) << sAttribute(*child, "type");
                baseTypes.insert(expected);
            }
        });
    }
    const auto* const ofLabel = GetParam() == "IFC4" ? "STRING(255)" : "STRING";
    for (const auto* const baseType : {"REAL", "BOOLEAN", ofLabel})
        EXPECT_TRUE(baseTypes.contains(baseType)) << baseType;
}

INSTANTIATE_TEST_SUITE_P(All, KivifcExportRealDataTest, testing::ValuesIn(Releases),
                         [](const auto& row) { return row.param; });

} // namespace

} // namespace kiv::test
