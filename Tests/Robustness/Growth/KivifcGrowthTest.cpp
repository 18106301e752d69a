// What kivifc writes about hostile input: files of an export, and pictures of entities with long names.

#include "Robustness/Growth/CountedFile.h"
#include "Robustness/Growth/GrowthRow.h"
#include "Support/AssertCollector.h"
#include "Support/Growth.h"
#include "Support/SchemaFromText.h"
#include "Support/TemporaryFolder.h"
#include "kivifc/Documents/ExportFile.h"
#include "kivifc/Json/Json.h"
#include "kivifc/Pictures/EntityPicture.h"
#include "kivifc/Program/Output.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::schema;

/// Exports a set for each line of the text, its name, and then exports them all again.
void vNamesExport(const std::string& names) {
    const TemporaryFolder folder;
    for (int time = 0; time != 2; ++time) {
        kivifc::ExportFiles files(false);
        std::istringstream lines(names);
        for (std::string name; std::getline(lines, name);) {
            const auto path = std::filesystem::path(folder.sPath(kivifc::sFileName(name)));
            ASSERT_EQ(files.sWrite(path, "<set/>\n"), "");
        }
    }
}

/// A name of three characters that are not ASCII, another one for each number below 64 to the third.
std::string sForeignName(std::size_t number) {
    std::string name;
    for (int place = 0; place != 3; ++place, number /= 64)
        name += {'\xE4', '\xB8', static_cast<char>(0x80 + number % 64)};
    return name;
}

TEST(KivifcGrowthTest, FilesThatAreExportedAgain) {
    constexpr std::size_t Many = 1'000;
    vGrowthExpect({{"names that differ beyond ASCII", Many,
                    [](std::size_t count) {
                        return sJoined(count, [](std::size_t i) { return sForeignName(i) + "\n"; });
                    }},
                   {"names", Many,
                    [](std::size_t count) {
                        return sJoined(count, [](std::size_t i) { return "P" + std::to_string(i) + "\n"; });
                    }}},
                  vNamesExport);
}

/// Writes the first entity of the statements by `write`.
void vEntityWrite(const std::string& statements,
                  const std::function<void(const Entity&, kivifc::Output&)>& write) {
    const AssertCollector reports;
    const auto schema = schemaFromText(statements);
    const auto* const entity = Entity::pFrom(schema->getObjects().front());
    ASSERT_NE(entity, nullptr);
    const auto file = countedFile();
    ASSERT_NE(file, nullptr);
    kivifc::Output output(file.get());
    write(*entity, output);
    EXPECT_EQ(output.sFinish(), "");
}

/// An entity whose name is as long as its declaration.
std::string sLongEntity(std::size_t count, const std::string& lines) {
    return "ENTITY " + std::string(10 * count, 'x') + ";\n" + lines + "END_ENTITY;\n";
}

constexpr std::size_t ManyLines = 5'000;

const std::vector<GrowthRow> LongEntities{
    {"attributes", ManyLines,
     [](std::size_t count) { return sLongEntity(count, sTimes("A : REAL;\n", count)); }},
    // Each is written with the entity that declares the attribute it refers to.
    {"inverse attributes", ManyLines,
     [](std::size_t count) {
         const std::string name(10 * count, 'x');
         return sLongEntity(count, "A : X;\n INVERSE\n" + sTimes("  I : SET OF E FOR A;\n", count)) +
                "ENTITY E;\n SUBTYPE OF (" + name + ");\nEND_ENTITY;\n";
     }},
    {"rules", ManyLines,
     [](std::size_t count) { return sLongEntity(count, " WHERE\n" + sTimes("  WR1 : A > 1;\n", count)); }}};

TEST(KivifcGrowthTest, EntitiesWithLongNamesAndManyAttributes) {
    vGrowthForOutputExpect(LongEntities, [](const std::string& statements) {
        vEntityWrite(statements, [](const Entity& entity, kivifc::Output& output) {
            kivifc::vEntityPictureWrite(entity, output);
        });
    });
}

TEST(KivifcGrowthTest, EntitiesWithLongNamesAndManyAttributesAsJson) {
    vGrowthForOutputExpect(LongEntities, [](const std::string& statements) {
        vEntityWrite(statements, [](const Entity& entity, kivifc::Output& output) {
            kivifc::vJsonWrite(output, [&](kivifc::JsonWriter& writer) {
                writer.vObjectBegin();
                kivifc::vEntityPictureWrite(entity, writer);
                writer.vObjectEnd();
            });
        });
    });
}

} // namespace

} // namespace kiv::test
