/// Families of hostile input, and the law that holds for them: twice the size costs three times as much at most. It is
/// judged at the first size, the given one or one above it, whose double takes ten milliseconds to read, and where it seems
/// to fail at two larger sizes too; texts end at 64 MiB. Format/Ifc/Def/Growth.h has the reasons.
///
///     vGrowthExpect({{"entities", 100'000, [](std::size_t count) { return sEntities(count); }}}, vSchemaRead);
///
/// Under sanitizers, where times tell nothing, each is only read.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

struct GrowthRow {
    std::string name;
    /// Where measuring begins; the other size is twice as much.
    std::size_t size;
    std::function<std::string(std::size_t)> text;
};

/// Has each text read at both sizes; the row whose text costs too much is told.
void vGrowthExpect(const std::vector<GrowthRow>& rows, const std::function<void(const std::string&)>& read);

/// A piece of text for each number below `count`, one behind the other.
std::string sJoined(std::size_t count, const std::function<std::string(std::size_t)>& piece);

/// The text again and again.
std::string sTimes(std::string_view text, std::size_t times);

} // namespace kiv::test
