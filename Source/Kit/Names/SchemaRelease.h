/// @file
/// The releases of IFC: what documents and schemas call them, and which one a loaded schema is.
///
///     const auto* release = pSchemaReleaseFind("2x3 TC1");           // IFC2X3_TC1
///     compareReleases("2x4", "IFC4");                                // ReleaseMatch::Same
///     std::cout << sReleaseOf(schema);                               // IFC4_ADD2 or IFC4_ADD2_TC1
///     if (compareWithSchema("IFC2x3", schema) == ReleaseMatch::Different)
///         vWarn();
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads.
/// Errors:    a name that no release has is null or `ReleaseMatch::Unknown`; std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::kit {

struct SchemaRelease {
    /// "IFC4_ADD2".
    std::string_view name;
    /// "IFC4": the name without addenda and corrigenda. Sets of one family are read alike.
    std::string_view family;
    /// What its schema text has after SCHEMA: all editions of one family may have the same there.
    std::string_view schemaName;
    /// Our tests read the schema itself. What is said of the others is general knowledge of their names that
    /// no test of ours compares with a schema.
    bool isTested = false;
};

/// All known releases, older ones first; the editions of one family are neighbours.
KIV_EXPORT std::span<const SchemaRelease> getSchemaReleases();

/// The release that a document or schema names in any of the usual ways: "2x4", "IFC 4", "ifc2x3_tc1",
/// "2x3 TC1", "IFC4 Addendum 2", "4.3.2.0". Null when there is none.
KIV_EXPORT const SchemaRelease* pSchemaReleaseFind(std::string_view declared);

enum class ReleaseMatch : std::uint8_t {
    Same,
    /// IFC4 and IFC4_ADD2.
    OtherEdition,
    /// IFC2X3 and IFC4.
    Different,
    /// One of the two, or both, names no release.
    Unknown,
};

/// Compares two declared releases. An edition that is not in the table ("IFC4X3_RC4") belongs to its family
/// all the same.
KIV_EXPORT ReleaseMatch compareReleases(std::string_view left, std::string_view right);

/// The releases that a schema can be: those with its name, less the editions that its entities rule out.
/// Empty when no release calls itself by that name.
KIV_EXPORT std::vector<const SchemaRelease*> getReleasesOf(const ifc::def::schema::Schema& schema);

/// Those releases for a message, "IFC4_ADD2 or IFC4_ADD2_TC1"; the name of the schema when there are none.
KIV_EXPORT std::string sReleaseOf(const ifc::def::schema::Schema& schema);

/// Compares a declared release with a loaded schema. `Same` when the schema can be that release, and when the
/// document declares what the text of the schema calls itself: IFC4, whatever its edition.
KIV_EXPORT ReleaseMatch compareWithSchema(std::string_view declared, const ifc::def::schema::Schema& schema);

} // namespace kiv::kit
