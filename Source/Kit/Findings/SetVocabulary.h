/// @file
/// The elements and attributes of set documents: which may be where, what readers do with others, and how
/// often one counts.
///
///     const SetVocabulary vocabulary(xml, outline.kind);
///     if (const auto* rule = vocabulary.pRuleOf(element); rule && rule->content == ContentKind::Text)
///         ...
///
/// Private to the kit.
///
/// Ownership: the tables live as long as the process; a vocabulary keeps a pointer for each element and
///            refers to the document.
/// Threads:   unchanged once made; any number of threads may read it.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/SetOutline.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kiv::kit {

inline constexpr std::string_view QuantityTypes[] = {"Q_COUNT", "Q_WEIGHT", "Q_LENGTH",
                                                     "Q_AREA",  "Q_VOLUME", "Q_TIME"};

/// What an element is to contain.
enum class ContentKind : std::uint8_t {
    Elements,
    Text,
    /// Attributes alone.
    Nothing,
    /// Readers do not look at it.
    Ignored,
};

/// What readers do with a child that they do not know.
enum class UnknownChild : std::uint8_t {
    /// They record it.
    Recorded,
    /// They record it in the words that they have for a range of bounds.
    RecordedInRange,
    /// They report an assertion.
    Asserted,
    /// They pass over it.
    PassedOver,
    /// They read it as if it had the right name.
    ReadAnyway,
};

/// Which of several children of one name count.
enum class ChildCount : std::uint8_t {
    All,
    LastOnly,
    /// They are joined: of what only one can have, such as a name, that of the last one counts.
    Joined,
};

struct ElementRule;

struct ChildRule {
    const ElementRule* rule = nullptr;
    ChildCount count = ChildCount::All;
    /// Some rule finds it missing.
    bool isNeeded = false;
};

struct ElementRule {
    std::string_view name;
    ContentKind content = ContentKind::Elements;
    UnknownChild unknown = UnknownChild::Recorded;
    std::span<const ChildRule> children = {};
    std::span<const std::string_view> attributes = {};
    /// Of all children only the first is read.
    bool isFirstChildOnly = false;
    /// Its kind of set has it and the other has not.
    SetKind onlyIn = SetKind::None;
    /// Readers do not look at what is inside, so that nothing is lost to them.
    bool isUnread = false;
    /// There may be one text instead of the elements.
    bool isTextLegal = false;
    /// It is known, and nobody is to write it: readers make nothing of it.
    bool isObsolete = false;
};

class SetVocabulary {
public:
    SetVocabulary(const XmlPositions& xml, SetKind kind);

    /// Null for an element that is not read, or that is unknown.
    const ElementRule* pRuleOf(XmlIndex element) const { return rules_[element]; }
    /// Null when the element may not have such a child.
    static const ChildRule* pChild(const ElementRule& rule, std::string_view name);
    /// What the other kind of set has in the place of that element: "QtoDefs" for "PropertyDefs"; empty for
    /// what both have.
    static std::string_view counterpart(std::string_view name);
    /// Whether only the other kind of set has an element of that name.
    static bool boOfOther(SetKind kind, std::string_view name);
    /// The element that contains elements of that name, in this kind of set: one inside of `parent` or around
    /// it if there is such a one; empty when there is none.
    std::string_view ownerOf(XmlIndex parent, std::string_view name) const;
    /// The only kind of property that has elements of that name directly inside; empty when there are
    /// several, or none.
    static std::string_view soleKindWith(std::string_view name);
    /// Whether elements of that name may be inside an element with that rule, up to two levels deep.
    static bool boContains(const ElementRule& rule, std::string_view name);
    /// The names that the children of an element may have.
    static std::vector<std::string_view> childNames(const ElementRule& rule);
    /// Those of them that are offered to authors.
    static std::vector<std::string_view> offeredNames(const ElementRule& rule);
    /// The names of all elements below the root of a set of that kind, without order.
    static std::span<const std::string_view> elementNames(SetKind kind);

private:
    const XmlPositions* xml_;
    SetKind kind_;
    std::vector<const ElementRule*> rules_;
};

} // namespace kiv::kit
