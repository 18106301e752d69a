// Samples and real files that break off anywhere or are damaged anyhow: each is read as a schema, as sets and
// as a configuration, and what was read answers.

#include "RealData/RealData.h"
#include "Robustness/Input/Mutation.h"
#include "Robustness/Input/Reading.h"
#include "Robustness/Input/Samples.h"
#include "Support/SampleData.h"
#include "Support/Sanitized.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

/// Fewer where everything takes longer.
constexpr std::size_t fewer(std::size_t count) {
    return isSanitized ? count / 10 : count;
}

// ---- What ships with us

class DamagedSampleTest : public ::testing::TestWithParam<fs::path> {
protected:
    std::string text_ = sFileText(GetParam());
    Reading reading_{sSampleText("Building.exp")};
};

INSTANTIATE_TEST_SUITE_P(Samples, DamagedSampleTest, ::testing::ValuesIn(samplePaths()),
                         [](const auto& sample) { return sTestName(sample.param); });

TEST_P(DamagedSampleTest, EveryPrefixIsReadOrRefused) {
    constexpr std::size_t WholeEach = 16;
    for (std::size_t size = 0; size <= text_.size(); ++size)
        ASSERT_EQ(reading_.sFault(text_.substr(0, size), size % WholeEach == 0), "") << size << " bytes";
}

TEST_P(DamagedSampleTest, EveryRestIsReadOrRefused) {
    // What is before a statement, and an element, matters little, so that not every byte is a place to
    // begin at.
    constexpr std::size_t Step = 7;
    for (std::size_t begin = 1; begin < text_.size(); begin += Step)
        ASSERT_EQ(reading_.sFault("SCHEMA REST;\n" + text_.substr(begin), false), "") << "from " << begin;
}

TEST_P(DamagedSampleTest, ChangedTextIsReadOrRefused) {
    for (const auto seed : seeds(fewer(1000)))
        ASSERT_EQ(reading_.sFault(sMutated(text_, seed), true), "") << sReplay(seed);
}

TEST_P(DamagedSampleTest, TextWithAFlippedBitIsReadOrRefused) {
    // A bit of each byte, another one for each.
    const std::size_t step = isSanitized ? 8 : 1;
    for (std::size_t at = 0; at < text_.size(); at += step) {
        auto text = text_;
        text[at] = static_cast<char>(static_cast<unsigned char>(text[at]) ^ (1U << (at * 5 % 8)));
        ASSERT_EQ(reading_.sFault(text, false), "") << "byte " << at;
    }
}

// ---- What is in use

class DamagedRealDataTest : public RealDataTest {
protected:
    static std::vector<fs::path> allSetPaths() {
        std::vector<fs::path> paths;
        for (const auto* folder : {"IFC2X3", "IFC4", "IFC4_QTO"})
            for (const auto& file : setPaths(folder))
                paths.push_back(file);
        return paths;
    }
};

TEST_F(DamagedRealDataTest, SchemasThatBreakOffAreReadOrRefused) {
    const auto count = fewer(2000);
    for (const auto& file : schemaPaths()) {
        const auto text = sText(file);
        const Reading reading(text);
        const auto seed = seeds(1).front();
        for (const auto place : placesIn(text.size(), count, seed))
            ASSERT_EQ(reading.sSchemaFault(text.substr(0, place), place % 16 == 0), "")
                << file << ", " << place << " bytes";
    }
}

TEST_F(DamagedRealDataTest, ChangedSchemasAreReadOrRefused) {
    for (const auto& file : schemaPaths()) {
        const auto text = sText(file);
        const Reading reading(text);
        for (const auto seed : seeds(fewer(500)))
            ASSERT_EQ(reading.sSchemaFault(sMutated(text, seed), seed % 16 == 0), "")
                << file << ", " << sReplay(seed);
    }
}

TEST_F(DamagedRealDataTest, SetsThatBreakOffOrAreChangedAreReadOrRefused) {
    const Reading reading(sText(path("schema/IFC4_ADD2.exp")));
    const auto all = allSetPaths();
    const std::size_t step = isSanitized ? 10 : 1;
    for (std::size_t i = 0; i < all.size(); i += step) {
        const auto text = sText(all[i]);
        for (const auto seed : seeds(4))
            ASSERT_EQ(reading.sSetFault(sMutated(text, seed)), "") << all[i] << ", " << sReplay(seed);
        for (const auto place : placesIn(text.size(), 2, seeds(1).front()))
            ASSERT_EQ(reading.sSetFault(text.substr(0, place)), "") << all[i] << ", " << place << " bytes";
    }
}

TEST_F(DamagedRealDataTest, ConfigurationsThatBreakOffOrAreChangedAreReadOrRefused) {
    Reading reading(sText(path("schema/IFC4_ADD2.exp")));
    const auto text = sText(path("config/IFC4_ADD1_config.xml"));
    for (const auto seed : seeds(fewer(500)))
        ASSERT_EQ(reading.sConfigFault(sMutated(text, seed)), "") << sReplay(seed);
    for (const auto place : placesIn(text.size(), fewer(500), seeds(1).front()))
        ASSERT_EQ(reading.sConfigFault(text.substr(0, place)), "") << place << " bytes";
}

} // namespace

} // namespace kiv::test
