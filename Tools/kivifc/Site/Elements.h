/// @file
/// What pages are made of: sections, tables, rows that can be pointed at, links by name.
///
///     vSectionBegin(html, "attributes", "Attributes");
///     vTableBegin(html, "Attributes of IfcWall", {"Name", "Type"});
///     html << "<tr" << attribute("id", sAnchor(name)) << "><td>" << escaped(name);
///     vRowLinkWrite(html, name);
///     html << "</td>...</tr>";
///     vTableEnd(html);
///     vSectionEnd(html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kiv::kivifc::site {

/// A text that appears again and again: the whole of it up to that number of bytes, else its beginning with
/// "...", so that a long name does not make each page long that has it. Cut between code points.
std::string sShort(std::string_view text, std::size_t whole = 200);

/// A name of a document for a link, which is no link to see when the name is blank.
std::string sLinkText(std::string_view name);

/// `id` is a word in lower case, as those of rows never are.
void vSectionBegin(Html& html, Markup id, Markup title);
/// The same with the number of what is in it.
void vSectionBegin(Html& html, Markup id, Markup title, std::size_t count);
void vSectionEnd(Html& html);

/// `label` names the table for those who have it read to them; empty where the element around it does. A
/// table is never wider than its page: long names are broken.
void vTableBegin(Html& html, std::string_view label, std::initializer_list<Markup> columns);
void vTableEnd(Html& html);

/// The "#" beside a row, by which one gets its address.
void vRowLinkWrite(Html& html, std::string_view name);

/// The same for an id that a page gave to the row.
void vRowLinkWrite(Html& html, const RowId& id, std::string_view name);

/// The same for an id of ours, which has a hyphen, as those of rows never have.
void vIdLinkWrite(Html& html, std::string_view id, std::string_view name);

/// A name as a link, in the type of code.
void vNameLinkWrite(Html& html, const Address& address, std::string_view name);

/// The same where the style sheet knows by its place that it is a name: in rows that are there by the
/// thousand.
void vBareLinkWrite(Html& html, const Address& address, std::string_view name);

} // namespace kiv::kivifc::site
