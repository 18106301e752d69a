#include "Support/Allocations.h"
#include "Support/AssertCollector.h"
#include "Support/FailingStream.h"
#include "Support/SampleStore.h"
#include "Support/Sanitized.h"
#include "Support/StoreAnswers.h"
#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/SchemaLoader.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <ios>
#include <limits>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using ifc::SchemaLoader;
using ifc::def::SchemaPset;

/// A size of the blocks in which a text comes, and the distance of the places at which it breaks off: small
/// blocks, of which some end amid lines, take long.
struct Blocks {
    std::size_t size;
    std::size_t step;
};
constexpr std::size_t SlowFactor = isSanitized ? 5 : 1;
constexpr Blocks AllBlocks[] = {
    {std::numeric_limits<std::size_t>::max(), 1}, {61, 7 * SlowFactor}, {1, 101 * SlowFactor}};

/// What can be switched on.
const std::vector<std::ios::iostate> Masks{std::ios::badbit, std::ios::failbit, std::ios::eofbit,
                                           std::ios::badbit | std::ios::failbit | std::ios::eofbit};

/// What came out of the call, which must hold nothing afterwards.
std::string sOutcome(const std::function<void()>& call) {
    const auto held = allocationsHeld();
    std::string outcome = "nothing";
    try {
        call();
    } catch (const kiv::exception& error) {
        outcome = std::string("exception ") + error.what();
    } catch (const DeviceIsGone&) {
        outcome = "device";
    } catch (const std::ios::failure&) {
        outcome = "failure";
    }
    return allocationsHeld() == held ? outcome : "something is held";
}

void vDocumentRead(std::istream& stream, std::string& reason) {
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(stream, "", nullptr);
    reason = root ? "none" : file.pError()->reason;
}

TEST(FailingStreams, SchemaIsAnExceptionWithoutMessageAtEveryByte) {
    const auto text = sSampleText("Building.exp");
    for (const auto& blocks : AllBlocks) {
        for (std::size_t bytes = 0; bytes <= text.size() && !HasFailure(); bytes += blocks.step) {
            EXPECT_EQ(sOutcome([&] {
                          FailingStream stream(text, bytes, blocks.size);
                          SchemaPset::pStepStreamRead(stream);
                      }),
                      "exception ")
                << bytes;
        }
    }
}

/// A stream that is set to pass on what its buffer throws does so; one that is set to throw when it fails
/// may do that before the reader looks at its state.
TEST(FailingStreams, SchemaOfAStreamThatThrowsIsAnException) {
    const auto text = sSampleText("Building.exp");
    for (const auto mask : Masks) {
        const bool isPassedOn = (mask & std::ios::badbit) != 0;
        for (const auto& blocks : AllBlocks) {
            for (std::size_t bytes = 0; bytes <= text.size() && !HasFailure(); bytes += 13 * blocks.step) {
                const auto outcome = sOutcome([&] {
                    FailingStream stream(text, bytes, blocks.size);
                    stream.exceptions(mask);
                    SchemaPset::pStepStreamRead(stream);
                });
                const bool isRight =
                    isPassedOn ? outcome == "device" : outcome == "exception " || outcome == "failure";
                EXPECT_TRUE(isRight) << outcome << ", mask " << mask << ", after " << bytes;
            }
        }
    }
}

TEST(FailingStreams, StreamThatPassesOnWhatItsBufferThrowsIsBadAfterwards) {
    const auto text = sSampleText("Building.exp");
    for (std::size_t bytes = 0; bytes <= text.size() && !HasFailure(); bytes += 13) {
        FailingStream stream(text, bytes);
        stream.exceptions(std::ios::badbit);
        EXPECT_THROW(SchemaPset::pStepStreamRead(stream), DeviceIsGone);
        EXPECT_TRUE(stream.bad()) << bytes;
    }
}

/// Only a stream that passes on what its buffer throws can distinguish the lack of memory from a failing
/// device.
TEST(FailingStreams, LackOfMemoryInABufferIsPassedOnByStreamsThatDoSo) {
    NoMemoryStream stream;
    EXPECT_THROW(SchemaPset::pStepStreamRead(stream), kiv::exception);
    stream.clear();
    stream.exceptions(std::ios::badbit);
    EXPECT_THROW(SchemaPset::pStepStreamRead(stream), std::bad_alloc);
}

/// Answers of a store and of a loader that has made one schema, before and after another one could not be
/// read.
TEST(FailingStreams, LoaderRegistryAndCollectionsStayAsTheyWere) {
    const SampleStore store;
    const auto before = sAnswers(store.schema());
    const auto text = sSampleText("Building.exp");
    SchemaLoader::vCurrFree();
    auto& loader = SchemaLoader::curr();
    std::size_t bytes = 0;
    loader.newSchemaCallback = [&](const std::string& name) {
        FailingStream failing(text, bytes);
        std::istringstream whole(text);
        return SchemaPset::pStepStreamRead(name == "failing" ? static_cast<std::istream&>(failing) : whole)
            .release();
    };
    const auto* const made = loader.pSchemaFromName("made");
    const auto answersOfMade = sAnswers(*made);
    for (; bytes <= text.size() && !HasFailure(); bytes += 5) {
        EXPECT_THROW(loader.pSchemaFromName("failing"), kiv::exception) << bytes;
        EXPECT_EQ(loader.pSchemaFromName("made"), made);
    }
    EXPECT_EQ(sAnswers(*made), answersOfMade);
    EXPECT_EQ(sAnswers(store.schema()), before);
    EXPECT_EQ(sAnswers(*std::unique_ptr<SchemaPset>(loader.newSchemaCallback("whole"))), answersOfMade);
    SchemaLoader::vCurrFree();
}

TEST(FailingStreams, SetDocumentIsNoDocumentAtEveryByteAndNothingIsThrown) {
    auto masks = Masks;
    masks.push_back(std::ios::goodbit);
    for (const auto& path : sampleSetPaths()) {
        const auto text = sSampleText(path);
        std::string reason(100, ' ');
        for (const auto mask : masks) {
            for (const auto& blocks : AllBlocks) {
                for (std::size_t bytes = 0; bytes <= text.size() && !HasFailure(); bytes += blocks.step) {
                    EXPECT_EQ(sOutcome([&] {
                                  FailingStream stream(text, bytes, blocks.size);
                                  stream.exceptions(mask);
                                  vDocumentRead(stream, reason);
                              }),
                              "nothing");
                    EXPECT_EQ(reason, "the stream failed while it was read") << path << ' ' << bytes;
                }
            }
        }
    }
}

/// Each time the former configuration stays linked, and one report names the stream.
TEST(FailingStreams, ConfigurationIsAReportAtEveryByteAndChangesNoLink) {
    const auto text = sSampleText("Building.exp");
    const std::string_view config = SampleConfig;
    const auto readAll = [&](std::ios::iostate mask) {
        const auto schema = schemaPsetFromWholeText(text);
        std::istringstream whole{std::string(config)};
        schema->vXmlSchemaConfigInit(whole);
        const auto linked = sAnswers(*schema);
        const AssertCollector reports;
        std::size_t count = 0;
        for (std::size_t bytes = 0; bytes <= config.size(); ++bytes, ++count) {
            FailingStream stream(config, bytes);
            stream.exceptions(mask);
            schema->vXmlSchemaConfigInit(stream);
        }
        EXPECT_EQ(reports.getMessages(), std::vector<std::string>(count, "Illegal xml document"));
        EXPECT_EQ(sAnswers(*schema), linked);
    };
    readAll(std::ios::goodbit);
    for (const auto mask : Masks)
        EXPECT_EQ(sOutcome([&] { readAll(mask); }), "nothing");
}

} // namespace

} // namespace kiv::test
