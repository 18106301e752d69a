// How accurate the memory of a budget is in the readings of the kit, which hold more than the library: the
// text of the file, the places of what is in it, and the reports.

#include "Support/Allocations.h"
#include "Support/BudgetAccuracy.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace kiv::test {

namespace {

using kit::ReadFailure;
using kit::ReadOptions;

/// Reads something within a budget.
using Reader = std::function<std::optional<ReadFailure>(const ReadOptions&)>;

using Row = BudgetRow<Reader>;

/// Whether that much memory is enough.
bool boEnough(const Reader& read, std::uint64_t memory) {
    ReadOptions options;
    options.budget.maxMemory = memory;
    const auto failure = read(options);
    if (failure) {
        EXPECT_EQ(failure->limit, ifc::def::BudgetLimit::Memory) << failure->reason;
    }
    return !failure;
}

Reader schemaReader(const std::string& statements) {
    return [text = "SCHEMA S;\n" + statements + "\nEND_SCHEMA;\n"](const ReadOptions& options) {
        return kit::schemaTextRead(text, "s.exp", options).failure;
    };
}

Reader documentReader(const std::string& text) {
    return [text](const ReadOptions& options) { return kit::setTextRead(text, "s.xml", options).failure; };
}

std::string sSet(const std::string& children) {
    return "<PropertySetDef>" + children + "</PropertySetDef>";
}

/// ASCII letters as two bytes each; 0xFF stands for a letter that takes three bytes in UTF-8.
std::string sUtf16(std::string_view text) {
    std::string bytes("\xFE\xFF");
    for (const char letter : text)
        bytes += letter == '\xFF' ? std::string("\x4E\x2D") : std::string(1, '\0') + letter;
    return bytes;
}

std::shared_ptr<std::FILE> fileOf(const std::string& text) {
    std::shared_ptr<std::FILE> file(std::tmpfile(), &std::fclose);
    std::fwrite(text.data(), 1, text.size(), file.get());
    std::fflush(file.get());
    return file;
}

const Row Rows[] = {
    {"schema",
     [] { return schemaReader(sRepeated("ENTITY IfcEntity#;\n  Name : STRING;\nEND_ENTITY;\n", 3000)); }},
    {"schema of undefined names",
     [] { return schemaReader("ENTITY E;\n" + sRepeated("A# : SET OF B#;\n", 20'000) + "END_ENTITY;\n"); }},
    {"refused rule of many types",
     [] {
         return schemaReader("TYPE T = REAL;\nWHERE\nR : SELF > 0" + sRepeated(" + #", 20'000) +
                             " < ;\nEND_TYPE;\n" + sRepeated("TYPE U# = T;\nEND_TYPE;\n", 5'000));
     }},
    {"document", [] { return documentReader(sSet(sRepeated("<b c=\"#\">text</b>\n", 20'000))); }},
    {"document of attributes",
     [] { return documentReader(sSet(sRepeated("<b a='' b='' c='' d='' e='' f='#'/>", 20'000))); }},
    {"values that are written in another way",
     [] {
         return documentReader(sSet(sRepeated("<b c='&lt;# and something more'>&gt;# and more</b>", 20'000)));
     }},
    {"comments that ignore findings",
     [] { return documentReader(sSet(sRepeated("<!-- kivifc: ignore T001, N001, S00# --><b/>", 20'000))); }},
    {"long text", [] { return documentReader(sSet("<a>" + std::string(900'000, 'x') + "&amp;</a>")); }},
    {"document in UTF-16", [] { return documentReader(sUtf16(sSet(sRepeated("<b c='#'/>", 20'000)))); }},
    {"document in UTF-16 of letters that take more bytes in UTF-8",
     [] { return documentReader(sUtf16(sSet("<a>" + std::string(400'000, '\xFF') + "</a>"))); }},
    {"document in Latin-1",
     [] {
         return documentReader("<?xml version='1.0' encoding='ISO-8859-1'?>" +
                               sSet("<a>" + std::string(800'000, '\xE4') + "</a>"));
     }},
    {"document of a file",
     [] {
         return [file = fileOf(sSet("<Definition>" + std::string(900'000, 'x') + "</Definition>"))](
                    const ReadOptions& options) {
             std::rewind(file.get());
             return kit::setStreamRead(file.get(), "s.xml", options).failure;
         };
     }},
    {"document of a stream",
     [] {
         return [stream = std::make_shared<std::istringstream>(
                     sSet("<Definition>" + std::string(900'000, 'x') + "</Definition>"))](
                    const ReadOptions& options) {
             stream->clear();
             stream->seekg(0);
             return kit::setStreamRead(*stream, "s.xml", options).failure;
         };
     }},
};

class KitBudgetMemory : public testing::TestWithParam<Row> {};

TEST_P(KitBudgetMemory, IsAccurateToATenth) {
    const auto read = GetParam().make();
    // What is made once in a process is there then.
    ASSERT_FALSE(read({}));
    const auto before = bytesHeld();
    vPeakBegin();
    ASSERT_FALSE(read({}));
    const auto real = bytesHeldAtPeak() - before;
    if (real == 0)
        GTEST_SKIP() << "the C library does not say how large allocations are";
    const auto least = static_cast<double>(leastMemory(
        [&read](std::uint64_t memory) { return boEnough(read, memory); }, static_cast<std::uint64_t>(real)));
    EXPECT_NEAR(least / static_cast<double>(real), 1.0, 0.1);
}

INSTANTIATE_TEST_SUITE_P(Inputs, KitBudgetMemory, testing::ValuesIn(Rows));

} // namespace

} // namespace kiv::test
