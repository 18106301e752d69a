#include "kiv/Format/Ifc/Def/IfcDefErrors.h"

#include "Base/Metered.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iterator>
#include <new>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::ifc::def::xml {

namespace {

/// Enough to be as quick as a write of all at once.
constexpr std::streamsize DumpBufferSize = std::streamsize{64} * 1024;

std::string_view kindField(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::Error:
        return "Error;";
    case ErrorKind::FatalError:
        return "FatalError;";
    }
    return {};
}

/// Hands on the report, in short pieces, as long as they are taken.
template <class Sets, class Take>
void vTextGive(const Sets& sets, const Take& boTake) {
    for (const XmlSetErrors& set : sets) {
        for (const ErrorRecord& record : set.getRecords()) {
            const bool isTaken = boTake(set.getSetName()) && boTake(";") && boTake(kindField(record.kind)) &&
                                 boTake(record.item) && boTake(";") && boTake(record.message) && boTake("\n");
            if (!isTaken)
                return;
        }
    }
}

} // namespace

void XmlSetErrors::vErrorAdd(ErrorKind kind, std::string item, std::string message, std::size_t line) {
    if (auto* const meter = pMeter()) {
        meter->vTake(WorkMeter::Unit::Reports, 1);
        vMemoryTake(meter, memoryOf(item) + memoryOf(message));
        vRoomForOne(records_, meter);
    }
    records_.push_back({kind, std::move(item), std::move(message), line});
}

XmlSetErrors::Reading::Reading(XmlSetErrors& errors, BudgetMeter& meter) :
    errors_(errors),
    meterBefore_(std::exchange(errors.meter_.meter, &meter)),
    recordsBefore_(errors.records_.size()),
    roomBefore_(errors.records_.capacity()),
    exceptionsBefore_(std::uncaught_exceptions()),
    memory_(meter) {}

XmlSetErrors::Reading::~Reading() {
    errors_.meter_.meter = meterBefore_;
    if (std::uncaught_exceptions() > exceptionsBefore_)
        errors_.vTakeBack(recordsBefore_, roomBefore_);
}

/// Keeps up to that many records, and room for that many: there are fewer where they were moved to another
/// collector. When there is no memory to move them, the room stays.
void XmlSetErrors::vTakeBack(std::size_t count, std::size_t room) noexcept {
    if (records_.size() > count)
        records_.resize(count);
    if (records_.capacity() <= room)
        return;
    try {
        std::vector<ErrorRecord> kept;
        kept.reserve(room);
        std::move(records_.begin(), records_.end(), std::back_inserter(kept));
        records_ = std::move(kept);
    } catch (const std::bad_alloc&) { // nothing was moved
    }
}

void XmlSetErrors::vSetNameSet(std::string setName) {
    setName_ = std::move(setName);
}

std::string XmlSetsErrors::getFormattedErrors() const {
    std::string text;
    vTextGive(sets, [&](std::string_view piece) {
        text += piece;
        return true;
    });
    return text;
}

void XmlSetsErrors::vFormattedErrorsWrite(std::ostream& stream) const {
    // Not by `<<`, which would fill up to the width that a host has set.
    vTextGive(sets, [&](std::string_view piece) {
        stream.write(piece.data(), static_cast<std::streamsize>(piece.size()));
        return stream.good();
    });
}

void XmlSetsErrors::vDump(const char* path) const {
    // Opening the file empties it, so what needs memory comes first.
    std::vector<char> buffer(DumpBufferSize);
    std::ofstream file;
    file.rdbuf()->pubsetbuf(buffer.data(), DumpBufferSize);
    file.open(path);
    if (file)
        vFormattedErrorsWrite(file);
}

} // namespace kiv::ifc::def::xml
