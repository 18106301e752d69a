#include "kiv/Kit/Names/NearestName.h"

#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>

namespace kiv::kit {

namespace {

constexpr std::array<std::string_view, 3> Prefixes{"Ifc", "Pset_", "Qto_"};
constexpr std::size_t NoPrefix = Prefixes.size();

/// Shorter names are part of too many others.
constexpr std::size_t PartLengthMin = 4;

constexpr std::size_t Unlike = std::numeric_limits<std::size_t>::max();

// What makes one match better than another.
constexpr std::size_t SpellingChangeCost = 4;
constexpr std::size_t PartChangeCost = 8;
constexpr std::size_t OtherPrefixCost = 2;
/// Of whole words: who writes "IfcPipe" means "IfcPipeSegment" rather than "IfcPile".
constexpr std::size_t FirstWordsCost = 2;
constexpr std::size_t BeginningCost = 5;
constexpr std::size_t WordCost = 7;
constexpr std::size_t AbbreviationCost = 16;
/// That many letters that only the candidate has cost one: which of them were meant to be left out is clear.
constexpr std::size_t SurplusLetters = 4;
/// What a letter costs that only the name has.
constexpr std::size_t NeedlessLetterCost = 8;

bool isSame(char left, char right) {
    return getLower(left) == getLower(right);
}

bool isUpper(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

/// The index of the prefix with which the name begins; `NoPrefix` when nothing is left after it either.
std::size_t prefixOf(std::string_view name) {
    const auto begins = [name](std::string_view prefix) {
        return name.size() > prefix.size() && startsWithIgnoringCase(name, prefix);
    };
    return static_cast<std::size_t>(std::ranges::find_if(Prefixes, begins) - Prefixes.begin());
}

std::string_view withoutPrefix(std::string_view name, std::size_t prefix) {
    return prefix == NoPrefix ? name : name.substr(Prefixes[prefix].size());
}

/// Whether a word begins at that place of a name, as in "WallCommon" and "wall_common".
bool isWordBegin(std::string_view name, std::size_t place) {
    return name[place - 1] == '_' || (isUpper(name[place]) && !isUpper(name[place - 1]));
}

/// How many letters of a name may be changed: a third of a short one, and less of what is longer.
std::size_t changesAllowed(std::size_t length) {
    return length <= 9 ? length / 3 : 3 + (length - 9) / 6;
}

/// A bit for each letter or other byte in the name.
std::uint64_t bytesOf(std::string_view name) {
    std::uint64_t bytes = 0;
    for (const char byte : name)
        bytes |= std::uint64_t{1} << (static_cast<unsigned char>(getLower(byte)) % 64U);
    return bytes;
}

/// How many changes make a name of another one, and of a beginning of that one; `Unlike` for more than
/// allowed.
struct Changes {
    std::size_t ofAll = Unlike;
    std::size_t ofBeginning = Unlike;
};

using Row = std::array<std::size_t, maxNameLength + 1>;

/// The three rows of a table of distances that are looked at, and how far from the diagonal.
struct Band {
    std::array<Row, 3> rows{};
    std::size_t allowed = 0;
    std::size_t width = 0;

    Row& row(std::size_t line) { return rows[line % rows.size()]; }
};

/// Fills one row; gives the least number in it.
std::size_t rowFill(Band& band, std::size_t line, std::string_view name, std::string_view other) {
    const auto far = band.allowed + 1;
    const auto first = line > band.allowed ? line - band.allowed : 1;
    const auto last = std::min(band.width, line + band.allowed);
    auto& row = band.row(line);
    const auto& above = band.row(line - 1);
    row[first - 1] = first == 1 ? line : far;
    auto least = row[first - 1];
    for (auto column = first; column <= last; ++column) {
        const auto leftOut = column == line + band.allowed ? far : above[column];
        const auto replaced = above[column - 1] + (isSame(name[line - 1], other[column - 1]) ? 0U : 1U);
        auto changes = std::min({replaced, row[column - 1] + 1, leftOut + 1});
        const bool isSwapped = line > 1 && column > 1 && isSame(name[line - 1], other[column - 2]) &&
                               isSame(name[line - 2], other[column - 1]);
        if (isSwapped)
            changes = std::min(changes, band.row(line - 2)[column - 2] + 1);
        row[column] = changes;
        least = std::min(least, changes);
    }
    return least;
}

/// The distance of names, row by row of a table whose fields too far from its diagonal are not looked at.
Changes changesBetween(std::string_view name, std::string_view other, std::size_t allowed) {
    Band band;
    band.allowed = allowed;
    // What is further on can only be inserted, and is for no beginning.
    band.width = std::min(other.size(), name.size() + allowed);
    if (name.size() > band.width + allowed)
        return {};
    for (std::size_t column = 0; column <= band.width; ++column)
        band.row(0)[column] = column;
    std::size_t least = 0;
    for (std::size_t line = 1; line <= name.size(); ++line) {
        const auto before = least;
        least = rowFill(band, line, name, other);
        // Two rows, as a swap of letters passes over one.
        if (least > allowed && before > allowed)
            return {};
    }
    const auto& row = band.row(name.size());
    const auto first = name.size() > allowed ? name.size() - allowed : 0;
    Changes changes;
    for (auto column = first; column <= band.width; ++column)
        changes.ofBeginning = std::min(changes.ofBeginning, row[column]);
    if (band.width == other.size())
        changes.ofAll = row[band.width];
    if (changes.ofBeginning > allowed)
        changes.ofBeginning = Unlike;
    if (changes.ofAll > allowed)
        changes.ofAll = Unlike;
    return changes;
}

/// Whether the letters of the shorter one come in the longer one in the same order, and half of them begin
/// it.
bool isAbbreviation(std::string_view shorter, std::string_view longer) {
    const auto common = std::ranges::mismatch(shorter, longer, isSame).in1 - shorter.begin();
    if (static_cast<std::size_t>(common) < std::max(PartLengthMin, (shorter.size() + 1) / 2))
        return false;
    auto left = shorter;
    for (const char letter : longer) {
        if (!left.empty() && isSame(left.front(), letter))
            left.remove_prefix(1);
    }
    return left.empty();
}

/// A match with what makes it better or worse than others.
struct Judged {
    std::size_t cost = Unlike;
    std::size_t changes = 0;
    bool isPart = false;
};

void vBetterTake(Judged& best, const Judged& other) {
    if (other.cost < best.cost)
        best = other;
}

/// Judges candidates for one name.
class Judge {
public:
    explicit Judge(std::string_view name) :
        name_(name), prefix_(prefixOf(name)), core_(withoutPrefix(name, prefix_)), bytes_(bytesOf(core_)) {}

    Judged judge(std::string_view candidate) const {
        const auto prefix = prefixOf(candidate);
        auto judged = withoutPrefixes(core_, withoutPrefix(candidate, prefix), bytes_);
        if (prefix == prefix_)
            return judged;
        if (judged.cost != Unlike)
            judged.cost += OtherPrefixCost;
        // The prefix may be what is misspelt.
        if (prefix_ == NoPrefix && judged.cost > OtherPrefixCost)
            vBetterTake(judged, spelling(name_, candidate));
        return judged;
    }

private:
    static Judged spelling(std::string_view name, std::string_view candidate) {
        const auto changes = changesBetween(name, candidate, changesAllowed(name.size())).ofAll;
        return changes == Unlike ? Judged{} : Judged{changes * SpellingChangeCost, changes, false};
    }

    static Judged part(std::size_t changes, std::size_t cost, std::size_t surplus) {
        return changes == Unlike
                   ? Judged{}
                   : Judged{changes * PartChangeCost + cost + surplus / SurplusLetters, changes, true};
    }

    static Judged withoutPrefixes(std::string_view name, std::string_view candidate, std::uint64_t bytes) {
        const auto allowed = changesAllowed(name.size());
        // Each of these letters has to be changed.
        const auto missing = static_cast<std::size_t>(std::popcount(bytes & ~bytesOf(candidate)));
        if (missing <= allowed) {
            const auto changes = changesBetween(name, candidate, allowed);
            if (changes.ofAll != Unlike)
                return {changes.ofAll * SpellingChangeCost, changes.ofAll, false};
            const auto judged = partOf(name, candidate, changes.ofBeginning, allowed / 2);
            if (judged.cost != Unlike)
                return judged;
        }
        return wholeOf(name, candidate);
    }

    /// The name as a part of the candidate, or an abbreviation of it.
    static Judged partOf(std::string_view name, std::string_view candidate, std::size_t changesOfBeginning,
                         std::size_t allowed) {
        if (name.size() < PartLengthMin || name.size() > candidate.size())
            return {};
        const auto surplus = candidate.size() - name.size();
        Judged best;
        const bool isFirstWords =
            changesOfBeginning == 0 && surplus != 0 && isWordBegin(candidate, name.size());
        if (changesOfBeginning <= allowed)
            best = part(changesOfBeginning, isFirstWords ? FirstWordsCost : BeginningCost, surplus);
        for (std::size_t place = 1;
             place + name.size() <= candidate.size() + allowed && place < candidate.size(); ++place) {
            if (isSame(candidate[place], name.front()) && isWordBegin(candidate, place))
                vBetterTake(best, part(changesBetween(name, candidate.substr(place), allowed).ofBeginning,
                                       WordCost, surplus));
        }
        if (best.cost == Unlike && isAbbreviation(name, candidate))
            best = part(0, AbbreviationCost, surplus);
        return best;
    }

    /// The candidate as the beginning of a name with further words, which are fewer letters than it has.
    static Judged wholeOf(std::string_view name, std::string_view candidate) {
        if (candidate.size() < PartLengthMin || name.size() <= candidate.size() ||
            name.size() >= 2 * candidate.size() || !startsWithIgnoringCase(name, candidate) ||
            !isWordBegin(name, candidate.size()))
            return {};
        return part(0, BeginningCost + (name.size() - candidate.size()) * NeedlessLetterCost, 0);
    }

    std::string_view name_;
    std::size_t prefix_;
    std::string_view core_;
    std::uint64_t bytes_;
};

bool isWorthComparing(std::string_view name) {
    return !name.empty() && name.size() <= maxNameLength;
}

} // namespace

std::optional<NameMatch> nearestName(std::string_view name, std::span<const std::string_view> candidates) {
    if (!isWorthComparing(name))
        return std::nullopt;
    const Judge judge(name);
    Judged best;
    std::string_view nearest;
    for (const auto candidate : candidates) {
        const auto judged = isWorthComparing(candidate) ? judge.judge(candidate) : Judged{};
        if (judged.cost >= best.cost)
            continue;
        best = judged;
        nearest = candidate;
    }
    if (best.cost == Unlike)
        return std::nullopt;
    return NameMatch{nearest, best.changes, best.isPart};
}

std::vector<NameMatch> nearestNames(std::string_view name, std::span<const std::string_view> candidates,
                                    std::size_t maxCount) {
    struct Entry {
        std::size_t cost;
        NameMatch match;
    };
    std::vector<Entry> entries;
    if (isWorthComparing(name)) {
        const Judge judge(name);
        for (const auto candidate : candidates) {
            const auto judged = isWorthComparing(candidate) ? judge.judge(candidate) : Judged{};
            if (judged.cost == Unlike)
                continue;
            const auto place = std::ranges::upper_bound(entries, judged.cost, {}, &Entry::cost);
            entries.insert(place, {judged.cost, {candidate, judged.changes, judged.isPart}});
            if (entries.size() > maxCount)
                entries.pop_back();
        }
    }
    std::vector<NameMatch> matches;
    matches.reserve(entries.size());
    for (const auto& entry : entries)
        matches.push_back(entry.match);
    return matches;
}

} // namespace kiv::kit
