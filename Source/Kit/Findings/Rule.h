/// @file
/// The rules by which findings are made: their codes, their names and what they say to an author.
///
///     const Rule* rule = pRuleFind("T001");
///     std::cout << rule->summary << '\n' << rule->explanation;
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads.
/// Errors:    a code that no rule has is null; std::bad_alloc at the first call, which makes the table.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Findings/Finding.h"

#include <span>
#include <string_view>

namespace kiv::kit {

/// A document or schema that shows a rule.
struct RuleExample {
    /// The whole text. Set documents are judged with the schema of `getExampleSchema`; in examples of several
    /// files a line "---- PATH" begins each, and one that ends in ".exp" is the schema of those after it.
    /// Empty for most that the library reports: where a document causes it, the finding is of another rule.
    std::string_view text;
};

struct Rule {
    /// "T001": never given to another rule.
    std::string_view code;
    /// A few words with hyphens: "unknown-type".
    std::string_view name;
    Severity severity = Severity::Error;
    /// One sentence: what the rule finds.
    std::string_view summary;
    /// Why it matters and how to mend it, in paragraphs.
    std::string_view explanation;
    /// Yields a finding of this code and no other.
    RuleExample wrong;
    /// Yields nothing.
    RuleExample right;
};

/// The EXPRESS schema of the examples, a small part of IFC.
KIV_EXPORT std::string_view getExampleSchema();

/// An older release, which examples have as a further schema.
KIV_EXPORT std::string_view getOlderExampleSchema();

/// All rules, in the order of their codes.
KIV_EXPORT std::span<const Rule> getRules();

/// The rule with that code, in any letter case; null when there is none.
KIV_EXPORT const Rule* pRuleFind(std::string_view code);

} // namespace kiv::kit
