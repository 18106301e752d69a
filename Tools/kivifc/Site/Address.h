/// @file
/// Where something is in a site: a file of it, and a row of that file. There is no way to make one of any
/// text, so that a link never leads out of the site, whatever documents say.
///
///     constexpr PageName Entities("entities.html");
///     html << "<a" << href(Address(Entities)) << ">Entities</a>";
///     html << "<a" << href(addresses.of(wall).row("PredefinedType")) << ">...</a>";
///
/// Ownership: the path belongs to the `Addresses` that made it, which must outlive the address.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc::site {

/// A name of ours: of a page that every site has.
class PageName {
public:
    // A name is used where it is written. NOLINTNEXTLINE(google-explicit-constructor)
    template <std::size_t Size>
    consteval PageName(const char (&name)[Size]) : name_(name) {}
    template <std::size_t Size>
    PageName(char (&name)[Size]) = delete;

    constexpr std::string_view getView() const { return name_; }

private:
    std::string_view name_;
};

/// The name of a row, fit to be the `id` of an element: the name itself, unless it has other characters than
/// letters, digits and underscores, is too long, or is one of ours; then a part of it and a checksum.
std::string sAnchor(std::string_view name);

/// The id of a row, as `RowIds` gave it out.
class RowId {
public:
    const std::string& getText() const { return text_; }

    bool operator==(const RowId&) const = default;

private:
    friend class RowIds;

    explicit RowId(std::string text) : text_(std::move(text)) {}

    std::string text_;
};

/// The `id` of the GUID in a row; those of rows have no hyphen.
inline std::string sGuidAnchor(const RowId& row) {
    return "guid-" + row.getText();
}

class Address {
public:
    // NOLINTNEXTLINE(google-explicit-constructor): a page that every site has
    Address(PageName name) : path_(name.getView()) {}

    /// From the top of the site: "sets/Pset_WallCommon.html".
    std::string_view getPath() const { return path_; }
    /// Empty for the whole page.
    const std::string& getAnchor() const { return anchor_; }

    /// The row of that name on the same page; the first one, where there are several.
    Address row(std::string_view name) const {
        auto address = *this;
        address.anchor_ = sAnchor(name);
        return address;
    }

    Address row(const RowId& id) const {
        auto address = *this;
        address.anchor_ = id.getText();
        return address;
    }

    /// The GUID in that row, in what is closed until it is asked for.
    Address guid(const RowId& row) const {
        auto address = *this;
        address.anchor_ = sGuidAnchor(row);
        return address;
    }

private:
    friend class Addresses;

    explicit Address(std::string_view path) : path_(path) {}

    std::string_view path_;
    std::string anchor_;
};

} // namespace kiv::kivifc::site
