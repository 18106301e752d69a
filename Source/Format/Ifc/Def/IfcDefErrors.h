/// @file
/// What was found wrong with set definitions, per set and all together, and the report about it.
///
///     XmlSetErrors errors;
///     const pset::PropertySetDef set(root, errors);
///     set.checkForErrors(schema, errors);
///     XmlSetsErrors all;
///     all.sets.insert(std::move(errors));
///     all.vDump("errors.txt");
///
/// Ownership: values; a record copies its texts.
/// Threads:   one thread at a time while records are added; each set has a collector of its own, so sets can
///            be read side by side.
/// Errors:    none of its own; a problem in a document is a record here, never an exception.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <set>
#include <string>
#include <vector>

namespace kiv::ifc::def::xml {

enum class ErrorKind : std::int32_t { Error = 0, FatalError = 1 };

/// One problem.
struct ErrorRecord {
    ErrorKind kind = ErrorKind::Error;
    /// What it concerns: an attribute's value, a tag, a class name.
    std::string item;
    /// What is wrong, one of a fixed set of texts.
    std::string message;
    /// The line of the document it is about, counted from 1; 0 when none is known.
    std::size_t line = 0;

    friend bool operator==(const ErrorRecord&, const ErrorRecord&) = default;
};

/// The records of one set, in the order in which they were added. Nothing is merged or removed.
///
/// A value, during a `Reading` too: the reading stays with the collector that it was made for, and what is
/// copied, moved or assigned are records and name alone.
class KIV_EXPORT XmlSetErrors {
public:
    /// Without a line the record has none.
    void vErrorAdd(ErrorKind kind, std::string item, std::string message, std::size_t line = 0);

    /// Names the set that the records belong to; `SetDef::checkForErrors` does so once there is a record.
    void vSetNameSet(std::string setName);

    /// Empty until the set has been checked.
    const std::string& getSetName() const { return setName_; }
    const std::vector<ErrorRecord>& getRecords() const { return records_; }

    /// A reading within a budget, while it lives: what is read with the collector is accounted for, and the
    /// records of a reading that fails are removed again, with the room that they took.
    class KIV_EXPORT Reading {
    public:
        /// Both outlive it.
        Reading(XmlSetErrors& errors, BudgetMeter& meter);
        ~Reading();
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

    private:
        XmlSetErrors& errors_;
        WorkMeter* meterBefore_;
        std::size_t recordsBefore_;
        std::size_t roomBefore_;
        int exceptionsBefore_;
        BudgetMeter::Reading memory_;
    };

    /// The meter of the reading within a budget that uses the collector; null for none.
    WorkMeter* pMeter() const { return meter_.meter; }

private:
    /// Stays where it is: the meter of a reading may end before a copy does.
    struct MeterLink {
        MeterLink() = default;
        MeterLink(const MeterLink&) noexcept {}
        MeterLink& operator=(const MeterLink&) noexcept { return *this; }
        ~MeterLink() = default;

        WorkMeter* meter = nullptr;
    };

    void vTakeBack(std::size_t count, std::size_t room) noexcept;

    std::string setName_;
    std::vector<ErrorRecord> records_;
    MeterLink meter_;
};

/// The collectors of many sets, and their report.
class KIV_EXPORT XmlSetsErrors {
public:
    /// By set name, byte by byte.
    struct SetNameLess {
        bool operator()(const XmlSetErrors& left, const XmlSetErrors& right) const {
            return left.getSetName() < right.getSetName();
        }
    };

    /// One line per record: "SET;Error;ITEM;MESSAGE" and a line feed, with "FatalError" for that kind. A ";"
    /// inside a text is not escaped. The line in the document is not part of it.
    ///
    /// The name of a set is there again for each of its records, so that a document of n bytes can make
    /// n * n / 16 of them, 600 MB from 100 kB: write what comes from strangers to a stream, which needs no
    /// memory for it.
    std::string getFormattedErrors() const;

    /// Writes that text to a stream, piece by piece, whatever width the stream has, and ends when the stream
    /// takes no more. Allocates nothing itself.
    void vFormattedErrorsWrite(std::ostream& stream) const;

    /// Replaces the contents of a file with that text, which is written as it is made. A file that cannot be
    /// opened is ignored silently. When memory runs out, the file keeps its old contents.
    void vDump(const char* path) const;

    /// Ordered by set name; collectors of one name stay in the order in which they were inserted.
    std::multiset<XmlSetErrors, SetNameLess> sets;
};

} // namespace kiv::ifc::def::xml
