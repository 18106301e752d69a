/// @file
/// Room Site: a schema and its sets as pages. Here: the text of a page, to which nothing but HTML can be
/// appended, so that forgetting to escape does not compile.
///
///     Html html("");
///     html << "<td" << attribute("id", sAnchor(name)) << ">" << escaped(name) << "</td>";
///
/// What is written with quotes in our sources is markup; a text that is only known when the program runs is
/// none, and is accepted as `escaped` text, as the value of a harmless attribute, or not at all. Where links
/// lead to is an `Address` of the site.
///
/// Ownership: what is appended is copied.
/// Threads:   one thread at a time.
/// Errors:    std::logic_error when text is appended within a tag or an attribute outside of one, which is a
///            mistake of ours; markup that ends within the value of an attribute does not compile.
#pragma once

#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/Address.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc::site {

/// HTML that is known when the program is compiled.
class Markup {
public:
    /// Of what is written with quotes. There is none of a pointer, and none of a buffer.
    // Markup is used where it is written. NOLINTNEXTLINE(google-explicit-constructor)
    template <std::size_t Size>
    consteval Markup(const char (&text)[Size]) : Markup(std::string_view(text), Size) {}
    template <std::size_t Size>
    Markup(char (&text)[Size]) = delete;

    constexpr std::string_view getView() const { return text_; }
    /// Without any tag, so that it can be an attribute as well as a text.
    constexpr bool isNeutral() const { return isNeutral_; }
    constexpr bool beginsInTag() const { return beginsInTag_; }
    constexpr bool endsInTag() const { return endsInTag_; }

private:
    /// The size is there to make it another constructor than the public ones.
    consteval Markup(std::string_view text, std::size_t) : text_(text) {
        const auto first = text_.find_first_of("<>");
        const bool hasTags = first != std::string_view::npos;
        beginsInTag_ = hasTags && text_[first] == '>';
        bool isQuoted = false;
        endsInTag_ = beginsInTag_ || !hasTags;
        for (const char byte : text_) {
            if (endsInTag_ && byte == '"')
                isQuoted = !isQuoted;
            else if (!isQuoted && (byte == '<' || byte == '>'))
                endsInTag_ = byte == '<';
        }
        isNeutral_ = !hasTags;
        // Not constant, so that the compiler refuses it.
        if (isQuoted)
            throw "the value of an attribute goes on after this markup";
    }

    std::string_view text_;
    bool isNeutral_ = false;
    bool beginsInTag_ = false;
    bool endsInTag_ = false;
};

/// The name of an attribute that cannot do harm, whatever its value is.
class AttributeName {
public:
    // NOLINTNEXTLINE(google-explicit-constructor)
    template <std::size_t Size>
    consteval AttributeName(const char (&name)[Size]) : name_(name) {
        // Not constant, so that the compiler refuses it.
        if (!isHarmless(name_))
            throw "no name of an attribute, or the value of the attribute is obeyed";
    }
    template <std::size_t Size>
    AttributeName(char (&name)[Size]) = delete;

    /// Whether it is a name of an attribute whose value is neither an address nor obeyed. Browsers take
    /// capitals for small letters.
    static constexpr bool isHarmless(std::string_view name) {
        for (const char byte : name) {
            if (!ascii::isLetter(byte) && byte != '-' && !(byte >= '0' && byte <= '9'))
                return false;
        }
        for (const std::string_view harmful :
             {"href", "src", "style", "action", "formaction", "srcdoc", "srcset", "content", "http-equiv",
              "data", "background", "poster", "ping", "manifest"}) {
            if (ascii::isEqualIgnoringCase(name, harmful))
                return false;
        }
        return !ascii::isEqualIgnoringCase(name.substr(0, 2), "on");
    }

    constexpr std::string_view getView() const { return name_; }

private:
    std::string_view name_;
};

/// A text that is escaped when it is appended.
struct Escaped {
    std::string_view text;
};

/// The one way from text to HTML. Line ends of every kind become line feeds, and tabs stay; other control
/// characters, characters that turn the direction of writing, and bytes that are no UTF-8 are spelt out as on
/// a terminal.
inline Escaped escaped(std::string_view text) {
    return {text};
}

/// The same, isolated from what is beside it: letters that are written from right to left, as names in
/// documents may have them, do not change the order of other words.
struct Isolated {
    std::string_view text;
};

inline Isolated isolated(std::string_view text) {
    return {text};
}

/// How many columns of letters of one width an escaped text takes; those of East Asia take two.
std::size_t escapedWidth(std::string_view text);

struct HtmlAttribute {
    AttributeName name;
    std::string_view value;
};

/// ` name="value"`; the value must last until it is appended.
inline HtmlAttribute attribute(AttributeName name, std::string_view value) {
    return {name, value};
}

struct NumberAttribute {
    AttributeName name;
    long long value;
};

inline NumberAttribute attribute(AttributeName name, long long value) {
    return {name, value};
}

/// ` href="..."`; the address must last until it is appended.
struct Href {
    const Address& address;
};

inline Href href(const Address& address) {
    return {address};
}

/// ` href="#..."`: a row of the same page.
struct RowHref {
    std::string_view name;
};

inline RowHref rowHref(std::string_view name) {
    return {name};
}

/// ` href="#id"`, for an id that a page gave to a row; whatever it is, it is one of this page.
struct IdHref {
    std::string_view id;
};

inline IdHref idHref(std::string_view id) {
    return {id};
}

class Html {
public:
    /// `root` leads from the page to the top of the site: "" or "../".
    explicit Html(Markup root) : root_(root) {}

    Html& operator<<(Markup markup);
    Html& operator<<(Escaped text);
    Html& operator<<(Isolated text);
    Html& operator<<(const HtmlAttribute& attribute);
    Html& operator<<(const NumberAttribute& attribute);
    Html& operator<<(const Href& href);
    Html& operator<<(const RowHref& href);
    Html& operator<<(const IdHref& href);
    /// A part that was made for a page at the same place.
    Html& operator<<(const Html& part);
    Html& operator<<(std::size_t number);

    Markup getRoot() const { return root_; }
    bool isEmpty() const { return text_.empty(); }
    /// In bytes.
    std::size_t getSize() const { return text_.size(); }
    void vReserve(std::size_t size) { text_.reserve(size); }
    const std::string& getText() const { return text_; }
    std::string takeText() { return std::move(text_); }

private:
    void vInTagExpect(bool isInTag) const;
    void vEscapedAppend(std::string_view text);
    void vUnusualAppend(std::string_view& text);

    Markup root_;
    std::string text_;
    bool isInTag_ = false;
};

} // namespace kiv::kivifc::site
