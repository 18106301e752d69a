#include "kiv/Kit/Findings/IgnoreComments.h"

#include "Kit/Findings/RuleRun.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

constexpr std::string_view Separators = ", \t\r\n";

bool isEarlier(const TextPosition& left, const TextPosition& right) {
    return std::tie(left.line, left.column) < std::tie(right.line, right.column);
}

bool isCodeOfRules(std::string_view beginning) {
    return std::ranges::any_of(getRules(),
                               [&](const Rule& rule) { return rule.code.starts_with(beginning); });
}

/// Digits for the letters that look like them.
char digitFor(char letter) {
    const char upper = getUpper(letter);
    if (upper == 'O')
        return '0';
    return upper == 'I' || upper == 'L' ? '1' : letter;
}

/// The code that was probably meant by a word that is none: "T001" by "TOO1", "T1", "T-001" and
/// "unknown-data-type". Empty when it can be none.
std::string_view meantCode(std::string_view word) {
    constexpr std::size_t codeSize = 4;
    for (const auto& rule : getRules()) {
        if (isEqualIgnoringCase(rule.name, word))
            return rule.code;
    }
    std::string code(word);
    std::erase(code, '-');
    if (code.size() < 2 || code.size() > codeSize)
        return {};
    std::transform(code.begin() + 1, code.end(), code.begin() + 1, digitFor);
    code.insert(1, codeSize - code.size(), '0');
    const auto* rule = pRuleFind(code);
    return rule ? rule->code : std::string_view();
}

/// The words of a comment, with codes in the place of those that are meant to be one.
std::string sMeantCodes(std::string_view codes) {
    std::string meant;
    for (auto rest = codes; !rest.empty();) {
        const auto word = rest.substr(0, rest.find_first_of(Separators));
        const auto code = isCodeOfRules(sUpperCase(word)) ? std::string_view() : meantCode(word);
        meant.append(code.empty() ? word : code);
        rest.remove_prefix(word.size());
        const auto next = std::min(rest.find_first_not_of(Separators), rest.size());
        meant.append(rest.substr(0, next));
        rest.remove_prefix(next);
    }
    return meant;
}

/// Those that become findings of one code.
template <class Item>
std::span<const Item> mostOf(const std::vector<Item>& items) {
    return std::span(items).first(std::min(items.size(), RuleRun::maxFindingsPerCode));
}

/// "T001, T002 or G": a comment may name very many.
std::string sJoined(std::span<const std::string_view> codes) {
    constexpr std::size_t maxCodes = 12;
    std::string text;
    for (std::size_t i = 0; i != std::min(codes.size(), maxCodes); ++i) {
        const bool isLast = i + 1 == codes.size();
        text.append(i == 0 ? "" : isLast ? " or " : ", ").append(codes[i]);
    }
    return codes.size() <= maxCodes ? text
                                    : text + " or " + std::to_string(codes.size() - maxCodes) + " more";
}

} // namespace

IgnoreComments::IgnoreComments(std::string path, const XmlPositions& positions) : path_(std::move(path)) {
    for (const auto& comment : positions.getIgnores())
        vCommentAdd(comment, positions);
    vCodesNest();
}

void IgnoreComments::vCommentAdd(const XmlIgnore& comment, const XmlPositions& positions) {
    const auto position = positions.positionOf(comment);
    if (!comment.misspelt.empty()) {
        constexpr std::size_t maxShown = 60;
        misspelt_.push_back({std::string(cut(comment.misspelt, maxShown)),
                             sMeantCodes(cut(comment.codes, maxShown)), position});
        return;
    }
    if (comment.codes.find_first_not_of(Separators) == std::string_view::npos)
        emptyComments_.push_back(position);
    Code code;
    code.comment = position;
    if (comment.element != NoXmlElement) {
        const auto& element = positions.getElement(comment.element);
        code.begin = positions.beginOf(element);
        code.end = positions.endOf(element);
        code.isRoot = comment.element == 0;
    }
    for (auto rest = comment.codes; !rest.empty();) {
        const auto word = rest.substr(0, rest.find_first_of(Separators));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        if (word.empty())
            continue;
        code.code = sUpperCase(word);
        code.isKnown = isCodeOfRules(code.code);
        codes_.push_back(code);
    }
}

bool IgnoreComments::Code::isAround(const TextPosition& position) const {
    // What is about the whole document is inside its root.
    return position.line == 0 ? isRoot : !isEarlier(position, begin) && isEarlier(position, end);
}

/// Elements are inside each other or one after the other, and so is what comments are about.
void IgnoreComments::vCodesNest() {
    for (std::size_t index = 0; index != codes_.size(); ++index) {
        auto& code = codes_[index];
        if (!code.isKnown || code.begin.line == 0)
            continue;
        auto& sameCode = byCode_[code.code];
        const auto last = sameCode.empty() ? NoCode : sameCode.back();
        if (last != NoCode && codes_[last].begin == code.begin && codes_[last].end == code.end) {
            code.around = last;
            code.outer = codes_[last].outer;
            sameCode.back() = index;
            continue;
        }
        code.around = code.outer = firstAround(last, code.begin);
        sameCode.push_back(index);
    }
}

std::size_t IgnoreComments::firstAround(std::size_t code, const TextPosition& position) const {
    while (code != NoCode && !codes_[code].isAround(position))
        code = codes_[code].outer;
    return code;
}

std::size_t IgnoreComments::innermost(const std::vector<std::size_t>& codes,
                                      const TextPosition& position) const {
    const auto beginOf = [this](std::size_t index) -> const TextPosition& { return codes_[index].begin; };
    const auto isRoot = [this](std::size_t index) { return codes_[index].isRoot; };
    // Those of the root come first.
    const auto after = position.line == 0 ? std::ranges::partition_point(codes, isRoot)
                                          : std::ranges::upper_bound(codes, position, isEarlier, beginOf);
    return firstAround(after == codes.begin() ? NoCode : *std::prev(after), position);
}

bool IgnoreComments::boHide(const Finding& finding) {
    bool isHidden = false;
    for (std::size_t size = 1; size <= finding.code.size(); ++size) {
        const auto codes = byCode_.find(std::string(finding.code.substr(0, size)));
        if (codes == byCode_.end())
            continue;
        auto found = innermost(codes->second, finding.place.position);
        isHidden = isHidden || found != NoCode;
        // What is around one that was used was used with it.
        for (; found != NoCode && !codes_[found].isUsed; found = codes_[found].around)
            codes_[found].isUsed = true;
    }
    return isHidden;
}

/// A reason that was written beside the codes is words that no rule has as codes: one finding has them all.
Finding IgnoreComments::unusedFinding(std::span<const Code* const> unused) const {
    std::vector<std::string_view> codes;
    std::vector<std::string_view> unknown;
    for (const auto* code : unused) {
        codes.push_back(code->code);
        if (!code->isKnown)
            unknown.push_back(code->code);
    }
    const auto sCodes = sJoined(codes);
    Finding finding;
    finding.code = unusedCode;
    finding.severity = Severity::Note;
    finding.message = "the comment that ignores " + sCodes + " hides nothing";
    finding.place = {path_, unused.front()->comment};
    finding.subject = "ignore " + sCodes;
    if (codes.size() == 1 && unknown.size() == 1)
        finding.notes.push_back({"no rule has this code", {}});
    else if (!unknown.empty())
        finding.notes.push_back({"no rule has the code " + sJoined(unknown), {}});
    constexpr std::size_t maxMeant = 3;
    for (const auto word : std::span(unknown).first(std::min(unknown.size(), maxMeant))) {
        if (const auto meant = meantCode(word); !meant.empty())
            finding.notes.push_back(
                {"did you mean " + std::string(meant) + " by " + std::string(word) + "?", {}});
    }
    if (unknown.size() != codes.size() && unused.front()->end.line == 0)
        finding.notes.push_back({"no element follows the comment", {}});
    return finding;
}

Finding IgnoreComments::emptyFinding(const TextPosition& position) const {
    Finding finding;
    finding.code = emptyCode;
    finding.severity = Severity::Note;
    finding.message = "the comment ignores nothing: it names no code";
    finding.place = {path_, position};
    finding.subject = "ignore";
    finding.notes.push_back({"a code is T001, or T for all that begin with it", {}});
    return finding;
}

Finding IgnoreComments::misspeltFinding(const Misspelt& comment) const {
    const bool isNamed = comment.meant.find_first_not_of(Separators) != std::string::npos;
    Finding finding;
    finding.code = misspeltCode;
    finding.severity = Severity::Note;
    finding.message = "the comment hides nothing: \"" + comment.text + "\" is not \"kivifc: ignore\"";
    finding.place = {path_, comment.position};
    finding.subject = comment.text + " " + comment.meant;
    finding.notes.push_back(
        {"did you mean \"kivifc: ignore " + (isNamed ? comment.meant : "T001") + "\"?", {}});
    if (!isNamed)
        finding.notes.push_back({"a comment names the codes that it ignores, such as T001", {}});
    return finding;
}

std::vector<Finding>
IgnoreComments::unusedFindings(const std::function<bool(std::string_view)>& isLookedFor) const {
    std::vector<Finding> findings;
    for (const auto& position : mostOf(emptyComments_))
        findings.push_back(emptyFinding(position));
    for (const auto& comment : mostOf(misspelt_))
        findings.push_back(misspeltFinding(comment));
    const auto isUnused = [&](const Code& code) {
        return !code.isUsed && (!code.isKnown || !isLookedFor || isLookedFor(code.code));
    };
    const auto last = findings.size() + RuleRun::maxFindingsPerCode;
    // The codes of one comment are side by side.
    std::vector<const Code*> unused;
    for (const auto& code : codes_) {
        if (!unused.empty() && isEarlier(unused.front()->comment, code.comment)) {
            findings.push_back(unusedFinding(unused));
            unused.clear();
        }
        if (findings.size() == last)
            return findings;
        if (isUnused(code))
            unused.push_back(&code);
    }
    if (!unused.empty())
        findings.push_back(unusedFinding(unused));
    return findings;
}

} // namespace kiv::kit
