/// @file
/// Every assertion message and every error record that the library can give, each with the smallest input
/// that gives it.
///
///     for (const auto& row : messageTable())
///         EXPECT_THAT(messagesOf(row.kind, row.input), Contains(Message{row.message, row.function}));
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// What an input is, and with it what is done with it.
enum class InputKind {
    /// Statements of a schema, which are read.
    Schema,
    /// A set, of the kind that its root element names, which is read and checked with all its members.
    Set,
    /// The children of a configuration's root, which is read.
    Config,
    /// A whole configuration, which is read.
    WholeConfig,
    /// A set, which is registered, and the type of its member "M" asked for.
    TypeName
};

/// One message, as it is reported or recorded.
struct Message {
    std::string text;
    /// The operation that reports; empty for an error record.
    std::string function;

    friend auto operator<=>(const Message&, const Message&) = default;
};

struct MessageRow {
    InputKind kind;
    std::string_view input;
    std::string_view message;
    /// Empty for an error record.
    std::string_view function;
};

const std::vector<MessageRow>& messageTable();

} // namespace kiv::test
