/// @file
/// The WHERE clause of an entity or a defined type: its text and its rules as expression trees.
///
///     for (const auto& rule : wall.pWhere()->getRules())
///         std::cout << rule.label.getView();
///
/// Ownership: belongs to its entity or type. Its rules and their trees lie in the memory of the schema for
///            which they were parsed; a view from `getRules` is good until the clause is parsed again.
/// Threads:   read-only once the schema is built.
/// Errors:    a rule that cannot be parsed is an assertion report; the rules before it are kept.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <iterator>
#include <string_view>
#include <vector>

namespace kiv {
class Arena;
}

namespace kiv::ifc::def::schema {

class Entity;
class ReadLineHelper;
class Schema;
class Type;

/// The rules of a clause, in the order of the text; a clause that was parsed again has them again, although
/// they are stored once. A list that is looked at, not changed.
class ParsedRules {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = ParsedRule;
        using difference_type = std::ptrdiff_t;
        using pointer = const ParsedRule*;
        using reference = const ParsedRule&;

        Iterator() = default;
        Iterator(const ParsedRules& rules, std::size_t index);

        const ParsedRule& operator*() const { return *rule_; }
        const ParsedRule* operator->() const { return rule_; }
        Iterator& operator++() {
            ++index_;
            if (++rule_ == end_)
                rule_ = again_;
            return *this;
        }
        Iterator operator++(int) {
            auto before = *this;
            ++*this;
            return before;
        }
        /// Of two places in one list.
        friend bool operator==(const Iterator& left, const Iterator& right) {
            return left.index_ == right.index_;
        }

    private:
        const ParsedRule* rule_ = nullptr;
        // What comes after the last rule that is stored.
        const ParsedRule* again_ = nullptr;
        const ParsedRule* end_ = nullptr;
        std::size_t index_ = 0;
    };
    using value_type = ParsedRule;
    using iterator = Iterator;
    using const_iterator = Iterator;

    ParsedRules() = default;
    /// `count` rules side by side, of which those from `again` on are there `times` times in all.
    ParsedRules(const ParsedRule* rules, std::size_t count, std::size_t again, std::size_t times) :
        rules_(rules), count_(count), again_(again), size_(again + (count - again) * times) {}

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, size_}; }
    /// The index is below the size.
    const ParsedRule& operator[](std::size_t index) const {
        return rules_[index < count_ ? index : again_ + (index - again_) % (count_ - again_)];
    }

private:
    const ParsedRule* rules_ = nullptr;
    std::size_t count_ = 0;
    std::size_t again_ = 0;
    std::size_t size_ = 0;
};

inline ParsedRules::Iterator::Iterator(const ParsedRules& rules, std::size_t index) :
    rule_(rules.rules_ + (index < rules.count_ ? index : rules.again_)),
    again_(rules.rules_ + rules.again_),
    end_(rules.rules_ + rules.count_),
    index_(index) {}

class KIV_EXPORT Where {
public:
    /// Reads the lines that follow the current one, up to the line that contains "END_", which is left as the
    /// current line, or up to the end of the stream. `pos`, the byte offset after WHERE, and the schema are
    /// not looked at: the line of the keyword itself is no part of the clause.
    Where(Schema& schema, ReadLineHelper& line, std::size_t pos, std::istream& stream);

    Where(const Where&) = delete;
    Where& operator=(const Where&) = delete;

    /// Parses the text and appends its rules; a clause that is resolved twice holds its rules twice, and has
    /// reported its syntax error twice. For the same schema that costs neither time nor memory the second
    /// time. A literal out of range leaves this as std::out_of_range.
    void parseRules(Schema& schema);

    /// The lines that belong to rules, as read; they live as long as this object.
    std::vector<std::string_view> getLines() const;

    /// The same lines, each followed by a line feed.
    std::string_view getText() const { return text_; }

    /// The parsed rules in the order of the text.
    ParsedRules getRules() const;

private:
    friend class Entity;
    friend class Type;
    class Parsing;
    struct Refused;

    /// Reads a clause into the arena of `line`. Of several clauses of one declaration the last counts: it
    /// takes over the memory of the former one, which is null for the first.
    static Where* pRead(Where* former, Schema& schema, ReadLineHelper& line, std::size_t pos,
                        std::istream& stream);

    void vParse(Schema& schema);
    void vRulesParse(Schema& schema);
    std::string_view refusedReport(std::string_view reason, Arena& arena) const;
    void vRefusedReport(Schema& schema);

    /// What became of the text. The rules and the reason lie in the arena of the schema that parsed it, and
    /// are gone with that.
    struct Parsed {
        ParsedRule* rules = nullptr;
        std::uint32_t count = 0;
        /// Where the rules begin that the text was parsed into last, and how many times that happened.
        std::uint32_t again = 0;
        std::size_t times = 0;
        /// For which schema that was; null when it was none, or when parsing did not come to an end.
        const Schema* schema = nullptr;
        /// Null for nothing.
        Refused* refused = nullptr;
    };

    std::string_view text_;
    Parsed parsed_;
};

} // namespace kiv::ifc::def::schema
