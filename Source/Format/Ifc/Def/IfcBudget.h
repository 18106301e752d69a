/// @file
/// Budgets: how much a reading may take, set by the host that starts it.
///
///     kiv::ifc::def::Budget budget;
///     budget.maxMemory = 64 << 20;
///     budget.stop = stopping.get_token();
///     try {
///         auto ifc = kiv::ifc::def::SchemaPset::pStepStreamRead(stream, budget);
///     } catch (const kiv::ifc::def::BudgetExceeded& exceeded) {
///         std::cerr << exceeded.what() << '\n'; // more than 67108864 bytes of memory are needed
///     }
///
/// Every operation that reads has two forms: the plain one, which has no budget, and one that takes a
/// `Budget` or a `BudgetMeter`. Several readings that share a meter share its budget. What reads a part of a
/// set (the constructors of `PropertyDef` and `QuantityDef`, `PropertyType::pCreate`) has one form, which
/// takes the collector of error records: it has a budget while an `XmlSetErrors::Reading` gives one to the
/// collector.
///
/// Ownership: values; a reader refers to its meter only while it reads.
/// Threads:   a meter is used by one thread at a time; a stop may be requested by any other.
/// Errors:    `BudgetExceeded`. What was being read is gone then, and what was there before is as it was: the
///            schema, the collector of error records. Only the position of the stream has changed.
#pragma once

#include "kiv/Base/Exception.h"
#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/IfcLimits.h"
#include "kiv/Host/Xml/KivXml.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <stop_token>
#include <string>
#include <type_traits>

namespace kiv::ifc::def {

/// The most that a reading may take. Exactly as much as a limit is still allowed.
struct Budget {
    /// Bytes out of the stream.
    std::uint64_t maxInput = limits::BudgetInputMax;
    /// Bytes of memory that are held at the same time, accurate to a tenth.
    std::uint64_t maxMemory = limits::BudgetMemoryMax;
    /// Bytes of one piece: a statement of a schema text; a tag, comment or the like of a document. The work
    /// between two looks at `stop` is in proportion to it, or to a text of a document, which is no piece and
    /// has no limit but those of the input and of memory.
    std::uint64_t maxPiece = limits::BudgetPieceMax;
    /// Named objects, data types and attributes of a schema; nodes and attributes of a document; what
    /// definitions are made of; records of a configuration.
    std::uint64_t maxObjects = limits::BudgetObjectsMax;
    /// Nodes of the expression trees of WHERE clauses.
    std::uint64_t maxRuleNodes = limits::BudgetRuleNodesMax;
    /// Assertion reports, as far as somebody listens to them, and error records.
    std::uint64_t maxReports = limits::BudgetReportsMax;
    /// Ends the reading once a stop is requested; one that nobody can request never does.
    std::stop_token stop;
};

/// Which limit of a `Budget` ended a reading.
enum class BudgetLimit : std::uint8_t { Input, Memory, Piece, Objects, RuleNodes, Reports, Stop };

/// Ends a reading that needs more than its budget, or whose stop was requested.
class KIV_EXPORT BudgetExceeded : public kiv::exception {
public:
    BudgetExceeded(BudgetLimit limit, std::uint64_t value);
    BudgetExceeded(const BudgetExceeded& other);
    BudgetExceeded& operator=(const BudgetExceeded& other);
    ~BudgetExceeded() override;

    BudgetLimit getLimit() const { return limit_; }
    /// The value of the limit; 0 for a requested stop.
    std::uint64_t getValue() const { return value_; }

private:
    BudgetLimit limit_;
    std::uint64_t value_;
};

/// What a meter is to `File::parse`: the host's interface for the progress of that where it is made for
/// meters, as ours is. With a document model that has another one, parsing is not limited.
template <class Interface, class = void>
struct ProgressOf {
    using Type = WorkMeter;
};
template <class Interface>
struct ProgressOf<Interface, std::enable_if_t<std::is_convertible_v<Interface*, WorkMeter*>>> {
    using Type = Interface;
};

/// Keeps account of what readings take, and ends one that would take more than the budget.
///
///     kiv::ifc::def::BudgetMeter meter{kiv::ifc::def::Budget{}};
///     kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
///     kiv::ifc::def::xml::XmlSetErrors errors;
///     if (const auto root = file.parse(stream, "walls.xml", &meter))
///         vUse(kiv::ifc::def::pset::PropertySetDef(*root, errors, meter));
class KIV_EXPORT BudgetMeter : public ProgressOf<kiv::xml::errorhandler::ParseInterface>::Type {
public:
    explicit BudgetMeter(const Budget& budget);
    virtual ~BudgetMeter();
    BudgetMeter(const BudgetMeter&) = delete;
    BudgetMeter& operator=(const BudgetMeter&) = delete;

    /// The limits that it was made with.
    const Budget& getBudget() const { return budget_; }
    /// What was taken up to now; of memory, what is held.
    std::uint64_t getUsed(Unit unit) const { return used_[static_cast<std::size_t>(unit)]; }

    void vTake(Unit unit, std::uint64_t amount) override;
    void vMemoryGiveBack(std::uint64_t bytes) noexcept override;
    void vPieceBegin() override;
    void vLook() override;

    /// Gives the memory back that a reading took, unless it comes to its end.
    class KIV_EXPORT Reading {
    public:
        explicit Reading(BudgetMeter& meter);
        ~Reading();
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

    private:
        BudgetMeter& meter_;
        std::uint64_t heldBefore_;
        int exceptionsBefore_;
    };

private:
    Budget budget_;
    std::array<std::uint64_t, UnitCount> limits_;
    std::array<std::uint64_t, UnitCount> used_{};
};

} // namespace kiv::ifc::def
