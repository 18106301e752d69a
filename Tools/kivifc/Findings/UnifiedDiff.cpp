#include "kivifc/Findings/UnifiedDiff.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <vector>

namespace kiv::kivifc {

namespace {

constexpr std::size_t ContextLines = 3;

using Lines = std::vector<std::string_view>;

/// With their ends.
Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

/// Lines that one text has in place of those of the other; numbers from 0.
struct Change {
    std::size_t beforeBegin;
    std::size_t beforeEnd;
    std::size_t afterBegin;
    std::size_t afterEnd;
};

/// What is left when the equal lines at both ends are taken away.
Change wholeChange(const Lines& before, const Lines& after) {
    const auto shorter = std::min(before.size(), after.size());
    std::size_t begin = 0;
    while (begin < shorter && before[begin] == after[begin])
        ++begin;
    std::size_t end = 0;
    while (end < shorter - begin && before[before.size() - 1 - end] == after[after.size() - 1 - end])
        ++end;
    return {begin, before.size() - end, begin, after.size() - end};
}

std::vector<Change> changesOf(const Lines& before, const Lines& after) {
    const auto whole = wholeChange(before, after);
    if (before.size() != after.size())
        return {whole};
    std::vector<Change> changes;
    for (auto at = whole.beforeBegin; at < whole.beforeEnd; ++at) {
        if (before[at] == after[at])
            continue;
        if (changes.empty() || changes.back().beforeEnd != at)
            changes.push_back({at, at, at, at});
        changes.back().beforeEnd = changes.back().afterEnd = at + 1;
    }
    return changes;
}

void vLineAppend(std::string& diff, char mark, std::string_view line) {
    diff.append(1, mark).append(line);
    if (!line.ends_with('\n'))
        diff += "\n\\ No newline at end of file\n";
}

/// "3,4": the number of the first line and how many they are; before the first line when they are none.
std::string sRange(std::size_t begin, std::size_t end) {
    return end - begin == 1 ? fmt::format("{}", end)
                            : fmt::format("{},{}", end == begin ? begin : begin + 1, end - begin);
}

/// Changes that are no more than twice the context apart.
class Hunk {
public:
    Hunk(const Lines& before, const Lines& after) : before_(before), after_(after) {}

    bool isNear(const Change& change) const {
        return changes_.empty() || change.beforeBegin <= changes_.back().beforeEnd + 2 * ContextLines;
    }

    void vAdd(const Change& change) { changes_.push_back(change); }

    std::string sText() const {
        const auto& first = changes_.front();
        const auto& last = changes_.back();
        const auto lead = std::min(first.beforeBegin, ContextLines);
        const auto trail = std::min(before_.size() - last.beforeEnd, ContextLines);
        auto text = fmt::format("@@ -{} +{} @@\n", sRange(first.beforeBegin - lead, last.beforeEnd + trail),
                                sRange(first.afterBegin - lead, last.afterEnd + trail));
        auto done = first.beforeBegin - lead;
        for (const auto& change : changes_) {
            vLinesAppend(text, ' ', before_, done, change.beforeBegin);
            vLinesAppend(text, '-', before_, change.beforeBegin, change.beforeEnd);
            vLinesAppend(text, '+', after_, change.afterBegin, change.afterEnd);
            done = change.beforeEnd;
        }
        vLinesAppend(text, ' ', before_, done, last.beforeEnd + trail);
        return text;
    }

private:
    static void vLinesAppend(std::string& text, char mark, const Lines& lines, std::size_t begin,
                             std::size_t end) {
        for (auto at = begin; at < end; ++at)
            vLineAppend(text, mark, lines[at]);
    }

    const Lines& before_;
    const Lines& after_;
    std::vector<Change> changes_;
};

} // namespace

std::string sUnifiedDiff(std::string_view path, std::string_view before, std::string_view after) {
    if (before == after)
        return {};
    const auto linesBefore = linesOf(before);
    const auto linesAfter = linesOf(after);
    std::vector<Hunk> hunks;
    for (const auto& change : changesOf(linesBefore, linesAfter)) {
        if (hunks.empty() || !hunks.back().isNear(change))
            hunks.emplace_back(linesBefore, linesAfter);
        hunks.back().vAdd(change);
    }
    auto diff = fmt::format("--- {0}\n+++ {0}\n", path);
    for (const auto& hunk : hunks)
        diff += hunk.sText();
    return diff;
}

} // namespace kiv::kivifc
