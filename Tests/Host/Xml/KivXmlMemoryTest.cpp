#include "Host/Xml/KivXmlLines.h"
#include "Support/Allocations.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace kiv::xml {
namespace {

enum class Outcome { Document, Error, NoMemory };

/// Adds up the memory that is held.
class HeldMemory final : public errorhandler::ParseInterface {
public:
    std::uint64_t held = 0;

    void vTake(Unit unit, std::uint64_t amount) override { held += unit == Unit::HeldBytes ? amount : 0; }
    void vMemoryGiveBack(std::uint64_t bytes) noexcept override { held -= bytes; }
    void vPieceBegin() override {}
    void vLook() override {}
};

/// What comes of reading when only that many allocations succeed, or when all but the one after them do.
Outcome getOutcome(const std::string& text, std::size_t allocations, test::Refusal refusal,
                   HeldMemory* meter) {
    std::istringstream stream(text);
    File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
    bool isRead = false;
    const auto read = [&] {
        isRead = file.parse(stream, "a name that needs memory of its own", meter).has_value();
    };
    if (!test::boRunWith(allocations, read, refusal))
        return Outcome::NoMemory;
    return isRead ? Outcome::Document : Outcome::Error;
}

/// Every allocation fails, with all that follow and alone; nothing but the lack of memory may come of it
/// until all succeed.
void vExpectNoMemoryUntil(const std::string& text, Outcome last, HeldMemory* meter = nullptr) {
    SCOPED_TRACE(text.substr(0, 60));
    std::size_t allocations = 0;
    while (getOutcome(text, allocations, test::Refusal::FromThenOn, meter) == Outcome::NoMemory) {
        EXPECT_EQ(getOutcome(text, allocations, test::Refusal::Once, meter), Outcome::NoMemory)
            << allocations;
        EXPECT_EQ(meter ? meter->held : 0, 0U) << allocations;
        ++allocations;
    }
    EXPECT_GT(allocations, 3U);
    EXPECT_EQ(getOutcome(text, allocations, test::Refusal::FromThenOn, meter), last);
}

TEST(KivXmlMemoryTest, LackOfItIsPassedOnFromEveryPlace) {
    std::string large = "<r><?a-target-of-some-length and its data?>";
    for (int i = 0; i != 2000; ++i)
        large += "<e a='1'>text<!-- comment --></e>\n";
    vExpectNoMemoryUntil(large + "</r>", Outcome::Document);
    vExpectNoMemoryUntil("<?xml version='1.0' encoding='an-encoding-with-a-long-name'?><a/>", Outcome::Error);
    vExpectNoMemoryUntil("<!DOCTYPE a [<!ENTITY e 'v'>]><a>&e;</a>", Outcome::Error);
    vExpectNoMemoryUntil("<a>", Outcome::Error);
}

/// With a meter, libexpat takes its memory where the meter hears of it; none of it stays taken.
TEST(KivXmlMemoryTest, LackOfItGivesAllBackToAMeter) {
    std::string names = "<r>";
    for (int i = 0; i != 200; ++i)
        names += "<e" + std::to_string(i) + " a" + std::to_string(i) + "='1'/>\n";
    HeldMemory meter;
    vExpectNoMemoryUntil("<a>", Outcome::Error, &meter);
    EXPECT_EQ(meter.held, 0U);
    vExpectNoMemoryUntil(names + "</r>", Outcome::Document, &meter);
    // What the document takes: an element, an attribute and their texts for each line.
    EXPECT_GT(meter.held, 200U * 2 * sizeof(void*));
}

TEST(KivXmlMemoryTest, LackOfItIsPassedOnFromNamesOutsideAscii) {
    const std::string name = "caf\xC3\xA9";
    Document document;
    Element root = document.getNode().ElementNodeAppend("r");
    std::size_t allocations = 0;
    while (!test::boRunWith(allocations, [&] { root.ElementNodeAppend(name); }))
        ++allocations;
    EXPECT_GT(allocations, 3U);
    // What failed has left no element.
    const auto child = const_Element(root).FirstElementChildGet();
    ASSERT_TRUE(child);
    EXPECT_EQ(child->tagNameView(), name);
    EXPECT_FALSE(child->NextElementSiblingGet());
}

TEST(KivXmlMemoryTest, LinesOfALongTextAreNotedWithoutCopyingThemForEachBlock) {
    const std::string block = std::string(63, 'x') + '\n';
    LineCounter lines;
    const std::size_t before = test::allocationCount();
    for (int i = 0; i != 1000; ++i)
        lines.vBlockAdd(block);
    EXPECT_LT(test::allocationCount() - before, 100U);
    EXPECT_EQ(lines.getLine(63999), 1000U);
}

TEST(KivXmlMemoryTest, TextsThatGrowInTurnsAreCopiedAFewTimesOnly) {
    Document document;
    Element root = document.getNode().ElementNodeAppend("r");
    Element first = root.ElementNodeAppend("a");
    Element second = root.ElementNodeAppend("b");
    const std::size_t before = test::allocatedSize();
    std::string digits;
    std::string letters;
    for (int i = 0; i != 10000; ++i) {
        first.boTextNodeAppend("0123456789");
        second.boTextNodeAppend("abcdefghij");
        digits += "0123456789";
        letters += "abcdefghij";
    }
    EXPECT_LT(test::allocatedSize() - before, std::size_t{4} << 20);
    EXPECT_TRUE(first.FirstChildGet()->getNodeValueView() == digits);
    EXPECT_TRUE(second.FirstChildGet()->getNodeValueView() == letters);
}

} // namespace
} // namespace kiv::xml
