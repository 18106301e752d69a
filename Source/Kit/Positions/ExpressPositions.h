/// @file
/// Where each declaration of an EXPRESS schema is in its text, and each name in it.
///
///     const auto positions = expressPositions(text);
///     for (const auto& declaration : positions.declarations)
///         std::cout << positions.positionOf(declaration.name).line << ": " << declaration.name.text << '\n';
///
/// Lines and columns are found when they are asked for: a word is a view of the text, which says where it is.
///
/// The text is read as ISO 10303-11 has it: keywords in any letter case, wherever on a line. What the library
/// reads of the same text is less; comparing both shows what was passed over.
///
/// Ownership: all names are views into the text, which must outlive them; keywords and what is missing live
///            as long as the process, and lists as long as the positions or a copy of them.
/// Threads:   any number of threads may read one.
/// Errors:    none but std::bad_alloc: any bytes have positions, if only none at all. Time grows with the
///            text, and nothing recurses.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Text/TextLines.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace kiv::kit {

/// A word of the text, or more of it.
struct ExpressWord {
    /// A view of the text that was read, also when it is empty: it is at the place of what comes instead.
    /// Without data when it has no place.
    std::string_view text;
};

/// What a name is used for.
enum class ExpressUse : std::uint8_t {
    /// In SUBTYPE OF.
    Supertype,
    /// In SUPERTYPE OF.
    Subtype,
    /// As the type of an attribute, or what a defined type is made of.
    Type,
    EnumerationItem,
    SelectMember,
    /// After FOR: the attribute that an inverse attribute inverts.
    InverseFor,
    /// The entity in SELF\Entity.Attribute, whose attribute is declared again.
    RedeclaredEntity,
    /// In a UNIQUE rule.
    UniqueAttribute,
    /// After FOR: an entity that a RULE is about.
    RuleEntity,
};

struct ExpressName {
    ExpressUse use = ExpressUse::Type;
    ExpressWord word;
};

enum class ExpressMemberKind : std::uint8_t { Attribute, Inverse, Derived, Unique, Where };

/// A keyword that the library does not find: "INVERS", or "inverse".
struct ExpressMisspelt {
    ExpressWord word;
    /// "INVERSE"
    std::string_view keyword;
};

/// An attribute, or a labelled rule.
struct ExpressMember {
    ExpressMemberKind kind = ExpressMemberKind::Attribute;
    /// The name or the label. Empty for a rule without label, at the place of its first word.
    ExpressWord name;
    /// The names in its type; of a UNIQUE rule, the attributes.
    std::span<const ExpressName> names;
    /// Of an attribute: its type. Of a WHERE rule and after ":=": the expression. Without the ';'.
    std::string_view type;
    std::string_view expression;
};

/// Keywords in the type of an attribute, and FOR, that are not in capitals, in the order of the text. Those
/// that several attributes share belong to the first of them.
struct ExpressMemberMisspelt {
    /// The index of the attribute in its declaration.
    std::size_t member = 0;
    std::span<const ExpressMisspelt> words;
};

/// A name with something in it that names do not have: "Global-Id".
struct ExpressIllegalName {
    /// The whole of it.
    ExpressWord name;
    /// The first character that does not belong there.
    ExpressWord place;
};

/// Where something is missing in a type or a list of names.
struct ExpressGap {
    /// The last word or symbol before it.
    ExpressWord last;
    /// A sign or a keyword in quotes, as in "\":=\"" and "\"OF\"", or "a name", "a type", "an entity" or
    /// "an expression".
    std::string_view missing;
    /// `last` has the place inside: "[1..?]".
    bool isInside = false;
    /// In an attribute: what follows its statement is not affected.
    bool isInMember = false;
    /// `last` is the first symbol after it: the line begins with ": REAL;".
    bool isBefore = false;
    /// `missing` is not missing: it is there once too often.
    bool isSurplus = false;
};

/// What is wrong in a declaration; most have nothing.
struct ExpressMistakes {
    /// Of its clauses and its header, in the order of the text.
    std::span<const ExpressMisspelt> misspelt;
    /// Of a type: keywords in what it is made of that are not in capitals.
    std::span<const ExpressMisspelt> typeMisspelt;
    /// Of attributes, in the order of the text.
    std::span<const ExpressMemberMisspelt> memberMisspelt;
    /// Its own name and those of attributes and items, in the order of the text.
    std::span<const ExpressIllegalName> illegalNames;
    /// In the order of the text.
    std::span<const ExpressGap> gaps;
    /// "[5:1]": bounds that are numbers, of which the first is the greater.
    std::span<const ExpressWord> swappedBounds;
    /// "[1:*]": bounds of which one is left out, or is no integer.
    std::span<const ExpressWord> wrongBounds;
};

inline constexpr ExpressMistakes NoExpressMistakes;

enum class ExpressDeclarationKind : std::uint8_t {
    Type,
    Entity,
    Function,
    Rule,
    /// The names of constants and procedures can be used; nothing else is known of them.
    Procedure,
    Constant,
};

struct ExpressDeclaration {
    ExpressDeclarationKind kind = ExpressDeclarationKind::Type;
    bool isAbstract = false;
    /// "ENTITY" as written. A word in capitals that is like it is taken for it: "ENTITIY".
    ExpressWord keyword;
    /// Up to what cannot be the name any more: "Ifc Wall", "Ifc-Wall". Empty, at the place of what comes
    /// instead, when it is missing.
    ExpressWord name;
    /// Of an entity: its supertypes and subtypes. Of a type: items, members, or the type that it is made of.
    /// Of a rule: the entities after FOR.
    std::span<const ExpressName> names;
    std::span<const ExpressMember> members;
    /// Never null.
    const ExpressMistakes* mistakes = &NoExpressMistakes;
    /// "END_ENTITY" as written, also when it is misspelt, or is the two words "END ENTITY"; empty, at the
    /// place of the word that comes instead, when it is missing.
    ExpressWord end;
    /// From the keyword to the end, both included.
    std::string_view text;
    /// Of a type: what it is made of, without the '=' and the ';'.
    std::string_view typeText;
    /// Of functions and rules: what is between the header and the end.
    std::string_view body;
};

/// A SCHEMA statement; of the first the keyword may be misspelt.
struct ExpressSchemaHeader {
    ExpressWord keyword;
    ExpressWord name;
    /// The index of the first declaration after it.
    std::size_t firstDeclaration = 0;
    /// "END_SCHEMA" as written; empty when it is missing.
    ExpressWord end;
};

/// A statement without its ';'.
struct ExpressUnended {
    /// The last word or symbol of the statement.
    ExpressWord last;
    /// What comes instead.
    ExpressWord next;
};

enum class ExpressEncoding : std::uint8_t {
    /// UTF-8 or another encoding with one byte for each letter of EXPRESS.
    Bytes,
    /// Nothing else is found then.
    Utf16,
};

struct KIV_EXPORT ExpressPositions {
    /// Of a word on one line; otherwise of the first token that is there. Without a line for what is no part
    /// of the text.
    TextPosition positionOf(const ExpressWord& word) const;

    /// The text that was read, and its lines.
    std::string_view text;
    TextLines lines;
    ExpressEncoding encoding = ExpressEncoding::Bytes;
    /// Lines end with carriage returns alone: no line feed in the text.
    bool hasReturnsOnly = false;
    std::vector<ExpressSchemaHeader> schemas;
    /// In the order of the text.
    std::vector<ExpressDeclaration> declarations;
    /// In the order of the text. What is not understood, and what ends with the text, is not among them.
    std::vector<ExpressUnended> unended;
    /// "END_ENTITY" as written, where no declaration is open: that of one whose beginning is missing. In the
    /// order of the text.
    std::vector<ExpressWord> strayEnds;
    /// What is between the declarations of a schema and is no statement of EXPRESS: the first word or symbol
    /// of each such text, in the order of the text. A ';' alone is none.
    std::vector<ExpressWord> strayTexts;
    /// "(*" of the first comment that nothing closes; without a place when there is none.
    ExpressWord openComment;
    /// Owns the lists of the declarations, which copies share.
    std::shared_ptr<const void> lists;
};

/// The keywords in the type of an attribute that are not in capitals. `member` is the index of the attribute
/// in its declaration.
KIV_EXPORT std::span<const ExpressMisspelt> misspeltIn(const ExpressDeclaration& declaration,
                                                       std::size_t member);

KIV_EXPORT ExpressPositions expressPositions(std::string_view text);

/// Whether two words are the same but for the case of ASCII letters.
KIV_EXPORT bool isSameExpressWord(std::string_view left, std::string_view right);

} // namespace kiv::kit
