/// @file
/// What readers say of their work while they read, so that a host can set limits to it.
///
///     void vRead(std::string_view line, kiv::WorkMeter& meter) {
///         meter.vTake(kiv::WorkMeter::Unit::InputBytes, line.size());
///         meter.vLook();
///     }
///
/// `kiv::ifc::def::BudgetMeter` is the one that the library brings along.
///
/// Ownership: none; a reader refers to its meter only while it reads.
/// Threads:   one meter, one thread at a time.
/// Errors:    what `vTake` and `vLook` throw ends the reading and passes to its caller. Nothing has changed
///            then but the position of the stream.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kiv {

class WorkMeter {
public:
    enum class Unit : std::uint8_t {
        /// What is taken out of a stream.
        InputBytes,
        /// Memory that is held at the same time; what containers hold while they grow included.
        HeldBytes,
        /// Of what is read between two calls of `vPieceBegin`: a statement of a schema text, or a tag or
        /// comment of a document.
        PieceBytes,
        /// Named objects, data types and attributes of a schema; nodes and attributes of a document; what
        /// definitions are made of; records of a configuration.
        Objects,
        /// Nodes of expression trees.
        RuleNodes,
        /// Assertion reports that somebody listens to, and error records.
        Reports
    };
    static constexpr std::size_t UnitCount = 6;

    /// Called before the amount is used.
    virtual void vTake(Unit unit, std::uint64_t amount) = 0;
    /// Called when memory is no longer held.
    virtual void vMemoryGiveBack(std::uint64_t bytes) noexcept = 0;
    /// Called where the next piece begins.
    virtual void vPieceBegin() = 0;
    /// Called again and again, with a bounded number of steps in between for each byte of a piece: the place
    /// to end a reading that is no longer wanted.
    virtual void vLook() = 0;

protected:
    WorkMeter() = default;
    WorkMeter(const WorkMeter&) = default;
    WorkMeter& operator=(const WorkMeter&) = default;
    ~WorkMeter() = default;
};

} // namespace kiv
