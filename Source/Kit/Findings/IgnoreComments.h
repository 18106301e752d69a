/// @file
/// Comments of a document that say what is not to be found there: `<!-- kivifc: ignore T001, N -->`.
///
///     IgnoreComments ignores(document.path, *document.positions);
///     std::erase_if(findings, [&](const auto& finding) { return ignores.boHide(finding); });
///     for (auto& finding : ignores.unusedFindings())
///         findings.push_back(std::move(finding));
///
/// A comment is about the next element and everything inside it; one before the root element is about the
/// whole document. It names codes, and beginnings of codes for families of rules.
///
/// Ownership: a value.
/// Threads:   one thread at a time.
/// Cost:      for each finding, the logarithm of the comments and how deep elements are nested.
/// Errors:    std::bad_alloc; a code that no rule has hides nothing, which is a finding.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kit {

class XmlPositions;
struct XmlIgnore;

class KIV_EXPORT IgnoreComments {
public:
    /// The code of the finding about a comment that hides nothing.
    static constexpr std::string_view unusedCode = "K001";
    /// The code of the finding about a comment that names no code.
    static constexpr std::string_view emptyCode = "K002";
    /// The code of the finding about a comment that was probably meant to be one of these.
    static constexpr std::string_view misspeltCode = "K003";

    IgnoreComments(std::string path, const XmlPositions& positions);

    /// Whether a comment hides it; the comment is then used.
    bool boHide(const Finding& finding);

    /// A note for each comment with codes that hid nothing. A rule that is not looked for finds nothing to
    /// hide, so its codes count only if `isLookedFor` says so of them; without that function all do. A
    /// comment without any code has one too, and so has a misspelt one.
    std::vector<Finding> unusedFindings(const std::function<bool(std::string_view)>& isLookedFor = {}) const;

    bool isEmpty() const { return codes_.empty() && emptyComments_.empty() && misspelt_.empty(); }

private:
    static constexpr std::size_t NoCode = static_cast<std::size_t>(-1);

    /// One code of a comment.
    struct Code {
        std::string code;
        bool isKnown = false;
        TextPosition comment;
        /// What it is about: from here to just before there. Both are unknown when no element follows.
        TextPosition begin;
        TextPosition end;
        bool isRoot = false;
        bool isUsed = false;
        /// The innermost one of the same code around it, or an earlier one that is about the same.
        std::size_t around = NoCode;
        /// The innermost one that is about more.
        std::size_t outer = NoCode;

        bool isAround(const TextPosition& position) const;
    };

    /// A comment that was probably meant to be one of these, and as which.
    struct Misspelt {
        std::string text;
        std::string meant;
        TextPosition position;
    };

    void vCommentAdd(const XmlIgnore& comment, const XmlPositions& positions);
    void vCodesNest();
    /// The code, or the first of those around it, that is about the position; `NoCode` for none.
    std::size_t firstAround(std::size_t code, const TextPosition& position) const;
    /// The innermost one of them, which are of one code, that is about the position; `NoCode` for none.
    std::size_t innermost(const std::vector<std::size_t>& codes, const TextPosition& position) const;
    Finding unusedFinding(std::span<const Code* const> unused) const;
    Finding emptyFinding(const TextPosition& position) const;
    Finding misspeltFinding(const Misspelt& comment) const;

    std::string path_;
    std::vector<Code> codes_;
    // Those of each code that are about an element, in the order of the text, as indices: of several about
    // one element the last.
    std::unordered_map<std::string, std::vector<std::size_t>> byCode_;
    /// Those that name no code.
    std::vector<TextPosition> emptyComments_;
    std::vector<Misspelt> misspelt_;
};

} // namespace kiv::kit
