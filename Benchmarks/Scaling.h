/// Makes schemas and set documents many times as large: copies of a text in which what must be unique has
/// other names.
///
///     const SchemaCopies schemas(text, 'X');
///     const auto tenTimes = schemas.text(10);
///     const SetCopies sets(documentTexts, schemas);
///     const auto thousands = sets.texts(10, 1);
///
/// Copy 0 is the text as it was.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kiv::bench {

/// A text with the places at which a copy of it gets the number of the copy.
class NumberedText {
public:
    NumberedText() = default;
    explicit NumberedText(std::string text) : text_(std::move(text)) {}

    /// Marks a place; places are marked from the front to the back.
    void vPlaceAdd(std::size_t place) { places_.push_back(place); }

    /// Appends the copy of this number; at each place it has the mark and the number, copy 0 has neither.
    void vCopyAppend(std::string& target, char mark, std::size_t copy) const;

private:
    std::string text_;
    std::vector<std::size_t> places_;
};

/// Copies of all statements of a schema, one after the other in one schema. Each declared name of a copy,
/// and each use of it, is another one.
class SchemaCopies {
public:
    /// The mark is in front of the numbers in names. For a text that was copied already it must be
    /// another one.
    SchemaCopies(const std::string& text, char mark);

    /// A schema of that many copies.
    std::string text(std::size_t copies) const;

    char getMark() const { return mark_; }

    /// Marks the declared names in [begin, end) of a text.
    void vNamesMark(NumberedText& numbered, std::string_view text, std::size_t begin, std::size_t end) const;

private:
    char mark_;
    std::string header_;
    NumberedText statements_;
    std::unordered_set<std::string> upperNames_;
};

/// Copies of set documents: sets of other names with fresh GUIDs.
class SetCopies {
public:
    SetCopies(const std::vector<std::string>& texts, const SchemaCopies& schema);

    /// That many copies of all documents. They apply to the entities of as many copies of the schema in turn;
    /// with one, all apply to the entities that the documents name.
    std::vector<std::string> texts(std::size_t copies, std::size_t schemaCopies) const;

private:
    struct Document {
        /// Up to the end of the set's name, which is what is numbered in it.
        NumberedText named;
        /// What follows, with the classes.
        NumberedText rest;
    };

    char mark_;
    std::vector<Document> documents_;
};

} // namespace kiv::bench
