/// @file
/// Where each declaration of an EXPRESS schema is in its text, and each name in it.
///
///     const auto positions = expressPositions(text);
///     for (const auto& declaration : positions.declarations)
///         std::cout << declaration.name.position.line << ": " << declaration.name.text << '\n';
///
/// The text is read as ISO 10303-11 has it: keywords in any letter case, wherever on a line. What the library
/// reads of the same text is less; comparing both shows what was passed over.
///
/// Ownership: all names are views into the text, which must outlive them.
/// Threads:   any number of threads may read one.
/// Errors:    none but std::bad_alloc: any bytes have positions, if only none at all. Time grows with the
///            text, and nothing recurses.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kiv::kit {

/// A word of the text.
struct ExpressWord {
    std::string_view text;
    TextPosition position;
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

/// An attribute, or a labelled rule.
struct ExpressMember {
    ExpressMemberKind kind = ExpressMemberKind::Attribute;
    /// The name or the label. Empty for a rule without label, at the place of its first word.
    ExpressWord name;
    /// The names in its type; of a UNIQUE rule, the attributes.
    std::vector<ExpressName> names;
    /// Of an attribute: its type. Of a WHERE rule and after ":=": the expression. Without the ';'.
    std::string_view type;
    std::string_view expression;
    /// Of the first byte of `expression`.
    TextPosition expressionBegin;
};

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
    /// "ENTITY" as written.
    ExpressWord keyword;
    ExpressWord name;
    bool isAbstract = false;
    /// Of an entity: its supertypes and subtypes. Of a type: items, members, or the type that it is made of.
    /// Of a rule: the entities after FOR.
    std::vector<ExpressName> names;
    std::vector<ExpressMember> members;
    /// "END_ENTITY" as written; empty, at the place of the word that comes instead, when it is missing.
    ExpressWord end;
    /// From the keyword to the end, both included.
    std::string_view text;
    /// Of functions and rules: what is between the header and the end.
    std::string_view body;
    TextPosition bodyBegin;
};

/// A SCHEMA statement.
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
    /// Of what comes instead.
    TextPosition next;
};

enum class ExpressEncoding : std::uint8_t {
    /// UTF-8 or another encoding with one byte for each letter of EXPRESS.
    Bytes,
    /// Nothing else is found then.
    Utf16,
};

struct ExpressPositions {
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
    /// The first comment that nothing closes; line 0 for none.
    TextPosition openComment;
};

KIV_EXPORT ExpressPositions expressPositions(std::string_view text);

/// Whether two words are the same but for the case of ASCII letters.
KIV_EXPORT bool isSameExpressWord(std::string_view left, std::string_view right);

} // namespace kiv::kit
