/// The WHERE clause of an entity or a defined type: its text and its rules as expression trees.
///
///     for (const auto& rule : wall.pWhere()->getRules())
///         std::cout << rule.label.getView();
///
/// Ownership: belongs to its entity or type and owns the trees.
/// Threads:   read-only once the schema is built.
/// Errors:    a rule that cannot be parsed is an assertion report; the rules before it are kept.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <cstddef>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class Schema;

class KIV_EXPORT Where {
public:
    /// Reads the lines that follow the current one, up to the line that contains "END_", which is left as the
    /// current line, or up to the end of the stream. `pos`, the byte offset behind WHERE, and the schema are
    /// not looked at: the line of the keyword itself is no part of the clause.
    Where(Schema& schema, ReadLineHelper& line, std::size_t pos, std::istream& stream);

    /// Parses the text and appends its rules; a clause that is resolved twice holds its rules twice.
    /// A literal out of range leaves this as std::out_of_range.
    void parseRules(Schema& schema);

    /// The lines that belong to rules, as read; they live as long as this object.
    std::vector<std::string_view> getLines() const { return linesOfText(text_); }

    /// The same lines, each followed by a line feed.
    std::string_view getText() const { return text_; }

    /// The parsed rules in the order of the text.
    const ArenaVector<ParsedRule>& getRules() const { return rules_; }

private:
    void vRulesParse(Schema& schema);

    std::string_view text_;
    ArenaVector<ParsedRule> rules_;
};

} // namespace kiv::ifc::def::schema
