/// @file
/// What documents have in place of a GUID: texts that are none, of which nothing but the null GUID is left
/// when a document has been read.
///
///     const WrittenGuids written("Pset_Wall.xml");
///     if (const auto text = written.of(member); !text.empty())
///         html << escaped(text) << " is no GUID";
///
/// Ownership: keeps copies.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc. A document that cannot be read any more has none.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc::site {

class WrittenGuids {
public:
    /// Of no document.
    WrittenGuids() = default;
    /// Reads the document again.
    explicit WrittenGuids(const std::string& path);

    /// The text in place of the GUID of a set or a member; empty when there is none, or it is a GUID.
    std::string_view of(const ifc::def::xml::DefBase& def) const;

private:
    // By line and name: a document may be one line, and a name may be there twice.
    std::map<std::pair<std::size_t, std::string>, std::string> texts_;
};

} // namespace kiv::kivifc::site
