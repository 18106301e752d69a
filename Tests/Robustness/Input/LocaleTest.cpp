// Hosts that have set a global locale get the same models, look-ups, reports, documents, configurations,
// GUIDs and languages, byte for byte.

#include "Format/Ifc/Def/Schema/SampleText.h"
#include "Robustness/Input/Samples.h"
#include "Support/AssertCollector.h"
#include "Support/ModelText.h"
#include "Support/SampleData.h"
#include "Support/SchemaPsetFromText.h"
#include "Support/SetFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kiv/Host/Id/KivId.h"
#include "kiv/Host/Locale/KivLocale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstddef>
#include <locale>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;

// ---- Locales

/// "1.234.567,5".
class Commas : public std::numpunct<char> {
public:
    Commas() : std::numpunct<char>(1) {}
    ~Commas() override = default;

protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "evet"; }
    std::string do_falsename() const override { return "hay\xFDr"; }
};

/// The capital of "i" has a dot, the small letter of "I" has none, as in ISO-8859-9; and some characters are
/// white space that are none elsewhere.
class Turkish : public std::ctype<char> {
public:
    Turkish() : std::ctype<char>(table(), false, 1) {}
    ~Turkish() override = default;

protected:
    char do_toupper(char byte) const override {
        return byte == 'i' ? '\xDD' : std::ctype<char>::do_toupper(byte);
    }
    const char* do_toupper(char* begin, const char* end) const override {
        for (; begin != end; ++begin)
            *begin = do_toupper(*begin);
        return end;
    }
    char do_tolower(char byte) const override {
        return byte == 'I' ? '\xFD' : std::ctype<char>::do_tolower(byte);
    }
    const char* do_tolower(char* begin, const char* end) const override {
        for (; begin != end; ++begin)
            *begin = do_tolower(*begin);
        return end;
    }

private:
    static const mask* table() {
        static const auto changed = [] {
            std::vector<mask> masks(classic_table(), classic_table() + table_size);
            for (const char byte : std::string_view("_;5T\xA0"))
                masks[static_cast<unsigned char>(byte)] = space;
            return masks;
        }();
        return changed.data();
    }
};

/// A locale for the whole process while it lives, for C++ and, when it has a name, for C.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : before_(std::locale::global(locale)) {}
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;
    ~GlobalLocale() {
        std::locale::global(before_);
        std::setlocale(LC_ALL, "C");
    }

private:
    std::locale before_;
};

std::locale ownLocale() {
    static const Commas commas;
    static const Turkish turkish;
    const std::locale withCommas(std::locale::classic(), const_cast<Commas*>(&commas));
    return {withCommas, const_cast<Turkish*>(&turkish)};
}

// ---- What is compared

/// Numbers of every kind, names with every i, and a report with places of four digits.
std::string sNumbersAndNames() {
    return "SCHEMA NUMBERS;\n"
           "TYPE IfcWidth = STRING(12345) FIXED;\nEND_TYPE;\n"
           "TYPE IfcBits = BINARY(1000000);\nEND_TYPE;\n"
           "TYPE IfcList = LIST [1000:1.000] OF LIST [1,000:25_5] OF REAL;\nEND_TYPE;\n"
           "ENTITY IfcTitle;\n  isIndividual : IfcWidth;\n  PIXI : LIST [1:2000] OF IfcBits;\n WHERE\n"
           "  WR1 : isIndividual = 1.5 + 1234567.25 + 1.5E+3 - 2.5e-3 + 1234567;\n"
           "  WR2 : [1,5] = [1,5];\n"
           "  WR3 : a = " +
           std::string(1500, '\n') + std::string(1500, ' ') +
           ");\nEND_ENTITY;\n"
           "END_SCHEMA;\n";
}

/// All that was read and written while a locale was set. The model is looked at later, as the text of it is
/// made with streams that a locale changes.
struct Outcome {
    std::vector<std::unique_ptr<SchemaPset>> schemas;
    std::vector<std::string> texts;
};

void vSchemasRead(Outcome& outcome) {
    const AssertCollector reports;
    for (const auto& text : {std::string(SampleText), sNumbersAndNames(), sSampleText("Building.exp"),
                             sSampleText("Broken.exp")})
        outcome.schemas.push_back(schemaPsetFromWholeText(text));
    for (const auto& message : reports.getMessages())
        outcome.texts.push_back(message);
}

void vNamesAsk(Outcome& outcome) {
    const auto& numbers = *outcome.schemas[1];
    for (const auto* name : {"IFCTITLE", "ifctitle", "IfcTitle"})
        outcome.texts.emplace_back(numbers.pObjectFromName(name) ? "found" : "not found");
    for (const auto* name : {"ISINDIVIDUAL", "isindividual", "pixi"})
        outcome.texts.emplace_back(numbers.pAttributeGet("ifcTITLE", name) ? "found" : "not found");
    outcome.texts.push_back(ifc::findPropertyTypeName("ifctitle.isIndividual", numbers).value_or("none"));
}

void vSetsExport(Outcome& outcome) {
    ifc::def::xml::XmlSetsErrors report;
    SchemaPropertySetDefinitions sets;
    const auto& schema = *outcome.schemas[2];
    for (const auto& path : samplePaths()) {
        kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
        std::istringstream stream(sFileText(path));
        const auto root = file.parse(stream, path.filename().string(), nullptr);
        if (!root) {
            outcome.texts.push_back(file.pError()->reason);
            continue;
        }
        ifc::def::xml::XmlSetErrors errors;
        auto set = pSetFromElement(*root, errors);
        XmlTarget target("Sets");
        set->exportDef(target.root(), nullptr);
        outcome.texts.push_back(target.sText());
        sets.xmlSetAdd(schema, std::move(set), errors);
        report.sets.insert(std::move(errors));
    }
    for (const auto* set : sets.getXmlSets())
        outcome.texts.emplace_back(sets.getXmlSetFromName(set->getName()) ? set->getName() : "not found");
    outcome.texts.push_back(report.getFormattedErrors());
}

/// How an attribute is written, in digits.
template <class Record>
std::string sRecord(const Record& record) {
    return std::to_string(static_cast<int>(record.getRepresentation()));
}

/// The records, and which attributes they were linked to; and a configuration of another schema, which is
/// reported.
void vConfigRead(Outcome& outcome) {
    const AssertCollector reports;
    auto& building = *outcome.schemas[2];
    std::istringstream other("<cnf:configuration id='building\xFD' xmlns:cnf='c'/>");
    building.vXmlSchemaConfigInit(other);
    std::istringstream stream(SampleConfig);
    building.vXmlSchemaConfigInit(stream);
    const auto& config = *building.pXmlSchemaConfig();
    outcome.texts.insert(outcome.texts.end(),
                         {config.getUosElement().getName(), config.getNamespace().getPrefix(),
                          config.getNamespace().getAlias(), config.getSchema().getTargetNamespace()});
    outcome.texts.push_back(std::to_string(static_cast<int>(config.getOption().getConcreteAttribute())));
    outcome.texts.push_back(std::to_string(static_cast<int>(config.getOption().getEntityAttribute())));
    for (const auto& record : config.getAttributes())
        outcome.texts.push_back(sRecord(record) + (record.isTagless() ? " tagless" : "") +
                                (record.isKeep() ? " keep" : ""));
    for (const auto& record : config.getAttributesInverse())
        outcome.texts.push_back(sRecord(record));
    for (const schema::Attribute& attribute : building.getAttributesByName())
        outcome.texts.push_back(attribute.pXmlAttribute() ? sRecord(*attribute.pXmlAttribute()) : "none");
    for (const auto& message : reports.getMessages())
        outcome.texts.push_back(message);
}

/// Each form, among them a GlobalId whose characters are white space elsewhere or letters with other
/// capitals, and texts that would be GUIDs if white space did not count.
void vGuidsRead(Outcome& outcome) {
    for (const auto* text :
         {"e098e980d1bc11e1800000215ad4efdf", "E098E980D1BC11E1800000215AD4EFDF",
          "{e098e980-d1bc-11e1-8000-00215ad4efdf}", "3IiTt_5$aBcDeFgHiJkLmN", "3IiTt_5$aBcDeFgHiJkLm\xA0",
          "\xA0"
          "e098e980d1bc11e1800000215ad4efdf",
          "4IiTt_5$aBcDeFgHiJkLmN"}) {
        kiv::Guid guid;
        outcome.texts.emplace_back(guid.boSet(text) ? "read" : "not read");
        outcome.texts.push_back(guid.toString(false) + guid.toString(true));
    }
}

void vLanguagesRead(Outcome& outcome) {
    using kiv::locale::Locale;
    for (const auto* text : {"it-IT", "IT_it", "tr-TR", "es-419", "zh_Hans_CN", "5_5", "i", "en-\xFDI"}) {
        const auto locale = Locale::get(text, nullptr);
        outcome.texts.insert(outcome.texts.end(),
                             {locale.getLanguage(), locale.getCountry(), locale.getCombined()});
        outcome.texts.emplace_back(locale == Locale::get("IT", "IT") ? "Italian" : "other");
    }
}

Outcome outcomeUnder(const std::locale& locale) {
    const GlobalLocale global(locale);
    Outcome outcome;
    vSchemasRead(outcome);
    vNamesAsk(outcome);
    vSetsExport(outcome);
    vConfigRead(outcome);
    vGuidsRead(outcome);
    vLanguagesRead(outcome);
    return outcome;
}

void vExpectSameUnder(const std::locale& locale) {
    const auto expected = outcomeUnder(std::locale::classic());
    const auto actual = outcomeUnder(locale);
    EXPECT_EQ(actual.texts, expected.texts);
    ASSERT_EQ(actual.schemas.size(), expected.schemas.size());
    for (std::size_t i = 0; i != expected.schemas.size(); ++i)
        EXPECT_EQ(sModelText(*actual.schemas[i]), sModelText(*expected.schemas[i]));
}

/// The first of these that is installed; without one the test is skipped.
class InstalledLocaleTest : public ::testing::TestWithParam<std::vector<std::string>> {
protected:
    void SetUp() override {
        for (const auto& name : GetParam()) {
            try {
                locale_ = std::locale(name);
                return;
            } catch (const std::runtime_error&) { // not installed
            }
        }
        GTEST_SKIP() << "left out: the locale " << GetParam().front() << " is not installed";
    }

    std::locale locale_;
};

INSTANTIATE_TEST_SUITE_P(Locales, InstalledLocaleTest,
                         ::testing::Values(std::vector<std::string>{"de_DE.UTF-8", "de_DE.utf8", "de_DE"},
                                           std::vector<std::string>{"tr_TR.UTF-8", "tr_TR.utf8", "tr_TR"},
                                           std::vector<std::string>{"C.UTF-8", "C.utf8"}),
                         [](const auto& names) {
                             return names.param.front().substr(0, names.param.front() == "C.UTF-8" ? 1 : 2);
                         });

TEST_P(InstalledLocaleTest, ChangesNothing) {
    vExpectSameUnder(locale_);
}

TEST(LocaleTest, OwnRulesForNumbersAndLettersChangeNothing) {
    vExpectSameUnder(ownLocale());
}

TEST(LocaleTest, TheLocaleOfTheTestIsOneThatWouldChangeMuch) {
    const GlobalLocale global(ownLocale());
    std::ostringstream out;
    out << 1234567 << ' ' << 1.5 << ' ' << std::toupper('i', std::locale());
    EXPECT_EQ(out.str(), "1.234.567 1,5 \xDD");
    std::istringstream in("1.000 25_5");
    int first = 0;
    int second = 0;
    in >> first >> second;
    EXPECT_EQ(first, 1000);
    EXPECT_EQ(second, 25) << "\"_\" is white space";
}

TEST(LocaleTest, GuidsAndLanguagesAreReadAsInTheClassicLocale) {
    const GlobalLocale global(ownLocale());
    kiv::Guid guid;
    ASSERT_TRUE(guid.boSet("{E098E980-D1BC-11E1-8000-00215AD4EFDF}"));
    EXPECT_EQ(guid.toString(false), "e098e980d1bc11e1800000215ad4efdf");
    EXPECT_FALSE(guid.boSet("\xA0"
                            "e098e980d1bc11e1800000215ad4efdf"));
    const auto italian = kiv::locale::Locale::get("it-IT", nullptr);
    EXPECT_STREQ(italian.getLanguage(), "it");
    EXPECT_STREQ(italian.getCountry(), "IT");
    EXPECT_EQ(italian, kiv::locale::Locale::get("IT-it", nullptr));
}

TEST(LocaleTest, NumbersAreReadAsInTheClassicLocale) {
    const GlobalLocale global(ownLocale());
    const AssertCollector reports;
    const auto schema = schemaPsetFromWholeText(sNumbersAndNames());
    const auto& list = *schema::DataTypeListInterface::pFrom(
        schema::Type::pFrom(schema->pObjectFromName("IfcList"))->pDataType());
    EXPECT_EQ(list.getLowerBound().value, 1000U);
    EXPECT_EQ(list.getUpperBound().value, 1U) << "\"1.000\": a point ends the number";
    const auto& width = dynamic_cast<const schema::DataTypeString&>(
        *schema::Type::pFrom(schema->pObjectFromName("IfcWidth"))->pDataType());
    EXPECT_EQ(width.getWidth(), 12345U);
    ASSERT_EQ(reports.getMessages().size(), 1U);
    // The rules are the first three lines of the clause; the bracket comes after 1500 blanks, 1500 lines
    // further down.
    EXPECT_NE(reports.getMessages()[0].find("Unexpected token at 1503:1501"), std::string::npos)
        << reports.getMessages()[0].substr(0, 100);
}

} // namespace

} // namespace kiv::test
