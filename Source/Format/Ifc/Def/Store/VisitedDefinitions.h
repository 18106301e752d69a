/// @file
/// A collection of the registry while a host's visitor looks at it: one that the visitor removes lives until
/// the visit ends.
///
///     const VisitedDefinitions visited(definitions);
///     visitor(context, definitions);
///
/// Each thread knows its own visits alone, by a pointer that is null outside of visits: the one thing that
/// the library itself, beside its host services, keeps per thread, and no answer depends on it. Whoever
/// removes a collection, or would refuse to, has to learn from somewhere that it is being visited. A
/// reference count or a list in the registry could say so, but visits are look-ups, from any number of
/// threads, and would then write to memory that all of these share.
///
/// Ownership: takes over a collection that leaves the registry during the visit.
/// Threads:   a visit belongs to its thread, on which the registry is changed, if at all.
/// Errors:    none.
#pragma once

#include <memory>

namespace kiv::ifc::def {

class SchemaPropertySetDefinitions;

class VisitedDefinitions {
public:
    explicit VisitedDefinitions(const SchemaPropertySetDefinitions& definitions) noexcept;
    ~VisitedDefinitions();
    VisitedDefinitions(const VisitedDefinitions&) = delete;
    VisitedDefinitions& operator=(const VisitedDefinitions&) = delete;

    /// Called for each collection before it leaves the registry.
    static void vKeep(const std::shared_ptr<const SchemaPropertySetDefinitions>& definitions) noexcept;

private:
    const SchemaPropertySetDefinitions* definitions_;
    std::shared_ptr<const SchemaPropertySetDefinitions> kept_;
    /// The visit within whose visitor this one began; null for none.
    VisitedDefinitions* outer_;
};

} // namespace kiv::ifc::def
