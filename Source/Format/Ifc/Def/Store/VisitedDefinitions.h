/// @file
/// A collection of the registry while a host's visitor looks at it: one that the visitor removes lives until
/// the visit ends.
///
///     const VisitedDefinitions visited(definitions);
///     visitor(context, definitions);
///
/// Each thread knows its own visits alone. A reference count would do the same, but it lies where all threads
/// that visit the collection would write to it.
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
